#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace settings {

using HttpHeaders = std::vector<std::pair<std::string, std::string>>;

// The headers that every answer of the page server bears: a content security policy that lets the
// page load nothing but its own files, no sniffing of types, no referrer (the first address holds
// the token), no frames, and nothing shared with other origins.
// `host` is the checked Host of the request; empty where it was refused.
HttpHeaders securityHeaders(std::string_view host);

}  // namespace settings
