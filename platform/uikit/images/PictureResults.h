#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/uikit/images/ImagePixels.h"

namespace platform {

// The result of decoding a picture.
struct DecodedPicture {
  std::shared_ptr<const ImagePixels> pixels;  // empty if the picture was refused
  std::string problem;                        // the reason, as a sentence for the user
};

enum class EncodingOutcome : std::uint8_t { done, aboveLimit, failed };

// The result of encoding a picture.
struct EncodedPicture {
  EncodingOutcome outcome = EncodingOutcome::failed;
  std::vector<std::uint8_t> bytes;  // only on success
  std::string problem;              // the reason of a failure, as a sentence for the user
};

}  // namespace platform
