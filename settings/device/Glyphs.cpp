#include "settings/device/Glyphs.h"

#include <span>

namespace settings {

namespace {

enum class Form : std::uint8_t { disc, ring, stroke, box, outline, crescent };

// A form with its measures: the centre or the start, the half size or the end, and the radius,
// the width of the line or the corner radius. Of a ring, `second.x` is the radius; an outline is
// the border of a box, drawn thin; a crescent is a disc without another one as large.
struct Piece {
  Form form;
  Position first;
  Position second;
  double measure;
};

constexpr double thin = 0.05;
constexpr double line = 0.07;
// Glyphs are drawn about the middle and a little larger than they are written down.
constexpr double enlarged = 1.2;

constexpr Piece barsPieces[] = {{Form::box, {0.32, 0.62}, {0.05, 0.10}, 0.03},
                                {Form::box, {0.50, 0.55}, {0.05, 0.17}, 0.03},
                                {Form::box, {0.68, 0.48}, {0.05, 0.24}, 0.03}};
constexpr Piece batteryPieces[] = {{Form::box, {0.47, 0.50}, {0.23, 0.13}, 0.05},
                                   {Form::box, {0.74, 0.50}, {0.02, 0.05}, 0.01}};
constexpr Piece bellPieces[] = {{Form::disc, {0.50, 0.44}, {}, 0.17},
                                {Form::box, {0.50, 0.53}, {0.17, 0.09}, 0.02},
                                {Form::stroke, {0.28, 0.64}, {0.72, 0.64}, thin},
                                {Form::disc, {0.50, 0.72}, {}, 0.05}};
constexpr Piece cameraPieces[] = {{Form::outline, {0.50, 0.53}, {0.23, 0.15}, 0.05},
                                  {Form::ring, {0.50, 0.53}, {0.075, 0.0}, thin},
                                  {Form::box, {0.50, 0.37}, {0.08, 0.035}, 0.02}};
constexpr Piece circlePieces[] = {{Form::ring, {0.50, 0.50}, {0.22, 0.0}, line},
                                  {Form::disc, {0.50, 0.50}, {}, 0.11}};
constexpr Piece clockPieces[] = {{Form::ring, {0.50, 0.50}, {0.23, 0.0}, thin},
                                 {Form::stroke, {0.50, 0.50}, {0.50, 0.36}, thin},
                                 {Form::stroke, {0.50, 0.50}, {0.60, 0.56}, thin}};
constexpr Piece crossPieces[] = {{Form::stroke, {0.36, 0.36}, {0.64, 0.64}, line},
                                 {Form::stroke, {0.64, 0.36}, {0.36, 0.64}, line}};
constexpr Piece dropPieces[] = {{Form::disc, {0.50, 0.57}, {}, 0.16},
                                {Form::stroke, {0.50, 0.30}, {0.42, 0.47}, line},
                                {Form::stroke, {0.50, 0.30}, {0.58, 0.47}, line}};
constexpr Piece earPieces[] = {{Form::ring, {0.50, 0.44}, {0.16, 0.0}, line},
                               {Form::stroke, {0.62, 0.54}, {0.54, 0.72}, line},
                               {Form::disc, {0.50, 0.44}, {}, 0.05}};
constexpr Piece framePieces[] = {{Form::stroke, {0.30, 0.30}, {0.44, 0.30}, line},
                                 {Form::stroke, {0.30, 0.30}, {0.30, 0.44}, line},
                                 {Form::stroke, {0.70, 0.70}, {0.56, 0.70}, line},
                                 {Form::stroke, {0.70, 0.70}, {0.70, 0.56}, line},
                                 {Form::box, {0.50, 0.50}, {0.10, 0.10}, 0.03}};
constexpr Piece gridPieces[] = {{Form::box, {0.39, 0.39}, {0.08, 0.08}, 0.02},
                                {Form::box, {0.61, 0.39}, {0.08, 0.08}, 0.02},
                                {Form::box, {0.39, 0.61}, {0.08, 0.08}, 0.02},
                                {Form::box, {0.61, 0.61}, {0.08, 0.08}, 0.02}};
constexpr Piece keyPieces[] = {{Form::ring, {0.40, 0.42}, {0.11, 0.0}, line},
                               {Form::stroke, {0.48, 0.50}, {0.70, 0.70}, line},
                               {Form::stroke, {0.64, 0.64}, {0.70, 0.58}, thin}};
constexpr Piece lampPieces[] = {{Form::disc, {0.50, 0.43}, {}, 0.17},
                                {Form::box, {0.50, 0.62}, {0.08, 0.05}, 0.01},
                                {Form::stroke, {0.45, 0.73}, {0.55, 0.73}, thin}};
constexpr Piece lockPieces[] = {{Form::box, {0.50, 0.58}, {0.17, 0.13}, 0.04},
                                {Form::ring, {0.50, 0.42}, {0.11, 0.0}, thin}};
constexpr Piece moonPieces[] = {{Form::crescent, {0.48, 0.52}, {0.60, 0.42}, 0.24}};
constexpr Piece notePieces[] = {{Form::disc, {0.40, 0.65}, {}, 0.08},
                                {Form::stroke, {0.46, 0.65}, {0.46, 0.32}, thin},
                                {Form::stroke, {0.46, 0.32}, {0.66, 0.38}, line}};
constexpr Piece playPieces[] = {{Form::stroke, {0.41, 0.34}, {0.41, 0.66}, line},
                                {Form::stroke, {0.41, 0.34}, {0.66, 0.50}, line},
                                {Form::stroke, {0.41, 0.66}, {0.66, 0.50}, line},
                                {Form::disc, {0.49, 0.50}, {}, 0.10}};
constexpr Piece powerPieces[] = {{Form::ring, {0.50, 0.53}, {0.20, 0.0}, line},
                                 {Form::stroke, {0.50, 0.27}, {0.50, 0.48}, line}};
constexpr Piece raysPieces[] = {{Form::disc, {0.50, 0.50}, {}, 0.12},
                                {Form::stroke, {0.50, 0.25}, {0.50, 0.30}, thin},
                                {Form::stroke, {0.50, 0.70}, {0.50, 0.75}, thin},
                                {Form::stroke, {0.25, 0.50}, {0.30, 0.50}, thin},
                                {Form::stroke, {0.70, 0.50}, {0.75, 0.50}, thin},
                                {Form::stroke, {0.32, 0.32}, {0.36, 0.36}, thin},
                                {Form::stroke, {0.64, 0.64}, {0.68, 0.68}, thin},
                                {Form::stroke, {0.32, 0.68}, {0.36, 0.64}, thin},
                                {Form::stroke, {0.64, 0.36}, {0.68, 0.32}, thin}};
constexpr Piece sliderPieces[] = {{Form::stroke, {0.28, 0.40}, {0.72, 0.40}, thin},
                                  {Form::disc, {0.60, 0.40}, {}, 0.08},
                                  {Form::stroke, {0.28, 0.62}, {0.72, 0.62}, thin},
                                  {Form::disc, {0.40, 0.62}, {}, 0.08}};
constexpr Piece calculatorPieces[] = {{Form::outline, {0.50, 0.50}, {0.16, 0.22}, 0.05},
                                      {Form::stroke, {0.43, 0.38}, {0.57, 0.38}, line},
                                      {Form::disc, {0.43, 0.51}, {}, 0.03},
                                      {Form::disc, {0.57, 0.51}, {}, 0.03},
                                      {Form::disc, {0.43, 0.62}, {}, 0.03},
                                      {Form::disc, {0.57, 0.62}, {}, 0.03}};
constexpr Piece figurePieces[] = {{Form::ring, {0.50, 0.50}, {0.25, 0.0}, thin},
                                  {Form::disc, {0.50, 0.36}, {}, 0.045},
                                  {Form::stroke, {0.38, 0.45}, {0.62, 0.45}, thin},
                                  {Form::stroke, {0.50, 0.45}, {0.50, 0.54}, line},
                                  {Form::stroke, {0.50, 0.54}, {0.44, 0.65}, thin},
                                  {Form::stroke, {0.50, 0.54}, {0.56, 0.65}, thin}};
constexpr Piece contrastPieces[] = {{Form::ring, {0.50, 0.50}, {0.22, 0.0}, thin},
                                    {Form::crescent, {0.50, 0.50}, {0.68, 0.50}, 0.22}};
constexpr Piece housePieces[] = {{Form::stroke, {0.26, 0.50}, {0.50, 0.29}, line},
                                 {Form::stroke, {0.50, 0.29}, {0.74, 0.50}, line},
                                 {Form::box, {0.50, 0.60}, {0.15, 0.11}, 0.02},
                                 {Form::box, {0.50, 0.48}, {0.10, 0.07}, 0.02}};
constexpr Piece lettersPieces[] = {{Form::stroke, {0.27, 0.66}, {0.34, 0.48}, thin},
                                   {Form::stroke, {0.34, 0.48}, {0.41, 0.66}, thin},
                                   {Form::stroke, {0.30, 0.60}, {0.38, 0.60}, thin},
                                   {Form::stroke, {0.47, 0.66}, {0.60, 0.33}, line},
                                   {Form::stroke, {0.60, 0.33}, {0.73, 0.66}, line},
                                   {Form::stroke, {0.52, 0.56}, {0.68, 0.56}, line}};
constexpr Piece lensPieces[] = {{Form::ring, {0.46, 0.45}, {0.15, 0.0}, line},
                                {Form::stroke, {0.57, 0.57}, {0.71, 0.71}, line}};
constexpr Piece pagePieces[] = {{Form::outline, {0.50, 0.50}, {0.17, 0.22}, 0.04},
                                {Form::stroke, {0.42, 0.41}, {0.58, 0.41}, thin},
                                {Form::stroke, {0.42, 0.51}, {0.58, 0.51}, thin},
                                {Form::stroke, {0.42, 0.61}, {0.52, 0.61}, thin}};
constexpr Piece remotePieces[] = {{Form::outline, {0.50, 0.50}, {0.11, 0.24}, 0.05},
                                  {Form::disc, {0.50, 0.37}, {}, 0.045},
                                  {Form::disc, {0.50, 0.51}, {}, 0.025},
                                  {Form::disc, {0.50, 0.61}, {}, 0.025}};
constexpr Piece screensPieces[] = {{Form::outline, {0.44, 0.44}, {0.19, 0.13}, 0.03},
                                   {Form::box, {0.59, 0.60}, {0.16, 0.11}, 0.03}};
constexpr Piece silencePieces[] = {{Form::disc, {0.50, 0.44}, {}, 0.17},
                                   {Form::box, {0.50, 0.53}, {0.17, 0.09}, 0.02},
                                   {Form::stroke, {0.28, 0.64}, {0.72, 0.64}, thin},
                                   {Form::stroke, {0.24, 0.24}, {0.76, 0.76}, thin},
                                   {Form::stroke, {0.24, 0.72}, {0.30, 0.78}, thin}};
constexpr Piece stopwatchPieces[] = {{Form::ring, {0.50, 0.54}, {0.20, 0.0}, thin},
                                     {Form::stroke, {0.44, 0.25}, {0.56, 0.25}, thin},
                                     {Form::stroke, {0.50, 0.25}, {0.50, 0.33}, thin},
                                     {Form::stroke, {0.67, 0.35}, {0.70, 0.38}, thin},
                                     {Form::stroke, {0.50, 0.54}, {0.50, 0.42}, thin}};
constexpr Piece turnPieces[] = {{Form::ring, {0.50, 0.50}, {0.25, 0.0}, thin},
                                {Form::box, {0.50, 0.55}, {0.10, 0.08}, 0.02},
                                {Form::ring, {0.50, 0.46}, {0.06, 0.0}, thin}};
constexpr Piece voicePieces[] = {{Form::stroke, {0.28, 0.45}, {0.28, 0.55}, thin},
                                 {Form::stroke, {0.39, 0.36}, {0.39, 0.64}, thin},
                                 {Form::stroke, {0.50, 0.27}, {0.50, 0.73}, thin},
                                 {Form::stroke, {0.61, 0.38}, {0.61, 0.62}, thin},
                                 {Form::stroke, {0.72, 0.45}, {0.72, 0.55}, thin}};
constexpr Piece walletPieces[] = {{Form::outline, {0.50, 0.52}, {0.23, 0.17}, 0.05},
                                  {Form::stroke, {0.30, 0.45}, {0.70, 0.45}, line},
                                  {Form::disc, {0.62, 0.58}, {}, 0.035}};
constexpr Piece wavesPieces[] = {{Form::disc, {0.50, 0.50}, {}, 0.06},
                                 {Form::ring, {0.50, 0.50}, {0.15, 0.0}, thin},
                                 {Form::ring, {0.50, 0.50}, {0.25, 0.0}, thin}};

// In the order of the enumeration.
constexpr std::span<const Piece> glyphs[] = {
    barsPieces,      batteryPieces,  bellPieces,   calculatorPieces, cameraPieces,  circlePieces,
    clockPieces,     contrastPieces, crossPieces,  dropPieces,       earPieces,     figurePieces,
    framePieces,     gridPieces,     housePieces,  keyPieces,        lampPieces,    lensPieces,
    lettersPieces,   lockPieces,     moonPieces,   notePieces,       pagePieces,    playPieces,
    powerPieces,     raysPieces,     remotePieces, screensPieces,    silencePieces, sliderPieces,
    stopwatchPieces, turnPieces,     voicePieces,  walletPieces,     wavesPieces};

double distanceToPiece(const Piece& piece, Position at) {
  switch (piece.form) {
    case Form::disc:
      return distanceToDisc(at, piece.first, piece.measure);
    case Form::ring:
      return distanceToRing(at, piece.first, piece.second.x, piece.measure);
    case Form::stroke:
      return distanceToStroke(at, piece.first, piece.second, piece.measure);
    case Form::outline:
      return std::abs(distanceToBox(at, piece.first, piece.second, piece.measure)) - thin / 2;
    case Form::crescent:
      return std::max(distanceToDisc(at, piece.first, piece.measure),
                      -distanceToDisc(at, piece.second, piece.measure));
    case Form::box:
      break;
  }
  return distanceToBox(at, piece.first, piece.second, piece.measure);
}

}  // namespace

void drawGlyph(Canvas& canvas, Glyph glyph, Paint paint) {
  for (const Piece& piece : glyphs[static_cast<std::size_t>(glyph)]) {
    canvas.fill(paint, [&piece](Position at) {
      const Position written{0.5 + (at.x - 0.5) / enlarged, 0.5 + (at.y - 0.5) / enlarged};
      return enlarged * distanceToPiece(piece, written);
    });
  }
}

Canvas makeIcon(int side, Paint background, Glyph glyph) {
  Canvas canvas(side, side, {0, 0, 0, 0});
  canvas.fill(background, [](Position at) {
    return distanceToBox(at, {0.5, 0.5}, {0.5, 0.5}, 0.225);
  });
  drawGlyph(canvas, glyph, {255, 255, 255, 255});
  return canvas;
}

}  // namespace settings
