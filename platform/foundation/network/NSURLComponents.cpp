#include "platform/foundation/network/NSURLComponents.h"

#include <algorithm>
#include <utility>

#include "platform/foundation/objects/NSString.h"

namespace platform {
namespace {

using Item = std::shared_ptr<NSURLQueryItem>;

bool hasBracket(std::string_view text) {
  return text.find_first_of("[]") != std::string_view::npos;
}

bool isSound(const URLParts& parts) {
  const bool bracketsElsewhere = hasBracket(parts.path) || hasBracket(parts.query.value_or("")) ||
                                 hasBracket(parts.fragment.value_or("")) ||
                                 hasBracket(parts.user.value_or("")) ||
                                 hasBracket(parts.password.value_or(""));
  const std::string port = parts.port.value_or("");
  const bool number = std::ranges::all_of(port, [](char c) { return c >= '0' && c <= '9'; });
  return !bracketsElsewhere && number;
}

Item itemOfText(std::string_view text) {
  const std::size_t equals = text.find('=');
  std::optional<std::string> value;
  if (equals != std::string_view::npos) {
    value = stringByRemovingPercentEncoding(text.substr(equals + 1));
  }
  auto name = stringByRemovingPercentEncoding(text.substr(0, equals));
  return NSURLQueryItem::queryItemWithName(std::move(name).value_or(""), std::move(value));
}

std::string textOfItem(const NSURLQueryItem& item, const NSCharacterSet& allowed) {
  const auto encoded = [&](std::string_view text) {
    return stringByAddingPercentEncodingWithAllowedCharacters(text, allowed);
  };
  std::string text = encoded(item.name()).value_or("");
  const auto value = item.value() ? encoded(*item.value()) : std::nullopt;
  if (value) text.append("=").append(*value);
  return text;
}

}  // namespace

std::shared_ptr<NSURLQueryItem> NSURLQueryItem::queryItemWithName(
    std::string name, std::optional<std::string> value) {
  auto item = make<NSURLQueryItem>();
  item->_name = std::move(name);
  item->_value = std::move(value);
  return item;
}

std::shared_ptr<NSURLComponents> NSURLComponents::componentsWithString(std::string_view text) {
  if (!isLegalURLText(text)) return nullptr;
  URLParts parts = splitURL(text);
  if (!isSound(parts)) return nullptr;
  auto components = make<NSURLComponents>();
  components->_parts = std::move(parts);
  return components;
}

std::optional<NSURLComponents::QueryItems> NSURLComponents::queryItems() const {
  if (!_parts.query) return std::nullopt;
  QueryItems items;
  std::string_view rest = *_parts.query;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find('&'), rest.size());
    items.push_back(itemOfText(rest.substr(0, end)));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return items;
}

void NSURLComponents::setQueryItems(const std::optional<QueryItems>& items) {
  _parts.query.reset();
  if (!items) return;
  const auto allowed = NSCharacterSet::URLQueryAllowedCharacterSet()->without("&=");
  std::string query;
  for (const Item& item : *items) {
    if (!item) continue;
    if (!query.empty()) query += '&';
    query += textOfItem(*item, *allowed);
  }
  _parts.query = std::move(query);
}

std::shared_ptr<NSURL> NSURLComponents::URL() const {
  return std::make_shared<NSURL>(_parts.text());
}

}  // namespace platform
