#pragma once

#include <cstdint>

#include "settings/device/Painting.h"

namespace settings {

// What is drawn on the icon of a module.
enum class Glyph : std::uint8_t {
  bars,
  battery,
  bell,
  calculator,
  camera,
  circle,
  clock,
  contrast,
  cross,
  drop,
  ear,
  figure,
  frame,
  grid,
  house,
  key,
  lamp,
  lens,
  letters,
  lock,
  moon,
  note,
  page,
  play,
  power,
  rays,
  remote,
  screens,
  silence,
  slider,
  stopwatch,
  turn,
  voice,
  wallet,
  waves,
};

// Draws the glyph over the whole square canvas.
void drawGlyph(Canvas& canvas, Glyph glyph, Paint paint);

// A rounded square in that colour with the glyph in white, transparent around it.
Canvas makeIcon(int side, Paint background, Glyph glyph);

}  // namespace settings
