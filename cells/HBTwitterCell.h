#pragma once

#include <memory>
#include <optional>
#include <string>

#include "cells/HBLinkTableCell.h"

namespace platform {
class NSURL;
}

namespace zentrova {

// A person's profile: "user" is the name, without "@", and "userID" the number, both texts. Writes
// the profile's address under the specifier's "url", for whoever handles a tap, and "iconCircular"
// where the row does not say whether its icon is round. Rows are written with "user": one with
// "userID" alone has an address and cannot be shown. Threads: main.
class HBTwitterCell : public HBLinkTableCell {
  PLATFORM_CLASS(HBTwitterCell)

 public:
  static void registerClass(platform::ClassRegistry& registry);

  // The address of a profile, by the name where it is given, else by the id. Without either the
  // current assertion handler is told, and the standard one raises
  // NSInternalInconsistencyException. Sent to the cell's own class, so that a subclass may give
  // other addresses. A name that has no UTF-8 form raises NSInvalidArgumentException.
  static std::shared_ptr<platform::NSURL> _urlForUsername(
      const std::optional<std::string>& username, const std::optional<std::string>& userID);

  using HBLinkTableCell::initWithStyle;
  // Raises what _urlForUsername raises. With "userID" alone raises NSInvalidArgumentException,
  // since there is no name for the subtitle, after the properties have been written.
  bool initWithStyle(platform::UITableViewCellStyle style,
                     const std::optional<std::string>& reuseIdentifier,
                     const std::shared_ptr<platform::PSSpecifier>& specifier) override;
};

}  // namespace zentrova
