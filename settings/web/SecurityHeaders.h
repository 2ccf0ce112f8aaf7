#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace settings {

using HttpHeaders = std::vector<std::pair<std::string, std::string>>;

// The headers of every answer of the page server: a content security policy that allows only the
// page's own files, no MIME sniffing, no referrer (the first address contains the token), no
// frames, and no sharing with other origins. `host` is the checked Host of the request; empty if
// the request was refused.
HttpHeaders securityHeaders(std::string_view host);

}  // namespace settings
