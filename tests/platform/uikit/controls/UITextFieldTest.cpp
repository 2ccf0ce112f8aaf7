#include "platform/uikit/controls/UITextField.h"
#include "tests/platform/uikit/UIKitFixture.h"

namespace uikit_test {
namespace {

using namespace platform;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class FieldDelegate : public Object, public UITextFieldDelegate {
 public:
  using Field = std::shared_ptr<UITextField>;
  bool textFieldShouldBeginEditing(const Field&) override { return mayBegin; }
  void textFieldDidBeginEditing(const Field&) override { calls.emplace_back("did begin"); }
  bool textFieldShouldEndEditing(const Field&) override { return mayEnd; }
  void textFieldDidEndEditing(const Field& field) override {
    calls.push_back("did end: " + field->text());
  }
  bool textFieldShouldReturn(const Field&) override {
    calls.emplace_back("return");
    return mayReturn;
  }

  bool mayBegin = true;
  bool mayEnd = true;
  bool mayReturn = true;
  std::vector<std::string> calls;
};

class UITextFieldTest : public UIKitTest {
 protected:
  UITextFieldTest() {
    field->setDelegate(delegate);
    field->addTarget(recorder, "plain", UIControlEventEditingDidEnd);
  }

  std::shared_ptr<UITextField> field = make<UITextField>();
  std::shared_ptr<FieldDelegate> delegate = make<FieldDelegate>();
};

TEST_F(UITextFieldTest, TypingBeginsEditingAndReturnEndsIt) {
  EXPECT_TRUE(field->userChangeText("Zen"));
  EXPECT_TRUE(field->isEditing());
  EXPECT_THAT(recorder->calls, IsEmpty()) << "editing has not ended yet";
  EXPECT_TRUE(field->userReturn());
  EXPECT_FALSE(field->isEditing());
  EXPECT_THAT(delegate->calls, ElementsAre("did begin", "return", "did end: Zen"));
  EXPECT_THAT(recorder->calls, ElementsAre("plain"));
}

TEST_F(UITextFieldTest, CancellingBringsTheTextBack) {
  field->setText("before");
  field->userChangeText("after");
  EXPECT_TRUE(field->userCancel());
  EXPECT_EQ(field->text(), "before");
  EXPECT_FALSE(field->isEditing());
  EXPECT_FALSE(field->userCancel());
}

TEST_F(UITextFieldTest, TheDelegateMayRefuse) {
  delegate->mayBegin = false;
  EXPECT_FALSE(field->userChangeText("x"));
  EXPECT_EQ(field->text(), "");
  delegate->mayBegin = true;
  EXPECT_TRUE(field->becomeFirstResponder());
  delegate->mayReturn = false;
  EXPECT_FALSE(field->userReturn());
  delegate->mayEnd = false;
  EXPECT_FALSE(field->resignFirstResponder());
  EXPECT_TRUE(field->isEditing());
}

TEST_F(UITextFieldTest, ADisabledFieldIsNotEdited) {
  field->setEnabled(false);
  EXPECT_FALSE(field->becomeFirstResponder());
  EXPECT_FALSE(field->userReturn());
}

TEST_F(UITextFieldTest, ADelegateThatHasDiedIsNotAsked) {
  delegate->mayBegin = false;
  delegate.reset();
  EXPECT_TRUE(field->userChangeText("x"));
  EXPECT_TRUE(field->userReturn());
}

TEST_F(UITextFieldTest, AProgramThatSetsTheTextSendsNothing) {
  field->addTarget(recorder, "plain", UIControlEventEditingChanged);
  field->setText("x");
  EXPECT_THAT(recorder->calls, IsEmpty());
  field->userChangeText("x");
  EXPECT_THAT(recorder->calls, IsEmpty()) << "the same text is not a change";
  field->userChangeText("y");
  EXPECT_THAT(recorder->calls, ElementsAre("plain"));
}

}  // namespace
}  // namespace uikit_test
