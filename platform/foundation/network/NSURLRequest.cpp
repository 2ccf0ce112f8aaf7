#include "platform/foundation/network/NSURLRequest.h"

#include <algorithm>

namespace platform {
namespace {

unsigned char lowerCase(char each) noexcept {
  const bool upper = each >= 'A' && each <= 'Z';
  return static_cast<unsigned char>(upper ? each - 'A' + 'a' : each);
}

}  // namespace

bool HeaderNameOrder::operator()(std::string_view a, std::string_view b) const noexcept {
  return std::ranges::lexicographical_compare(a, b, {}, lowerCase, lowerCase);
}

std::shared_ptr<NSMutableURLRequest> NSMutableURLRequest::requestWithURL(
    std::shared_ptr<NSURL> url) {
  auto request = make<NSMutableURLRequest>();
  request->_url = std::move(url);
  return request;
}

std::shared_ptr<NSMutableURLRequest> NSMutableURLRequest::copy() const {
  auto result = requestWithURL(_url);
  result->_headers = _headers;
  return result;
}

void NSMutableURLRequest::setValue(const std::optional<std::string>& value,
                                   const std::string& headerField) {
  if (value) {
    _headers.insert_or_assign(headerField, *value);
  } else {
    _headers.erase(headerField);
  }
}

std::optional<std::string> NSMutableURLRequest::valueForHTTPHeaderField(
    std::string_view headerField) const {
  const auto found = _headers.find(std::string(headerField));
  if (found == _headers.end()) return std::nullopt;
  return found->second;
}

}  // namespace platform
