#include "platform/uikit/images/JpegErrors.h"

#include <jerror.h>

namespace platform {

void JpegErrors::leave(j_common_ptr common) {
  std::array<char, JMSG_LENGTH_MAX> reason{};
  common->err->format_message(common, reason.data());
  leaveBecause(common, reason.data());
}

// At the end of the file, the library only warns and fills in grey. Other damage is accepted.
void JpegErrors::judge(j_common_ptr common, int level) {
  constexpr int warning = -1;
  if (level == warning && common->err->msg_code == JWRN_JPEG_EOF) {
    leaveBecause(common, "it is cut off");
  }
}

}  // namespace platform
