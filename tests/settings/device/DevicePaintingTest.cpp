#include <gtest/gtest.h>
#include <set>

#include "platform/uikit/images/ImageCodecs.h"
#include "settings/device/Glyphs.h"
#include "settings/device/InstalledModules.h"
#include "settings/device/Painting.h"

namespace settings::tests {
namespace {

using Pixel = std::vector<std::uint8_t>;

Pixel pixelAt(const Canvas& canvas, int x, int y) {
  const auto index = static_cast<std::size_t>(y * canvas.width() + x) * 4;
  return {canvas.pixels().begin() + static_cast<std::ptrdiff_t>(index),
          canvas.pixels().begin() + static_cast<std::ptrdiff_t>(index) + 4};
}

TEST(DevicePainting, FillsInsideOfAFormOnly) {
  Canvas canvas(20, 10, {10, 20, 30, 255});
  canvas.fill({200, 100, 50, 255}, [](Position at) { return distanceToDisc(at, {0.5, 0.5}, 0.3); });
  EXPECT_EQ(pixelAt(canvas, 5, 5), (Pixel{200, 100, 50, 255}));
  EXPECT_EQ(pixelAt(canvas, 15, 5), (Pixel{10, 20, 30, 255}));
  EXPECT_EQ(pixelAt(canvas, 0, 0), (Pixel{10, 20, 30, 255}));
}

TEST(DevicePainting, BlendsByTheAlphaOfThePaint) {
  Canvas canvas(4, 4, {0, 0, 0, 255});
  canvas.fill({255, 255, 255, 51}, [](Position) { return -1.0; });
  EXPECT_EQ(pixelAt(canvas, 1, 1), (Pixel{51, 51, 51, 255}));
  Canvas empty(4, 4, {0, 0, 0, 0});
  empty.fill({255, 0, 0, 128}, [](Position) { return -1.0; });
  EXPECT_EQ(pixelAt(empty, 1, 1), (Pixel{255, 0, 0, 128}));
}

TEST(DevicePainting, PngKeepsEveryPixel) {
  Canvas canvas(7, 5, {1, 2, 3, 4});
  canvas.fill({250, 120, 60, 200}, [](Position at) {
    return distanceToBox(at, {0.5, 0.5}, {0.2, 0.3}, 0.1);
  });
  const std::string bytes = encodePng(canvas);
  const auto picture = platform::LibraryImageCodecs().decode(
      {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  ASSERT_NE(picture.pixels, nullptr) << picture.problem;
  EXPECT_EQ(picture.pixels->width, 7U);
  EXPECT_EQ(picture.pixels->height, 5U);
  EXPECT_EQ(picture.pixels->rgba, canvas.pixels());
}

TEST(DevicePainting, IconIsRoundedAndTransparentAtItsCorners) {
  const Canvas icon = makeIcon(87, {0, 122, 255, 255}, Glyph::grid);
  EXPECT_EQ(pixelAt(icon, 0, 0)[3], 0);
  EXPECT_EQ(pixelAt(icon, 86, 86)[3], 0);
  EXPECT_EQ(pixelAt(icon, 43, 3), (Pixel{0, 122, 255, 255}));
  EXPECT_EQ(pixelAt(icon, 34, 34), (Pixel{255, 255, 255, 255}));
}

// Each glyph draws something of its own.
TEST(DevicePainting, NoTwoGlyphsLookAlike) {
  std::set<std::vector<std::uint8_t>> pictures;
  const Canvas plain(40, 40, {0, 0, 0, 255});
  pictures.insert(plain.pixels());
  for (int glyph = 0; glyph <= static_cast<int>(Glyph::waves); ++glyph) {
    Canvas canvas(40, 40, {0, 0, 0, 255});
    drawGlyph(canvas, static_cast<Glyph>(glyph), {255, 255, 255, 255});
    EXPECT_TRUE(pictures.insert(canvas.pixels()).second) << glyph;
  }
}

TEST(DevicePainting, ModulesHaveNamesAndIdentifiersOfTheirOwn) {
  std::set<std::string_view> identifiers;
  std::set<std::string_view> names;
  for (const auto& module : installedModules()) {
    EXPECT_TRUE(identifiers.insert(module.identifier).second) << module.identifier;
    EXPECT_TRUE(names.insert(module.name).second) << module.name;
  }
}

}  // namespace
}  // namespace settings::tests
