#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "cells/HBTintedTableCell.h"
#include "cells/IconMask.h"
#include "platform/foundation/network/NSURLSession.h"
#include "platform/foundation/values/Value.h"
#include "platform/uikit/views/UIImageView.h"

namespace zentrova {

// A row for a web link: a title, a subtitle below it, the symbol "safari" as the accessory and
// optionally a square icon in front, which is a downloaded image or a grey tile with initials. All
// of it comes from the specifier's properties: "big", "iconURL", "subtitle", "initials",
// "iconCircular", "iconCornerRadius", "showIcon", "showAvatar". A value of the wrong type counts as
// absent, except for "iconURL", which is kept unchanged. The cell does not react to taps.
//
// The request for the icon is created but never started. The icon appears only if the task gets an
// answer from elsewhere.
//
// Threads: main, except for iconLoadDidFailWithResponse and iconURL.
class HBLinkTableCell : public HBTintedTableCell {
  PLATFORM_CLASS(HBLinkTableCell)

 public:
  static void registerClass(platform::ClassRegistry& registry);

  using HBTintedTableCell::initWithStyle;
  // Ignores the style: it is always the one with a subtitle. If the row shows an icon, sets the
  // specifier's "iconImage" to a transparent image of the icon's size, which reserves the space.
  bool initWithStyle(platform::UITableViewCellStyle style,
                     const std::optional<std::string>& reuseIdentifier,
                     const std::shared_ptr<platform::PSSpecifier>& specifier) override;

  // Whether the row shows an icon: "showIcon" or "showAvatar" is true, or there is an "iconURL" or
  // "initials". A false "showIcon" does not hide the icon.
  virtual bool shouldShowIcon();
  // Creates the request for the icon on the queue that loads icons. Does nothing if there is no
  // address or if an image is shown already. The cell stays alive until the request is created.
  virtual void loadIconIfNeeded();
  // For subclasses; does nothing here. Called when the icon could not be loaded: on the session's
  // callback queue, or on the main queue if the answer was good but its data is not an image.
  virtual void iconLoadDidFailWithResponse(const std::shared_ptr<platform::NSURLResponse>& response,
                                           const std::shared_ptr<platform::NSError>& error);

  // The image in iconImageView. Empty without that view; setting it then does nothing. The first
  // image fades in; later ones replace it at once.
  std::shared_ptr<platform::UIImage> iconImage() const;
  virtual void setIconImage(const std::shared_ptr<platform::UIImage>& image);

  bool isBig() const noexcept { return _isBig; }
  // False for every cell; only the specifier's property makes an icon round.
  bool isIconCircular() const noexcept { return _isIconCircular; }
  // The tile; empty if the row shows no icon.
  const std::shared_ptr<platform::UIView>& iconView() const noexcept { return _iconView; }
  // Empty if the tile shows initials or the row shows no icon.
  const std::shared_ptr<platform::UIImageView>& iconImageView() const noexcept {
    return _iconImageView;
  }
  // An NSURL, none, or the row's value if it has another type. Threads: any.
  platform::Value iconURL() const;
  void setIconURL(const platform::Value& url);

  static constexpr const char* loadIconQueueLabel =
      "com.hollowmere.zentrovaprefs.common.load-icon-queue";

 private:
  IconSize iconSize() const noexcept { return _isBig ? IconSize::big : IconSize::normal; }
  void showAccessory();
  void addIcon();
  void addTile();
  void addInitials(const std::optional<std::string>& initials);
  void addImageView();
  void shapeTile(double side);
  void requestIcon(const std::string& systemVersion);
  void iconRequestDidEnd(const platform::URLAnswer& answer);
  void showFetchedIcon(const platform::URLAnswer& answer);
  void logFailure(std::int64_t status, const std::shared_ptr<platform::NSError>& error) const;

  bool _isBig = false;
  bool _isIconCircular = false;
  std::shared_ptr<platform::UIView> _iconView;
  std::shared_ptr<platform::UIImageView> _iconImageView;
  mutable std::mutex _iconURLMutex;
  platform::Value _iconURL;
};

}  // namespace zentrova
