#pragma once

#include <memory>
#include <optional>
#include <string>

#include "cells/HBLinkTableCell.h"

namespace platform {
class NSURL;
}

namespace zentrova {

// A person's profile: "user" is the name, without "@", and "userID" the number, both strings. Sets
// the specifier's "url" to the profile's address, for the code that handles taps, and sets
// "iconCircular" if the row does not have it. A row needs "user"; one with "userID" alone has an
// address but cannot be shown. Threads: main.
class HBTwitterCell : public HBLinkTableCell {
  PLATFORM_CLASS(HBTwitterCell)

 public:
  static void registerClass(platform::ClassRegistry& registry);

  // The address of a profile, by name if there is one, otherwise by id. With neither, the assertion
  // fails: the standard handler raises NSInternalInconsistencyException. Sent to the cell's own
  // class, so that subclasses can return other addresses. A name without a UTF-8 form raises
  // NSInvalidArgumentException.
  static std::shared_ptr<platform::NSURL> _urlForUsername(
      const std::optional<std::string>& username, const std::optional<std::string>& userID);

  using HBLinkTableCell::initWithStyle;
  // Raises what _urlForUsername raises. With "userID" alone there is no name for the subtitle: this
  // raises NSInvalidArgumentException after the properties have been set.
  bool initWithStyle(platform::UITableViewCellStyle style,
                     const std::optional<std::string>& reuseIdentifier,
                     const std::shared_ptr<platform::PSSpecifier>& specifier) override;
};

}  // namespace zentrova
