#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cells/HBLinkTableCell.h"
#include "cells/HBTintedTableCell.h"
#include "cells/HBTwitterCell.h"
#include "platform/foundation/network/NSURLSession.h"
#include "platform/preferences/PreferencesClasses.h"
#include "platform/uikit/UIKitClasses.h"
#include "platform/uikit/controllers/UIWindow.h"
#include "tests/support/SmallPictures.h"
#include "tests/support/TestProcess.h"

namespace zentrova::tests {

using platform::PSSpecifier;
using platform::UITableViewCellStyle;
using platform::Value;
inline constexpr const char* iconAddress = "https://example.org/icon.png";
using Properties = std::vector<std::pair<const char*, Value>>;

inline std::shared_ptr<PSSpecifier> makeRow(const Properties& properties = {}) {
  auto row =
      PSSpecifier::preferenceSpecifierNamed("Title", nullptr, std::nullopt, std::nullopt,
                                            std::nullopt, platform::PSLinkCell, std::nullopt);
  for (const auto& [key, value] : properties) row->setProperty(value, key);
  return row;
}

template <class Cell>
std::shared_ptr<Cell> makeCell(const std::shared_ptr<PSSpecifier>& row,
                               UITableViewCellStyle style = UITableViewCellStyle::subtitle) {
  auto cell = std::make_shared<Cell>();
  return cell->initWithStyle(style, "identifier", row) ? cell : nullptr;
}

inline std::shared_ptr<HBLinkTableCell> makeLink(const Properties& properties = {}) {
  return makeCell<HBLinkTableCell>(makeRow(properties));
}

inline void registerCellClasses(platform::ClassRegistry& classes) {
  platform::registerUIKitClasses(classes);
  platform::registerPreferencesClasses(classes);
  HBTintedTableCell::registerClass(classes);
  HBLinkTableCell::registerClass(classes);
  HBTwitterCell::registerClass(classes);
}

// The answer of a server. Without a status there is no response.
inline platform::URLAnswer makeAnswer(std::optional<std::int64_t> status,
                                      std::optional<platform::Data> data = std::nullopt,
                                      std::shared_ptr<platform::NSError> error = nullptr) {
  platform::URLAnswer answer{std::move(data), nullptr, std::move(error)};
  if (status) {
    using Initialiser =
        bool (platform::NSHTTPURLResponse::*)(std::shared_ptr<platform::NSURL>, std::int64_t);
    answer.response =
        platform::make(static_cast<Initialiser>(&platform::NSHTTPURLResponse::initWithURL),
                       platform::NSURL::URLWithString(iconAddress), *status);
  }
  return answer;
}

inline platform::Data pictureData() {
  return platform::Data(std::string_view(test_support::onePixelPicture()));
}

// A process with the classes of the cells.
class CellsTest : public testing::Test {
 protected:
  CellsTest() { registerCellClasses(process.classes()); }

  // The created tasks, after the queue that loads icons has run.
  std::vector<platform::NSURLSession::Task> tasks() {
    process.scheduler().runAllBackground();
    return platform::NSURLSession::sharedSession()->tasks();
  }

  test_support::TestProcess process;
};

}  // namespace zentrova::tests
