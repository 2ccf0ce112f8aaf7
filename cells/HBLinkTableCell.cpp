#include "cells/HBLinkTableCell.h"

#include <utility>

#include "cells/SpecifierProperties.h"
#include "platform/foundation/log/LogFormat.h"
#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/foundation/objects/NSLog.h"
#include "platform/foundation/objects/Process.h"
#include "platform/foundation/scheduling/Scheduler.h"
#include "platform/foundation/text/SourceFile.h"
#include "platform/uikit/drawing/UIDevice.h"
#include "platform/uikit/images/UIGraphicsImageRenderer.h"

namespace zentrova {

using platform::NSURL;
using platform::UIColor;
using platform::UIImage;
using platform::UIImageView;
using platform::UILabel;
using platform::UIView;
using platform::URLAnswer;
using platform::Value;

namespace {

// The levels have single precision.
constexpr double tileLevel = 0.9F;
constexpr double initialsTileLevel = 0.7F;
constexpr double initialsFontSize = 13.0;
constexpr double fadeInSeconds = 0.15;
constexpr std::int64_t acceptedStatus = 200;
constexpr const char* frameworkVersion = "2.0";
constexpr std::uint32_t flexibleSize =
    platform::UIViewAutoresizingFlexibleWidth | platform::UIViewAutoresizingFlexibleHeight;

platform::Scheduler& scheduler() {
  return platform::Process::current().service<platform::Scheduler>();
}

// The process has one queue, which all cells share.
struct LoadIconQueue {
  std::shared_ptr<platform::SerialQueue> queue =
      scheduler().makeSerialQueue(HBLinkTableCell::loadIconQueueLabel);
};

std::shared_ptr<UIImage> transparentImage(double side) {
  return platform::UIGraphicsImageRenderer({side, side}).imageWithActions([](auto&) {});
}

}  // namespace

bool HBLinkTableCell::initWithStyle(platform::UITableViewCellStyle /*style*/,
                                    const std::optional<std::string>& reuseIdentifier,
                                    const std::shared_ptr<platform::PSSpecifier>& specifier) {
  if (!HBTintedTableCell::initWithStyle(platform::UITableViewCellStyle::subtitle, reuseIdentifier,
                                        specifier)) {
    return false;
  }
  _isBig = isTrue(propertyOf(specifier, "big"));
  const Value url = propertyOf(specifier, "iconURL");
  setIconURL(url.isString() ? Value(NSURL::URLWithString(*url.asString())) : url);
  setSelectionStyle(platform::UITableViewCellSelectionStyle::standard);
  showAccessory();
  const Value subtitle = propertyOf(specifier, "subtitle");
  detailTextLabel()->setNumberOfLines(_isBig ? 0 : 1);
  detailTextLabel()->setText(subtitle.text().value_or(""));
  detailTextLabel()->setTextColor(UIColor::secondaryLabelColor());
  setSpecifier(specifier);
  if (shouldShowIcon()) addIcon();
  return true;
}

void HBLinkTableCell::showAccessory() {
  const auto symbol =
      platform::make(&UIImageView::initWithImage, UIImage::systemImageNamed("safari"));
  symbol->setTintColor(UIColor::systemGray3Color());
  setAccessoryView(symbol);
}

bool HBLinkTableCell::shouldShowIcon() {
  return isTrue(propertyOf(specifier(), "showIcon")) ||
         isTrue(propertyOf(specifier(), "showAvatar")) || propertyOf(specifier(), "iconURL") ||
         propertyOf(specifier(), "initials");
}

// --- The tile ---

void HBLinkTableCell::addIcon() {
  const double side = sideOfIcon(iconSize());
  specifier()->setProperty(Value(transparentImage(side)), "iconImage");
  addTile();
  const Value initials = propertyOf(specifier(), "initials");
  if (initials) {
    addInitials(initials.text());
  } else {
    addImageView();
    loadIconIfNeeded();
  }
  shapeTile(side);
}

// The tile covers the standard image view, which has the size of the placeholder.
void HBLinkTableCell::addTile() {
  _iconView = platform::makeWithFrame<UIView>(imageView()->bounds());
  _iconView->setAutoresizingMask(flexibleSize);
  _iconView->setBackgroundColor(UIColor::colorWithWhite(tileLevel, 1));
  _iconView->setUserInteractionEnabled(false);
  _iconView->setClipsToBounds(true);
  imageView()->addSubview(_iconView);
}

void HBLinkTableCell::addInitials(const std::optional<std::string>& initials) {
  _iconView->setBackgroundColor(UIColor::colorWithWhite(initialsTileLevel, 1));
  const auto label = platform::makeWithFrame<UILabel>(_iconView->bounds());
  label->setAutoresizingMask(flexibleSize);
  label->setFont(platform::UIFont::systemFontOfSize(initialsFontSize));
  label->setTextAlignment(platform::NSTextAlignment::center);
  label->setTextColor(UIColor::whiteColor());
  label->setText(initials);
  _iconView->addSubview(label);
}

void HBLinkTableCell::addImageView() {
  _iconImageView = platform::makeWithFrame<UIImageView>(_iconView->bounds());
  _iconImageView->setAutoresizingMask(flexibleSize);
  _iconImageView->setAlpha(0);
  _iconImageView->setUserInteractionEnabled(false);
  _iconImageView->layer()->setMinificationFilter("trilinear");
  _iconView->addSubview(_iconImageView);
}

void HBLinkTableCell::shapeTile(double side) {
  const auto radius = realOf(propertyOf(specifier(), "iconCornerRadius"));
  if (isTrue(propertyOf(specifier(), "iconCircular"))) {
    _iconView->layer()->setCornerRadius(side * 0.5);
  } else if (radius && !(*radius < 0)) {  // NaN is not negative
    _iconView->layer()->setCornerRadius(*radius);
  } else {
    const auto mask = platform::make<platform::CALayer>();
    mask->setFrame({0, 0, side, side});
    mask->setContents(iconMaskOfSize(iconSize()));
    _iconView->layer()->setMask(mask);
    _iconView->layer()->setCornerRadius(0);
  }
}

// --- The image ---

Value HBLinkTableCell::iconURL() const {
  const std::lock_guard lock(_iconURLMutex);
  return _iconURL;
}

void HBLinkTableCell::setIconURL(const Value& url) {
  const std::lock_guard lock(_iconURLMutex);
  _iconURL = url;
}

std::shared_ptr<UIImage> HBLinkTableCell::iconImage() const {
  return _iconImageView ? _iconImageView->image() : nullptr;
}

void HBLinkTableCell::setIconImage(const std::shared_ptr<UIImage>& image) {
  if (!_iconImageView) return;
  _iconImageView->setImage(image);
  if (_iconImageView->alpha() != 0) return;
  UIView::animateWithDuration(fadeInSeconds, [this] { _iconImageView->setAlpha(1); });
}

void HBLinkTableCell::loadIconIfNeeded() {
  if (!iconURL() || iconImage()) return;
  auto& queue = *platform::Process::current().once<LoadIconQueue>().queue;
  // The device's traits may be read on the main thread only.
  queue.async([cell = self<HBLinkTableCell>(),
               version = platform::UIDevice::currentDevice()->systemVersion()] {
    cell->requestIcon(version);
  });
}

// The task is never resumed here: it stays suspended until somebody else starts it.
void HBLinkTableCell::requestIcon(const std::string& systemVersion) {
  const auto request = platform::NSMutableURLRequest::requestWithURL(iconURL().as<NSURL>());
  request->setValue(platform::formatString("Peglol/%s iOS/%@", {frameworkVersion, systemVersion}),
                    "User-Agent");
  platform::NSURLSession::sharedSession()->dataTaskWithRequest(
      *request, [cell = self<HBLinkTableCell>()](const URLAnswer& answer) {
        cell->iconRequestDidEnd(answer);
      });
}

// Called on the session's callback queue.
void HBLinkTableCell::iconRequestDidEnd(const URLAnswer& answer) {
  const auto response = std::dynamic_pointer_cast<platform::NSHTTPURLResponse>(answer.response);
  const std::int64_t status = response ? response->statusCode() : 0;
  if (!answer.error && status == acceptedStatus) {
    scheduler().asyncMain(
        [cell = self<HBLinkTableCell>(), answer] { cell->showFetchedIcon(answer); });
    return;
  }
  logFailure(status, answer.error);
  iconLoadDidFailWithResponse(answer.response, answer.error);
}

void HBLinkTableCell::showFetchedIcon(const URLAnswer& answer) {
  if (const auto image = answer.data ? UIImage::imageWithData(*answer.data) : nullptr) {
    setIconImage(image);
  } else {
    iconLoadDidFailWithResponse(answer.response, answer.error);
  }
}

void HBLinkTableCell::logFailure(std::int64_t status,
                                 const std::shared_ptr<platform::NSError>& error) const {
  if (!platform::os_log_type_enabled(platform::LogLevel::standard)) return;
  const auto url = iconURL().as<NSURL>();
  const std::string message = platform::formatString(
      "Error loading icon (%@): %li %@ - %@",
      {url ? Value(url->absoluteString()) : Value(), status,
       platform::NSHTTPURLResponse::localizedStringForStatusCode(status), error});
  platform::os_log(platform::LogLevel::standard,
                   platform::formatString("[%{public}s:%{public}d] %{public}@",
                                          {platform::sourceFileName(__FILE__), __LINE__, message}));
}

void HBLinkTableCell::iconLoadDidFailWithResponse(
    const std::shared_ptr<platform::NSURLResponse>& /*response*/,
    const std::shared_ptr<platform::NSError>& /*error*/) {}

void HBLinkTableCell::registerClass(platform::ClassRegistry& registry) {
  using Cell = HBLinkTableCell;
  registry.add(
      platform::ClassBuilder<Cell>("HBTintedTableCell")
          .operation("shouldShowIcon", &Cell::shouldShowIcon)
          .operation("loadIconIfNeeded", &Cell::loadIconIfNeeded)
          .operation("iconLoadDidFailWithResponse:error:", &Cell::iconLoadDidFailWithResponse)
          .property("iconImage", &Cell::iconImage, &Cell::setIconImage)
          .property("iconURL", &Cell::iconURL, &Cell::setIconURL)
          .property("isBig", &Cell::isBig)
          .property("isIconCircular", &Cell::isIconCircular)
          .property("iconView", &Cell::iconView)
          .property("iconImageView", &Cell::iconImageView)
          .build());
}

}  // namespace zentrova
