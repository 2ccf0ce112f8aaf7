#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/uikit/UIKitClasses.h"
#include "platform/uikit/tables/UITableView.h"
#include "platform/uikit/views/UIView.h"
#include "tests/support/TestProcess.h"

namespace uikit_test {

// Records the operations that it is sent by name.
class Recorder : public platform::Object {
  PLATFORM_CLASS(Recorder)

 public:
  void plain() { calls.emplace_back("plain"); }
  void withSender(const std::shared_ptr<platform::Object>& sender) {
    calls.emplace_back("withSender:");
    senders.push_back(sender);
  }
  void withSenderAndEvent(const std::shared_ptr<platform::Object>& sender,
                          const platform::Value& event) {
    calls.emplace_back(event.isNone() ? "withSender:event:" : "withSender:event: with an event");
    senders.push_back(sender);
  }

  std::vector<std::string> calls;
  std::vector<std::shared_ptr<platform::Object>> senders;
};

// A process with the classes of this folder and the recorder.
class UIKitTest : public ::testing::Test {
 protected:
  UIKitTest() {
    platform::registerUIKitClasses(process.classes());
    process.classes().add(platform::ClassBuilder<Recorder>("NSObject")
                              .operation("plain", &Recorder::plain)
                              .operation("withSender:", &Recorder::withSender)
                              .operation("withSender:event:", &Recorder::withSenderAndEvent)
                              .build());
  }

  void advance(double seconds) { process.scheduler().advance(seconds); }

  test_support::TestProcess process;
  std::shared_ptr<Recorder> recorder = platform::make<Recorder>();
};

// A data source with rows as lists of texts, one per section, that tests can change.
class TextSource : public platform::Object,
                   public platform::UITableViewDataSource,
                   public platform::UITableViewDelegate {
  PLATFORM_CLASS(TextSource)

 public:
  using Table = std::shared_ptr<platform::UITableView>;

  std::int64_t numberOfSectionsInTableView(const Table&) override {
    return static_cast<std::int64_t>(sections.size());
  }
  std::int64_t numberOfRowsInSection(const Table&, std::int64_t section) override {
    return static_cast<std::int64_t>(sections.at(static_cast<std::size_t>(section)).size());
  }
  std::shared_ptr<platform::UITableViewCell> cellForRowAtIndexPath(
      const Table& table, platform::IndexPath path) override {
    asked.push_back(path);
    auto cell = table->dequeueReusableCellWithIdentifier("text", path);
    cell->textLabel()->setText(textAt(path));
    return cell;
  }
  double heightForRowAtIndexPath(const Table&, platform::IndexPath) override { return rowHeight; }

  std::string& textAt(platform::IndexPath path) {
    return sections.at(static_cast<std::size_t>(path.section))
        .at(static_cast<std::size_t>(path.row));
  }

  std::vector<std::vector<std::string>> sections;
  std::vector<platform::IndexPath> asked;
  double rowHeight = 50;
};

// A plain table of 320 x 200 points over a TextSource. Four rows of 50 points are visible.
class TableTest : public UIKitTest {
 protected:
  TableTest() {
    table->registerClass("UITableViewCell", "text");
    table->setFrame({0, 0, 320, 200});
    source->sections = {{"a", "b", "c", "d", "e", "f", "g", "h"}};
    table->setDataSource(source);
    table->setDelegate(source);
  }

  std::vector<std::string> visibleTexts() {
    std::vector<std::string> texts;
    for (const auto& cell : table->visibleCells()) {
      texts.push_back(cell->textLabel()->text().value_or("(none)"));
    }
    return texts;
  }

  std::shared_ptr<TextSource> source = platform::make<TextSource>();
  std::shared_ptr<platform::UITableView> table = platform::make<platform::UITableView>();
};

}  // namespace uikit_test
