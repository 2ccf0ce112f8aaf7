#pragma once

#include <cstdint>

#include "settings/device/Painting.h"

namespace settings {

// What is drawn on the icon of a module.
enum class Glyph : std::uint8_t {
  bars,
  battery,
  bell,
  camera,
  circle,
  clock,
  cross,
  drop,
  ear,
  frame,
  grid,
  key,
  lamp,
  lock,
  moon,
  note,
  play,
  power,
  rays,
  slider,
  waves,
};

// Draws the glyph over the whole square canvas.
void drawGlyph(Canvas& canvas, Glyph glyph, Paint paint);

// A rounded square in that colour with the glyph in white, transparent around it.
Canvas makeIcon(int side, Paint background, Glyph glyph);

}  // namespace settings
