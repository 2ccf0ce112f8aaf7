#include "platform/foundation/network/NSHTTPURLResponse.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace platform {
namespace {

struct StatusPhrase {
  std::int64_t status;
  std::string_view phrase;
};

constexpr std::array phrases{
    StatusPhrase{100, "continue"},
    StatusPhrase{101, "switching protocols"},
    StatusPhrase{200, "no error"},
    StatusPhrase{201, "created"},
    StatusPhrase{202, "accepted"},
    StatusPhrase{203, "non-authoritative information"},
    StatusPhrase{204, "no content"},
    StatusPhrase{205, "reset content"},
    StatusPhrase{206, "partial content"},
    StatusPhrase{300, "multiple choices"},
    StatusPhrase{301, "moved permanently"},
    StatusPhrase{302, "found"},
    StatusPhrase{303, "see other"},
    StatusPhrase{304, "not modified"},
    StatusPhrase{305, "needs proxy"},
    StatusPhrase{307, "temporarily redirected"},
    StatusPhrase{400, "bad request"},
    StatusPhrase{401, "unauthorized"},
    StatusPhrase{402, "payment required"},
    StatusPhrase{403, "forbidden"},
    StatusPhrase{404, "not found"},
    StatusPhrase{405, "method not allowed"},
    StatusPhrase{406, "unacceptable"},
    StatusPhrase{407, "proxy authentication required"},
    StatusPhrase{408, "request timed out"},
    StatusPhrase{409, "conflict"},
    StatusPhrase{410, "no longer exists"},
    StatusPhrase{411, "length required"},
    StatusPhrase{412, "precondition failed"},
    StatusPhrase{413, "request too large"},
    StatusPhrase{414, "requested URL too long"},
    StatusPhrase{415, "unsupported media type"},
    StatusPhrase{416, "requested range not satisfiable"},
    StatusPhrase{417, "expectation failed"},
    StatusPhrase{500, "internal server error"},
    StatusPhrase{501, "unimplemented"},
    StatusPhrase{502, "bad gateway"},
    StatusPhrase{503, "service unavailable"},
    StatusPhrase{504, "gateway timed out"},
    StatusPhrase{505, "unsupported version"},
};

constexpr std::array<std::string_view, 5> classPhrases{"informational", "success", "redirected",
                                                       "client error", "server error"};

}  // namespace

bool NSURLResponse::initWithURL(std::shared_ptr<NSURL> url) {
  _url = std::move(url);
  return true;
}

bool NSHTTPURLResponse::initWithURL(std::shared_ptr<NSURL> url, std::int64_t statusCode) {
  _statusCode = statusCode;
  return initWithURL(std::move(url));
}

std::string NSHTTPURLResponse::localizedStringForStatusCode(std::int64_t statusCode) {
  const auto* const found = std::ranges::find(phrases, statusCode, &StatusPhrase::status);
  if (found != phrases.end()) return std::string(found->phrase);
  if (statusCode < 100 || statusCode > 599) return "unknown status";
  return std::string(classPhrases.at(static_cast<std::size_t>(statusCode / 100 - 1)));
}

}  // namespace platform
