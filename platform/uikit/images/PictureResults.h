#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/uikit/images/ImagePixels.h"

namespace platform {

// What came of reading a picture.
struct DecodedPicture {
  std::shared_ptr<const ImagePixels> pixels;  // empty where the picture was refused
  std::string problem;                        // then why, as a sentence for people
};

enum class EncodingOutcome : std::uint8_t { done, aboveLimit, failed };

// What came of writing a picture.
struct EncodedPicture {
  EncodingOutcome outcome = EncodingOutcome::failed;
  std::vector<std::uint8_t> bytes;  // only where it was done
  std::string problem;              // why it failed, as a sentence for people
};

}  // namespace platform
