#pragma once

#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "settings/application/Application.h"
#include "settings/scripting/TreeQuery.h"

namespace settings {

struct SmokeFinding {
  std::string configuration;  // "phone, 15.0, dark, in use"
  std::string place;          // the pages and the row that lead there
  std::string what;
};

struct SmokeReport {
  std::size_t configurations = 0;
  std::size_t pages = 0;
  std::size_t rows = 0;
  std::size_t sheets = 0;
  // What must happen and did: exceptions that belong to the product, files that a closed picker or
  // a choice in a sheet writes.
  std::set<std::string> expected;
  std::vector<SmokeFinding> findings;
  // Why pages could not be shown, each text once; they are findings too.
  std::set<std::string> brokenPages;
};

// Opens every page that can be reached from the bundle's first one, every row's sub-page and every
// sheet, with the user's hand, and notes what raises and what is written. The application has been
// opened with a clock that stands still.
class SmokeWalk {
 public:
  SmokeWalk(Application& application, std::string configuration, SmokeReport& report);

  void run();
  // Files that were written as they must be, by their path on the device.
  const std::set<std::string>& expectedWrites() const noexcept { return _expectedWrites; }

 private:
  void visitPage(const std::string& place, int depth);
  void bringIntoSight(const std::vector<std::string>& rows, const std::string& place);
  void visitRow(const std::string& row, const std::string& place, int depth);
  // Takes note of what the tap on the row has led to, and goes back.
  void lookAround(const std::string& page, const std::string& row, const std::string& place,
                  int depth);
  void visitSheet(const std::string& row, const std::string& place, int depth);
  void visitChoices(const std::string& sheet, const std::string& row, const std::string& place,
                    int depth);
  void closeSheet(const std::string& place);
  bool tap(const std::string& row, const std::string& place);
  bool mustRaise(const std::string& row);
  void answerCrash(const std::string& row, const std::string& place);
  // Gives the problem that the node tells of, which is a finding; no text where there is none.
  std::string noteProblem(const FoundNode& node, const std::string& place);
  void settle();
  // Writes since the last look are a finding unless they are expected, for which the reason stands.
  std::size_t takeWrites(const std::string& place, const std::string& reason);
  void find(const std::string& place, const std::string& what);
  TreeQuery query() { return TreeQuery(_application.tree()); }

  Application& _application;
  std::string _configuration;
  SmokeReport& _report;
  std::uint64_t _writesCursor = 0;
  std::set<std::string> _expectedWrites;
};

}  // namespace settings
