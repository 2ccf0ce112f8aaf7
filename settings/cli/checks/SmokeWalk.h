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
  std::string place;          // the pages and the row that lead to it
  std::string what;
};

struct SmokeReport {
  std::size_t configurations = 0;
  std::size_t pages = 0;
  std::size_t rows = 0;
  std::size_t sheets = 0;
  // Required effects that occurred: exceptions that belong to the product, and files that are
  // written when a picker closes or a choice is made in a sheet.
  std::set<std::string> expected;
  std::vector<SmokeFinding> findings;
  // Why pages could not be shown, without duplicates. They are findings too.
  std::set<std::string> brokenPages;
};

// Opens every page that can be reached from the bundle's first page, every row's sub-page and every
// sheet, as a user would, and records exceptions and writes. The application must be open with a
// virtual clock.
class SmokeWalk {
 public:
  SmokeWalk(Application& application, std::string configuration, SmokeReport& report);

  void run();
  // Files with required writes, by device path.
  const std::set<std::string>& expectedWrites() const noexcept { return _expectedWrites; }

 private:
  void visitPage(const std::string& place, int depth);
  void bringIntoSight(const std::vector<std::string>& rows, const std::string& place);
  void visitRow(const std::string& row, const std::string& place, int depth);
  // Handles what the tap on the row opened, and goes back.
  void lookAround(const std::string& page, const std::string& row, const std::string& place,
                  int depth);
  void visitSheet(const std::string& row, const std::string& place, int depth);
  void visitChoices(const std::string& sheet, const std::string& row, const std::string& place,
                    int depth);
  void closeSheet(const std::string& place);
  bool tap(const std::string& row, const std::string& place);
  bool mustRaise(const std::string& row);
  void answerCrash(const std::string& row, const std::string& place);
  // Returns the node's problem and records it as a finding; empty if there is none.
  std::string noteProblem(const FoundNode& node, const std::string& place);
  void settle();
  // Records the writes since the last call as findings, unless `reason` says why they are expected.
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
