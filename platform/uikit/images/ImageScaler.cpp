#include "platform/uikit/images/ImageScaler.h"

#include "platform/uikit/images/PixelBlending.h"

namespace platform {
namespace {

// In pixels. Anything thinner is not drawn.
constexpr double thinnest = 1e-3;

bool isDrawn(const Rect& rect) {
  return rect.width > thinnest && rect.height > thinnest && std::isfinite(rect.width) &&
         std::isfinite(rect.height);
}

// The source pixels, along one axis, that make up a target pixel.
struct Blend {
  std::size_t first = 0;
  std::vector<float> weights;  // of `first` and the pixels after it; the sum is 1
};

// A triangle filter around the centre of the target pixel, as wide as a pixel of the lower
// resolution.
Blend blendOf(double centre, double sourcePerTarget, std::uint32_t sourceLength) {
  const double reach = std::max(1.0, sourcePerTarget);
  const double last = sourceLength - 1.0;
  const auto from = static_cast<std::size_t>(std::clamp(std::ceil(centre - reach), 0.0, last));
  const auto to = static_cast<std::size_t>(std::clamp(std::floor(centre + reach), 0.0, last));
  const double nearest = std::clamp(centre, 0.0, last);
  Blend blend{from, {}};
  float sum = 0;
  for (std::size_t at = from; at <= to; ++at) {
    const double away = std::abs(static_cast<double>(at) - nearest);
    blend.weights.push_back(static_cast<float>(std::max(0.0, 1 - away / reach)));
    sum += blend.weights.back();
  }
  for (float& weight : blend.weights) weight /= sum;
  return blend;
}

class ScaledAxis {
 public:
  ScaledAxis(double start, double length, std::uint32_t sourceLength)
      : _start(start), _perTarget(sourceLength / length), _sourceLength(sourceLength) {}
  Blend blendAt(std::uint32_t target) const {
    return blendOf((target + 0.5 - _start) * _perTarget - 0.5, _perTarget, _sourceLength);
  }

 private:
  double _start;
  double _perTarget;
  std::uint32_t _sourceLength;
};

// Adds a weighted, premultiplied row of the source.
void addRow(const ImagePixels& source, std::size_t row, float weight, std::vector<float>& sums) {
  const std::uint8_t* pixel = &source.rgba[row * source.width * bytesPerPixel];
  for (std::size_t at = 0; at < sums.size(); at += bytesPerPixel, pixel += bytesPerPixel) {
    const float alpha = weight * static_cast<float>(pixel[3]) / 255;
    sums[at] += alpha * static_cast<float>(pixel[0]);
    sums[at + 1] += alpha * static_cast<float>(pixel[1]);
    sums[at + 2] += alpha * static_cast<float>(pixel[2]);
    sums[at + 3] += alpha;
  }
}

Ink meanOf(const std::vector<float>& row, const Blend& blend) {
  double sums[bytesPerPixel] = {};
  const float* pixel = &row[blend.first * bytesPerPixel];
  for (const float weight : blend.weights) {
    for (std::size_t channel = 0; channel < bytesPerPixel; ++channel) {
      sums[channel] += static_cast<double>(weight * pixel[channel]);
    }
    pixel += bytesPerPixel;
  }
  const double alpha = sums[3];
  if (alpha <= 0) return {};
  const double whole = alpha * 255;
  return {sums[0] / whole, sums[1] / whole, sums[2] / whole, std::min(alpha, 1.0)};
}

}  // namespace

void drawScaled(const ImagePixels& source, const Rect& rect, ImagePixels& target) {
  const PixelRange range = PixelRange::of(rect, target);
  if (range.left >= range.right || !isDrawn(rect)) return;
  std::vector<Blend> columns;
  const ScaledAxis across(rect.x, rect.width, source.width);
  for (std::uint32_t x = range.left; x < range.right; ++x) columns.push_back(across.blendAt(x));
  const ScaledAxis down(rect.y, rect.height, source.height);
  std::vector<float> row(bytesPerPixel * source.width);
  for (std::uint32_t y = range.top; y < range.bottom; ++y) {
    const Blend blend = down.blendAt(y);
    std::ranges::fill(row, 0.0F);
    for (std::size_t at = 0; at < blend.weights.size(); ++at) {
      addRow(source, blend.first + at, blend.weights[at], row);
    }
    const double covered = coverageOfPixel(y, rect.y, rect.maxY());
    std::uint8_t* pixel =
        &target.rgba[bytesPerPixel * (std::size_t{target.width} * y + range.left)];
    for (std::uint32_t x = range.left; x < range.right; ++x, pixel += bytesPerPixel) {
      Ink ink = meanOf(row, columns[x - range.left]);
      ink.alpha *= covered * coverageOfPixel(x, rect.x, rect.maxX());
      blendPixel(pixel, ink);
    }
  }
}

}  // namespace platform
