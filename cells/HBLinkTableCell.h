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

// A row that stands for a web link: a title, a subtitle under it, the symbol "safari" behind them
// and, where the row asks for one, a square icon in front: an image that is fetched, or a grey tile
// with initials. Everything comes from the specifier's properties: "big", "iconURL", "subtitle",
// "initials", "iconCircular", "iconCornerRadius", "showIcon", "showAvatar". A value of another kind
// than the property takes counts as absent, but for "iconURL", which is kept as it is. The cell
// does not react to a tap.
//
// The request for the icon is made and never started, so that the icon appears only where somebody
// else hands the task an answer.
//
// Threads: main, but for iconLoadDidFailWithResponse and iconURL.
class HBLinkTableCell : public HBTintedTableCell {
  PLATFORM_CLASS(HBLinkTableCell)

 public:
  static void registerClass(platform::ClassRegistry& registry);

  using HBTintedTableCell::initWithStyle;
  // The style is always the one with a subtitle, whatever is asked for. Where the row shows an
  // icon, writes a transparent image of the icon's size under the specifier's "iconImage", which
  // reserves the place and stays there.
  bool initWithStyle(platform::UITableViewCellStyle style,
                     const std::optional<std::string>& reuseIdentifier,
                     const std::shared_ptr<platform::PSSpecifier>& specifier) override;

  // Whether the row asks for an icon: by "showIcon" or "showAvatar" that is true, or by an
  // "iconURL" or "initials" that is there at all. A false "showIcon" hides nothing.
  virtual bool shouldShowIcon();
  // Makes the request for the icon on the queue for loading icons; nothing where there is no
  // address or an image is shown already. The cell lives until the request was made.
  virtual void loadIconIfNeeded();
  // For subclasses: the icon could not be fetched. Called on the session's callback queue, but on
  // the main queue where the answer was fine and its data no image. Here it does nothing.
  virtual void iconLoadDidFailWithResponse(const std::shared_ptr<platform::NSURLResponse>& response,
                                           const std::shared_ptr<platform::NSError>& error);

  // The image in iconImageView. Without that view none, and setting does nothing. The first image
  // fades in, a later one replaces it at once.
  std::shared_ptr<platform::UIImage> iconImage() const;
  virtual void setIconImage(const std::shared_ptr<platform::UIImage>& image);

  bool isBig() const noexcept { return _isBig; }
  // False for every cell: a round icon comes from the property alone.
  bool isIconCircular() const noexcept { return _isIconCircular; }
  // The tile; empty where the row shows no icon.
  const std::shared_ptr<platform::UIView>& iconView() const noexcept { return _iconView; }
  // Empty where the tile shows initials or the row shows no icon.
  const std::shared_ptr<platform::UIImageView>& iconImageView() const noexcept {
    return _iconImageView;
  }
  // An NSURL, none, or what the row had there of another kind. Threads: any.
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
