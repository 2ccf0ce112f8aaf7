#include "settings/device/Photos.h"

#include <string>

#include "settings/device/DeviceTree.h"
#include "settings/device/Glyphs.h"
#include "settings/device/Painting.h"
#include "settings/device/TreeWriter.h"

namespace settings {

namespace {

constexpr int photoWidth = 400;
constexpr int photoHeight = 300;
constexpr double photoQuality = 0.85;

struct Landscape {
  std::string_view name;
  Paint sky;
  Paint sun;
  Paint far;
  Paint near;
  double sunX;  // in heights of the picture
  double sunY;
  double slope;  // how often the hills rise
};

constexpr Landscape landscapes[] = {
    {"IMG_0001.JPG", {126, 186, 232}, {255, 244, 214}, {96, 140, 120}, {44, 92, 66}, 1.0, 0.2, 5},
    {"IMG_0002.JPG", {250, 170, 120}, {255, 230, 150}, {150, 84, 96}, {76, 44, 70}, 0.4, 0.4, 7},
    {"IMG_0003.JPG", {24, 30, 66}, {232, 236, 248}, {38, 48, 84}, {16, 20, 40}, 0.9, 0.2, 4},
    {"IMG_0004.JPG",
     {206, 222, 230},
     {255, 255, 255},
     {168, 188, 200},
     {120, 144, 160},
     0.6,
     0.3,
     9},
};

Paint lighter(Paint paint, int by) {
  const auto raise = [by](std::uint8_t part) {
    return static_cast<std::uint8_t>(std::min(part + by, 255));
  };
  return {raise(paint.red), raise(paint.green), raise(paint.blue), paint.alpha};
}

void fillHills(Canvas& canvas, Paint paint, double horizon, double height, double slope) {
  canvas.fill(paint, [=](Position at) {
    return horizon - height * std::sin(slope * at.x) * std::cos(0.7 * slope * at.x + 1) - at.y;
  });
}

// Lighter towards the horizon, in steps that are too small to be seen.
void fillSky(Canvas& canvas, Paint sky) {
  constexpr int steps = 48;
  constexpr double horizon = 0.62;
  for (int step = 1; step <= steps; ++step) {
    const double top = horizon * step / steps;
    canvas.fill(lighter(sky, step), [top](Position at) { return top - at.y; });
  }
}

Canvas paintLandscape(const Landscape& scene) {
  Canvas canvas(photoWidth, photoHeight, scene.sky);
  fillSky(canvas, scene.sky);
  canvas.fill(scene.sun, [&](Position at) {
    return distanceToDisc(at, {scene.sunX, scene.sunY}, 0.09);
  });
  fillHills(canvas, scene.far, 0.62, 0.10, scene.slope);
  fillHills(canvas, scene.near, 0.80, 0.07, scene.slope * 0.6 + 1);
  return canvas;
}

Canvas paintDrawing() {
  Canvas canvas(photoHeight, photoHeight, {0, 0, 0, 0});
  canvas.fill({88, 86, 214, 255}, [](Position at) {
    return distanceToDisc(at, {0.42, 0.42}, 0.3);
  });
  canvas.fill({255, 149, 0, 160}, [](Position at) {
    return distanceToDisc(at, {0.62, 0.6}, 0.28);
  });
  return canvas;
}

}  // namespace

void addPhotos(TreeWriter& writer) {
  const std::string folder = std::string(photosPath) + "/";
  for (const auto& scene : landscapes) {
    writer.file(folder + std::string(scene.name), encodeJpeg(paintLandscape(scene), photoQuality));
  }
  writer.file(folder + "IMG_0005.PNG", encodePng(paintDrawing()));
}

void addAvatar(TreeWriter& writer) {
  constexpr int side = 180;
  Canvas canvas(side, side, {40, 84, 92, 255});
  drawGlyph(canvas, Glyph::waves, {236, 244, 240, 255});
  writer.file(std::string(supportPath) + "/twitter.jpg", encodeJpeg(canvas, photoQuality));
}

}  // namespace settings
