#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>

#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/foundation/objects/MutableDictionary.h"
#include "platform/foundation/objects/Object.h"
#include "platform/foundation/objects/Process.h"

namespace {

using platform::Array;
using platform::ClassBuilder;
using platform::Dictionary;
using platform::Exception;
using platform::Object;
using platform::Process;
using platform::ProcessScope;
using platform::Value;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class Lamp : public Object {
  PLATFORM_CLASS(Lamp)

 public:
  bool init() override {
    initialised = true;
    return true;
  }
  bool initWithName(const std::string& name) {
    _name = name;
    return !name.empty();
  }
  std::string name() const { return _name; }
  void setName(const std::string& name) { _name = name; }
  std::int64_t add(std::int64_t a, std::int64_t b) const { return a + b; }
  Value lens() const { return _lens; }
  void setLens(const Value& lens) { _lens = lens; }
  std::shared_ptr<Lamp> neighbour() const { return _neighbour.lock(); }
  void setNeighbour(const std::shared_ptr<Lamp>& neighbour) { _neighbour = neighbour; }
  int serial() const { return 7; }
  std::optional<int> watts() const { return _name.empty() ? std::nullopt : std::optional(40); }
  void hold(std::shared_ptr<Object> object) { _held = std::move(object); }

  bool initialised = false;

 private:
  std::string _name;
  Value _lens;
  std::weak_ptr<Lamp> _neighbour;
  std::shared_ptr<Object> _held;
};

class Torch : public Lamp {
  PLATFORM_CLASS(Torch)
};

class ObjectTest : public testing::Test {
 protected:
  ObjectTest() : _scope(_process) {
    _process.classes().add(ClassBuilder<Lamp>("NSObject")
                               .operation("add:to:", &Lamp::add)
                               .property("name", &Lamp::name, &Lamp::setName)
                               .property("lens", &Lamp::lens, &Lamp::setLens)
                               .property("neighbour", &Lamp::neighbour, &Lamp::setNeighbour)
                               .key("serial", &Lamp::serial)
                               .property("watts", &Lamp::watts)
                               .build());
  }

  static Exception raisedBy(const std::function<void()>& work) {
    try {
      work();
    } catch (const Exception& exception) {
      return exception;
    }
    ADD_FAILURE() << "nothing was raised";
    return {"", ""};
  }

  Process _process;
  ProcessScope _scope;
};

TEST_F(ObjectTest, MakeAllocatesAndInitialises) {
  const auto lamp = platform::make<Lamp>();
  ASSERT_TRUE(lamp);
  EXPECT_TRUE(lamp->initialised);
}

TEST_F(ObjectTest, MakeGivesNothingWhereTheInitialiserRefuses) {
  EXPECT_TRUE(platform::make(&Lamp::initWithName, "desk"));
  EXPECT_FALSE(platform::make(&Lamp::initWithName, ""));
}

TEST_F(ObjectTest, DescriptionNamesClassAndAddress) {
  const auto lamp = platform::make<Lamp>();
  EXPECT_THAT(lamp->description(), StartsWith("<Lamp: 0x"));
  EXPECT_THAT(lamp->description(), EndsWith(">"));
}

TEST_F(ObjectTest, PerformCarriesArgumentsAndResult) {
  const auto lamp = platform::make<Lamp>();
  EXPECT_EQ(lamp->perform("add:to:", {2, 40}), Value(42));
}

TEST_F(ObjectTest, PerformTakesMissingArgumentsAsNone) {
  const auto lamp = platform::make<Lamp>();
  EXPECT_EQ(lamp->perform("add:to:", {2}), Value(2));
}

TEST_F(ObjectTest, PerformRefusesTooManyArguments) {
  const auto lamp = platform::make<Lamp>();
  EXPECT_EQ(raisedBy([&] {
              lamp->perform("add:to:", {1, 2, 3});
            }).name(),
            "NSInvalidArgumentException");
}

TEST_F(ObjectTest, PerformOfAnUnknownSelectorRaisesAsThePlatformDoes) {
  const auto lamp = platform::make<Lamp>();
  const Exception raised = raisedBy([&] { lamp->perform("setFloat:forKey:", {1.0, "a"}); });
  EXPECT_EQ(raised.name(), "NSInvalidArgumentException");
  EXPECT_EQ(raised.reason(), "-[Lamp setFloat:forKey:]: unrecognized selector sent to instance");
}

TEST_F(ObjectTest, RespondsToItsOwnAndInheritedSelectors) {
  const auto lamp = platform::make<Lamp>();
  EXPECT_TRUE(lamp->respondsToSelector("add:to:"));
  EXPECT_TRUE(lamp->respondsToSelector("description"));
  EXPECT_FALSE(lamp->respondsToSelector("subtract:"));
}

TEST_F(ObjectTest, AReadOnlyPropertyIsAKeyAndAnOperation) {
  const auto lamp = platform::make(&Lamp::initWithName, "desk");
  EXPECT_EQ(lamp->valueForKey("watts"), Value(40));
  EXPECT_EQ(lamp->perform("watts"), Value(40));
  EXPECT_FALSE(lamp->respondsToSelector("setWatts:"));
  EXPECT_EQ(raisedBy([&] { lamp->setValueForKey(60, "watts"); }).name(), "NSUnknownKeyException");
  EXPECT_TRUE(platform::make<Lamp>()->valueForKey("watts").isNone());
}

TEST_F(ObjectTest, AnObjectOfAnUnregisteredClassAnswersAsItsNearestRegisteredBase) {
  const auto torch = platform::make<Torch>();
  EXPECT_EQ(torch->objectClass().name(), "Lamp");
  EXPECT_EQ(torch->perform("add:to:", {1, 2}), Value(3));
  EXPECT_EQ(raisedBy([&] { torch->perform("x"); }).reason(),
            "-[Torch x]: unrecognized selector sent to instance");
}

TEST_F(ObjectTest, ValuesAreReadAndWrittenByKey) {
  const auto lamp = platform::make<Lamp>();
  lamp->setValueForKey("desk", "name");
  EXPECT_EQ(lamp->valueForKey("name"), Value("desk"));
  EXPECT_EQ(lamp->name(), "desk");
  EXPECT_EQ(lamp->perform("name"), Value("desk"));
  lamp->perform("setName:", {"floor"});
  EXPECT_EQ(lamp->name(), "floor");
}

TEST_F(ObjectTest, AnUndefinedKeyRaisesAsThePlatformDoes) {
  const auto lamp = platform::make<Lamp>();
  const Exception raised = raisedBy([&] { lamp->valueForKey("shade"); });
  EXPECT_EQ(raised.name(), "NSUnknownKeyException");
  EXPECT_THAT(raised.reason(), StartsWith("[<Lamp 0x"));
  EXPECT_THAT(raised.reason(),
              EndsWith("> valueForUndefinedKey:]: this class is not key value coding-compliant "
                       "for the key shade."));
}

TEST_F(ObjectTest, WritingAKeyThatIsOnlyReadRaises) {
  const auto lamp = platform::make<Lamp>();
  EXPECT_EQ(lamp->valueForKey("serial"), Value(7));
  const Exception raised = raisedBy([&] { lamp->setValueForKey(1, "serial"); });
  EXPECT_EQ(raised.name(), "NSUnknownKeyException");
  EXPECT_THAT(raised.reason(), HasSubstr("> setValue:forUndefinedKey:]: this class is not key "
                                         "value coding-compliant for the key serial."));
}

TEST_F(ObjectTest, AKeyPathStepsOverObjectsAndDictionaries) {
  const auto lamp = platform::make<Lamp>();
  const auto other = platform::make(&Lamp::initWithName, "other");
  lamp->setNeighbour(other);
  other->setLens(Dictionary{{"glass", Dictionary{{"colour", "red"}}}});
  EXPECT_EQ(lamp->valueForKeyPath("neighbour.name"), Value("other"));
  EXPECT_EQ(lamp->valueForKeyPath("neighbour.lens.glass.colour"), Value("red"));
}

TEST_F(ObjectTest, AKeyPathStepsOverMutableDictionaries) {
  const auto lamp = platform::make<Lamp>();
  const auto entries = std::make_shared<platform::MutableDictionary>(Dictionary{{"a", 1}});
  lamp->setLens(Value(entries));
  EXPECT_EQ(lamp->valueForKeyPath("lens.a"), Value(1));
  lamp->setValueForKeyPath(2, "lens.a");
  EXPECT_EQ(lamp->valueForKeyPath("lens.a"), Value(2));
}

TEST_F(ObjectTest, AKeyPathThroughNoneAnswersNone) {
  const auto lamp = platform::make<Lamp>();
  EXPECT_TRUE(lamp->valueForKeyPath("neighbour.name").isNone());
  EXPECT_TRUE(lamp->valueForKeyPath("lens.glass.colour").isNone());
  EXPECT_NO_THROW(lamp->setValueForKeyPath("x", "neighbour.name"));
}

TEST_F(ObjectTest, AKeyPathThroughAnArrayAnswersWithItsElements) {
  const auto lamp = platform::make<Lamp>();
  lamp->setLens(Array{Dictionary{{"a", 1}}, Dictionary{{"a", 2}}});
  EXPECT_EQ(lamp->valueForKeyPath("lens.a"), Value(Array{1, 2}));
}

TEST_F(ObjectTest, AKeyPathThroughTextRaises) {
  const auto lamp = platform::make(&Lamp::initWithName, "desk");
  const Exception raised = raisedBy([&] { lamp->valueForKeyPath("name.colour"); });
  EXPECT_EQ(raised.name(), "NSUnknownKeyException");
  EXPECT_THAT(raised.reason(), StartsWith("[<__NSCFString> valueForUndefinedKey:]"));
  EXPECT_EQ(raisedBy([&] { lamp->setValueForKeyPath(1, "name.colour"); }).name(),
            "NSUnknownKeyException");
}

TEST_F(ObjectTest, WritingIntoAnImmutableDictionaryRaises) {
  const auto lamp = platform::make<Lamp>();
  lamp->setLens(Dictionary{{"a", 1}});
  EXPECT_EQ(raisedBy([&] { lamp->setValueForKeyPath(2, "lens.a"); }).name(),
            "NSInvalidArgumentException");
}

TEST_F(ObjectTest, LiveCountShowsWhatIsStillAlive) {
  const std::int64_t before = Object::liveCount();
  auto lamp = platform::make<Lamp>();
  EXPECT_EQ(Object::liveCount(), before + 1);
  lamp->hold(lamp);
  Lamp* raw = lamp.get();
  lamp.reset();
  EXPECT_EQ(Object::liveCount(), before + 1) << "a cycle keeps the object";
  raw->hold(nullptr);
  EXPECT_EQ(Object::liveCount(), before);
}

}  // namespace
