#include "settings/application/VersionFooter.h"

#include <algorithm>

#include "platform/foundation/objects/Class.h"
#include "platform/preferences/PSListController.h"
#include "platform/uikit/views/UILabel.h"

namespace settings {

using platform::UILabel;

namespace {

constexpr const char* versionLabelKey = "_versionLabel";
constexpr double footerFontSize = 13;
constexpr double footerMargin = 32;  // points, beside the text
constexpr double footerGap = 16;     // below the text
constexpr std::int64_t mostLines = 24;

std::shared_ptr<UILabel> makeFooterLabel() {
  auto label = platform::make<UILabel>();
  label->setFont(platform::UIFont::systemFontOfSize(footerFontSize));
  label->setTextColor(platform::UIColor::secondaryLabelColor());
  label->setNumberOfLines(mostLines);
  return label;
}

bool saysSomething(const std::string& text) {
  return text.find_first_not_of(" \t\r\n") != std::string::npos;
}

}  // namespace

VersionFooter::VersionFooter() = default;
VersionFooter::~VersionFooter() = default;

void VersionFooter::give(const std::shared_ptr<platform::UIViewController>& page) {
  _page.reset();
  _label = nullptr;
  _note = nullptr;
  _footer = nullptr;
  if (!page || page->objectClass().setter(versionLabelKey) == nullptr) return;
  _page = page;
  _label = makeFooterLabel();
  _note = makeFooterLabel();
  _note->setText("No version was printed.");
  _footer = platform::make<platform::UIView>();
  _footer->addSubview(_label);
  _footer->addSubview(_note);
  _shownText.reset();
  page->setValueForKey(platform::Value(_label), versionLabelKey);
}

std::shared_ptr<platform::UITableView> VersionFooter::table() const {
  const auto page = std::dynamic_pointer_cast<platform::PSListController>(_page.lock());
  return page && page->isViewLoaded() ? page->table() : nullptr;
}

bool VersionFooter::fit() {
  const auto list = table();
  if (!list || (list->tableFooterView() && list->tableFooterView() != _footer)) return false;
  const double width = list->frame().width;
  const bool isNew = _label->text() != _shownText;
  if (!isNew && width == _shownWidth) return false;
  _shownText = _label->text();
  _shownWidth = width;
  place(*list);
  if (isNew && _shownText) list->scrollRectToVisible(_footer->frame());
  return true;
}

void VersionFooter::place(platform::UITableView& table) {
  // A table reads the height of its footer only when the footer is set.
  table.setTableFooterView(nullptr);
  if (!_shownText) return;
  const bool answered = saysSomething(*_shownText);
  _label->setHidden(!answered);
  _note->setHidden(answered);
  const double width = std::max(_shownWidth - 2 * footerMargin, 1.0);
  const double height = (answered ? _label : _note)->sizeThatFitsWidth(width).height;
  _footer->setFrame({0, 0, _shownWidth, height + footerGap});
  for (const auto& each : {_label, _note}) each->setFrame({footerMargin, 0, width, height});
  table.setTableFooterView(_footer);
}

}  // namespace settings
