#pragma once

#include <algorithm>
#include <cstddef>
#include <mutex>
#include <string>
#include <vector>

#include "platform/uikit/images/ImageCodecs.h"

namespace zentrova::tests {

// Makes files of the sizes that the test sets, without encoding, and records the requests.
// Threads: any, once the sizes are set.
class ImageCodecStandIn final : public platform::ImageCodecs {
 public:
  struct Request {
    double quality = 0;  // 2 for PNG
    std::size_t limit = 0;
  };

  // Size 0 means that the picture cannot be encoded.
  std::size_t pngSize = 0;
  std::vector<std::size_t> jpegSizes;  // in order; the last one repeats

  platform::DecodedPicture decode(std::span<const std::uint8_t>) override {
    return {nullptr, "the stand-in decodes nothing"};
  }
  platform::EncodedPicture encodePng(const platform::ImagePixels&, std::size_t limit) override {
    return answer({2, limit}, pngSize, 'P');
  }
  platform::EncodedPicture encodeJpeg(const platform::ImagePixels&, double quality,
                                      std::size_t limit) override {
    const std::size_t count = requests().size() - 1;  // the PNG comes first
    const std::size_t last = jpegSizes.size() - 1;
    return answer({quality, limit}, jpegSizes.at(std::min(count, last)), 'J');
  }

  std::vector<Request> requests() const {
    const std::lock_guard lock(_mutex);
    return _requests;
  }
  std::vector<double> qualities() const {
    std::vector<double> result;
    for (const Request& request : requests()) {
      if (request.quality < 2) result.push_back(request.quality);
    }
    return result;
  }

 private:
  platform::EncodedPicture answer(Request request, std::size_t size, char fill) {
    const std::lock_guard lock(_mutex);
    _requests.push_back(request);
    if (size == 0) return {platform::EncodingOutcome::failed, {}, "the stand-in was told to fail"};
    if (size > request.limit) return {platform::EncodingOutcome::aboveLimit, {}, {}};
    return {platform::EncodingOutcome::done,
            std::vector<std::uint8_t>(size, static_cast<std::uint8_t>(fill)),
            {}};
  }

  mutable std::mutex _mutex;
  std::vector<Request> _requests;
};

}  // namespace zentrova::tests
