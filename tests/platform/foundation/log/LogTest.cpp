#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/foundation/log/LogFormat.h"
#include "platform/foundation/log/MemoryLog.h"
#include "platform/foundation/objects/NSLog.h"
#include "platform/foundation/values/Collections.h"
#include "tests/support/TestProcess.h"

namespace {

using platform::formatString;
using platform::LogEntry;
using platform::LogLevel;
using platform::LogSource;
using platform::MemoryLog;
using platform::NSLog;
using platform::Value;
using test_support::TestProcess;

TEST(FormatString, PutsDescriptionsForObjects) {
  EXPECT_EQ(formatString("zentrova id: %@, value: %@", {"respring", nullptr}),
            "zentrova id: respring, value: (null)");
  EXPECT_EQ(formatString("%@%@.plist", {"/a/", "b"}), "/a/b.plist");
  EXPECT_EQ(formatString("%@", {true}), "1");
}

TEST(FormatString, PutsNumbers) {
  EXPECT_EQ(formatString("zentrova imagedata: %i", {4096}), "zentrova imagedata: 4096");
  EXPECT_EQ(formatString("%d %li %lu %lld %zu", {-1, -2, 3, -4, 5}), "-1 -2 3 -4 5");
  EXPECT_EQ(formatString("%lu", {Value::unsignedInteger(~0ULL)}), "18446744073709551615");
  EXPECT_EQ(formatString("%f %.2f %.0f", {1.5, 2.345, 3.0}), "1.500000 2.35 3");
  EXPECT_EQ(formatString("%x", {255}), "ff");
  EXPECT_EQ(formatString("%d", {nullptr}), "0");
}

TEST(FormatString, PutsTexts) {
  EXPECT_EQ(formatString("[%s]", {"a b"}), "[a b]");
}

TEST(FormatString, ReadsTheUnifiedLogsFormat) {
  EXPECT_EQ(formatString("[%{public}s:%{public}d] %{public}@", {"Cell.m", 12, "hello"}),
            "[Cell.m:12] hello");
}

TEST(FormatString, KeepsPercentSignsAndWhatIsNoDirective) {
  EXPECT_EQ(formatString("100%%", {}), "100%");
  EXPECT_EQ(formatString("%", {}), "%");
  EXPECT_EQ(formatString("%y %{public", {}), "%y %{public");
  EXPECT_EQ(formatString("%5", {1}), "%5");
}

TEST(FormatString, MissingValuesCountAsNoneAndMoreAreIgnored) {
  EXPECT_EQ(formatString("%@ %@", {"a"}), "a (null)");
  EXPECT_EQ(formatString("%@", {"a", "b"}), "a");
}

TEST(FormatString, AValueThatIsNoNumberGivesItsDescription) {
  EXPECT_NO_THROW(formatString("%d", {platform::Array{1}}));
}

TEST(FormatString, TheValuesAreNotReadAsFormats) {
  EXPECT_EQ(formatString("%@!", {"%@ %d %n"}), "%@ %d %n!");
}

TEST(NSLog, WritesOneLineToTheProcessesLogWithTheClocksTime) {
  TestProcess test;
  test.scheduler().advance(2.5);
  NSLog("[Zentrova] source: %@", {"x"});
  const std::vector<LogEntry> entries = test.log().entries();
  ASSERT_EQ(entries.size(), 1U);
  EXPECT_EQ(entries[0].message, "[Zentrova] source: x");
  EXPECT_EQ(entries[0].time, 2.5);
  EXPECT_EQ(entries[0].source, LogSource::nslog);
  EXPECT_EQ(entries[0].level, LogLevel::standard);
}

TEST(NSLog, WithoutALogNothingHappens) {
  platform::Process process;
  const platform::ProcessScope scope(process);
  EXPECT_NO_THROW(NSLog("x"));
  EXPECT_FALSE(platform::os_log_type_enabled(LogLevel::error));
}

TEST(OsLog, WritesFinishedTextAtItsLevel) {
  TestProcess test;
  EXPECT_TRUE(platform::os_log_type_enabled(LogLevel::standard));
  platform::os_log(LogLevel::standard, "100% %@");
  ASSERT_EQ(test.log().entries().size(), 1U);
  EXPECT_EQ(test.log().entries()[0].message, "100% %@");
  EXPECT_EQ(test.log().entries()[0].source, LogSource::unified);
}

TEST(OsLog, LeavesOutALevelThatIsNotEnabled) {
  TestProcess test;
  EXPECT_FALSE(platform::os_log_type_enabled(LogLevel::debug));
  platform::os_log(LogLevel::debug, "x");
  EXPECT_TRUE(test.log().entries().empty());
}

LogEntry entry(const std::string& message) {
  return {0.0, LogSource::nslog, LogLevel::standard, message};
}

TEST(MemoryLog, KeepsWhatIsWritten) {
  MemoryLog log;
  for (const char* text : {"a", "b", "c"}) log.write(entry(text));
  EXPECT_EQ(log.entries().size(), 3U);
  EXPECT_TRUE(log.contains("b"));
  EXPECT_FALSE(log.contains("d"));
}

TEST(MemoryLog, KeepsNoMoreThanItsCapacity) {
  MemoryLog log(2);
  for (const char* text : {"a", "b", "c"}) log.write(entry(text));
  EXPECT_EQ(log.entries().size(), 2U);
  EXPECT_EQ(log.entries()[0].message, "b");
}

TEST(MemoryLog, TellsObservers) {
  MemoryLog log;
  std::vector<std::string> seen;
  const auto observer = log.addObserver([&](const LogEntry& each) {
    seen.push_back(each.message);
    if (each.message == "a") log.write(entry("from the observer"));
  });
  log.write(entry("a"));
  log.removeObserver(observer);
  log.write(entry("b"));
  EXPECT_THAT(seen, testing::ElementsAre("a", "from the observer"));
}

}  // namespace
