#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/uikit/images/ImageCodecs.h"
#include "tests/platform/uikit/images/SamplePictures.h"

namespace uikit_test {
namespace {

using namespace platform;
using ::testing::HasSubstr;

LibraryImageCodecs& codecs() {
  static LibraryImageCodecs library;
  return library;
}

// The pixels of a file that must be readable.
ImagePixels read(const Bytes& file) {
  const DecodedPicture picture = codecs().decode(file);
  EXPECT_EQ(picture.problem, "");
  if (!picture.pixels) throw std::runtime_error("the picture is refused: " + picture.problem);
  return *picture.pixels;
}

std::string refusalOf(const Bytes& file) {
  const DecodedPicture picture = codecs().decode(file);
  EXPECT_EQ(picture.pixels, nullptr);
  EXPECT_NE(picture.problem, "");
  return picture.problem;
}

// How far apart two pixels given as "RRGGBBAA" are, in the channel that differs most.
int distance(const std::string& a, const std::string& b) {
  int largest = 0;
  for (std::size_t at = 0; at < 8; at += 2) {
    const int difference =
        std::stoi(a.substr(at, 2), nullptr, 16) - std::stoi(b.substr(at, 2), nullptr, 16);
    largest = std::max(largest, std::abs(difference));
  }
  return largest;
}

TEST(ImageCodecs, APngOfColoursWithAlphaKeepsItsPixels) {
  const ImagePixels pixels = read(makePng({}, 2, 1, {1, 2, 3, 4, 250, 251, 252, 253}));
  EXPECT_EQ(pixels.width, 2U);
  EXPECT_EQ(pixels.height, 1U);
  EXPECT_EQ(pixelAt(pixels, 0, 0), "01020304");
  EXPECT_EQ(pixelAt(pixels, 1, 0), "FAFBFCFD");
}

TEST(ImageCodecs, APngWithoutAlphaIsOpaque) {
  EXPECT_EQ(pixelAt(read(makePng({PngColors::rgb}, 1, 1, {1, 2, 3})), 0, 0), "010203FF");
}

TEST(ImageCodecs, AGreyPngHasThreeEqualParts) {
  EXPECT_EQ(pixelAt(read(makePng({PngColors::grey}, 1, 1, {77})), 0, 0), "4D4D4DFF");
  EXPECT_EQ(pixelAt(read(makePng({PngColors::greyAlpha}, 1, 1, {77, 128})), 0, 0), "4D4D4D80");
}

TEST(ImageCodecs, APngOfOneBitIsSpreadToBytes) {
  const ImagePixels pixels = read(makePng({PngColors::grey, 1}, 3, 1, {0b01000000}));
  EXPECT_EQ(pixelAt(pixels, 0, 0), "000000FF");
  EXPECT_EQ(pixelAt(pixels, 1, 0), "FFFFFFFF");
  EXPECT_EQ(pixelAt(pixels, 2, 0), "000000FF");
}

TEST(ImageCodecs, APngOfSixteenBitsIsRoundedToEight) {
  const Bytes row = {0x12, 0x34, 0xFF, 0xFF, 0x00, 0xFF, 0x80, 0x00};
  EXPECT_EQ(pixelAt(read(makePng({PngColors::rgba, 16}, 1, 1, row)), 0, 0), "12FF0180");
}

TEST(ImageCodecs, APaletteIsLookedUp) {
  for (const int bitDepth : {2, 8}) {
    const Bytes row = bitDepth == 2 ? Bytes{0b00011000} : Bytes{0, 1, 2};
    const ImagePixels pixels = read(makePng({PngColors::palette, bitDepth}, 3, 1, row));
    EXPECT_EQ(pixelAt(pixels, 0, 0), "FF0000FF");
    EXPECT_EQ(pixelAt(pixels, 1, 0), "00FF0080");
    EXPECT_EQ(pixelAt(pixels, 2, 0), "0000FFFF");
  }
}

TEST(ImageCodecs, AnInterlacedPngHasThePixelsOfAPlainOne) {
  const ImagePixels drawn = noise(37, 23);
  const PngKind kind{PngColors::rgba, 8, true};
  EXPECT_EQ(read(makePng(kind, 37, 23, drawn.rgba)).rgba, drawn.rgba);
}

// A picture of 3 x 2 with the letters
//   a b c
//   d e f
// as grey levels, upright.
std::string lettersOf(const ImagePixels& pixels) {
  std::string text;
  for (std::uint32_t y = 0; y < pixels.height; ++y) {
    for (std::uint32_t x = 0; x < pixels.width; ++x) {
      const int grey = std::stoi(pixelAt(pixels, x, y).substr(0, 2), nullptr, 16);
      text += static_cast<char>('a' + (grey + 20) / 40);
    }
    text += ' ';
  }
  return text;
}

const Bytes letters = {0, 40, 80, 120, 160, 200};

const std::vector<std::pair<std::uint8_t, std::string>>& uprightLetters() {
  static const std::vector<std::pair<std::uint8_t, std::string>> list = {
      {1, "abc def "},  {2, "cba fed "},  {3, "fed cba "},  {4, "def abc "}, {5, "ad be cf "},
      {6, "da eb fc "}, {7, "fc eb da "}, {8, "cf be ad "}, {0, "abc def "}, {9, "abc def "},
  };
  return list;
}

TEST(ImageCodecs, AJpegIsTurnedAsItsExifDataSays) {
  const Bytes plain = makeJpeg({JpegColors::grey}, 3, 2, letters);
  for (const auto& [orientation, upright] : uprightLetters()) {
    const Bytes file = withSegment(plain, 0xE1, jpegExifOf(orientation));
    EXPECT_EQ(lettersOf(read(file)), upright) << int{orientation};
  }
}

TEST(ImageCodecs, APngIsTurnedAsItsExifDataSays) {
  for (const bool interlaced : {false, true}) {
    const Bytes plain = makePng({PngColors::grey, 8, interlaced}, 3, 2, letters);
    for (const auto& [orientation, upright] : uprightLetters()) {
      const bool bigEndian = orientation % 2 == 0;
      const Bytes file = withChunk(plain, "eXIf", exifOf(orientation, bigEndian));
      EXPECT_EQ(lettersOf(read(file)), upright) << int{orientation};
    }
  }
}

TEST(ImageCodecs, ManyRowsAreTurnedAsFewAre) {
  const ImagePixels stored = noise(21, 50);
  const Bytes file = withChunk(makePng({}, 21, 50, stored.rgba), "eXIf", exifOf(6));
  const ImagePixels upright = read(file);
  ASSERT_EQ(upright.width, 50U);
  ASSERT_EQ(upright.height, 21U);
  for (std::uint32_t y = 0; y < stored.height; ++y) {
    for (std::uint32_t x = 0; x < stored.width; ++x) {
      ASSERT_EQ(pixelAt(upright, stored.height - 1 - y, x), pixelAt(stored, x, y));
    }
  }
}

TEST(ImageCodecs, BrokenExifDataIsPassedOver) {
  const Bytes plain = makeJpeg({JpegColors::grey}, 3, 2, letters);
  const Bytes whole = jpegExifOf(6);
  for (std::size_t length = 0; length + 2 < whole.size(); ++length) {
    const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
    EXPECT_EQ(lettersOf(read(withSegment(plain, 0xE1, cut))), "abc def ") << length;
  }
  Bytes lost = whole;
  lost[6 + 4] = 0xFF;  // the list of entries lies far behind the end
  EXPECT_EQ(lettersOf(read(withSegment(plain, 0xE1, lost))), "abc def ");
}

TEST(ImageCodecs, JpegsOfEveryColourSpaceAreRead) {
  const Bytes orange = {255, 128, 0};
  EXPECT_LE(distance(pixelAt(read(makeJpeg({}, 1, 1, orange)), 0, 0), "FF8000FF"), 3);
  EXPECT_LE(
      distance(pixelAt(read(makeJpeg({JpegColors::rgb, true}, 1, 1, orange)), 0, 0), "FF8000FF"),
      3);
  EXPECT_LE(distance(pixelAt(read(makeJpeg({JpegColors::grey}, 1, 1, {77})), 0, 0), "4D4D4DFF"), 1);
}

TEST(ImageCodecs, InkBecomesLight) {
  const std::vector<std::pair<Bytes, std::string>> inks = {
      {{0, 0, 0, 0}, "FFFFFFFF"},     {{0, 0, 0, 255}, "000000FF"}, {{255, 0, 0, 0}, "00FFFFFF"},
      {{0, 255, 0, 0}, "FF00FFFF"},   {{0, 0, 255, 0}, "FFFF00FF"}, {{0, 0, 0, 128}, "7F7F7FFF"},
      {{128, 0, 0, 128}, "407F7FFF"},
  };
  for (const auto& [ink, light] : inks) {
    for (const JpegColors colors : {JpegColors::cmyk, JpegColors::ycck}) {
      EXPECT_LE(distance(pixelAt(read(makeJpeg({colors}, 1, 1, ink)), 0, 0), light), 4) << light;
    }
  }
}

// Without Adobe's mark the ink is told as it is in print.
TEST(ImageCodecs, InkWithoutAdobesMarkIsNotInverted) {
  Bytes file = makeJpeg({JpegColors::cmyk}, 1, 1, {0, 0, 0, 0});  // stored as 255, 255, 255, 255
  constexpr std::string_view adobe = "Adobe";
  const auto mark = std::search(file.begin(), file.end(), adobe.begin(), adobe.end());
  ASSERT_NE(mark, file.end());
  *mark = 'X';
  EXPECT_LE(distance(pixelAt(read(file), 0, 0), "000000FF"), 2);
}

TEST(ImageCodecs, ABrokenColourProfileDoesNoHarm) {
  const Bytes nonsense = bytesOf("ICC_PROFILE\0\x01\x01 this is no profile");
  const Bytes jpeg = makeJpeg({JpegColors::grey}, 3, 2, letters);
  EXPECT_EQ(lettersOf(read(withSegment(jpeg, 0xE2, nonsense))), "abc def ");
  const Bytes png = makePng({PngColors::grey}, 3, 2, letters);
  EXPECT_EQ(lettersOf(read(withChunk(png, "iCCP", bytesOf("x\0\0no profile")))), "abc def ");
  EXPECT_EQ(lettersOf(read(withChunk(png, "zTXt", bytesOf("no text")))), "abc def ");
}

TEST(ImageCodecs, AnAnimationGivesItsFirstPicture) {
  Bytes png = makePng({PngColors::grey}, 3, 2, letters);
  png = withChunk(png, "acTL", {0, 0, 0, 2, 0, 0, 0, 0});
  EXPECT_EQ(lettersOf(read(png)), "abc def ");
}

TEST(ImageCodecs, WhatIsNoPictureIsRefused) {
  EXPECT_THAT(refusalOf({}), HasSubstr("neither a PNG nor a JPEG"));
  EXPECT_THAT(refusalOf(bytesOf("GIF89a")), HasSubstr("neither a PNG nor a JPEG"));
  EXPECT_THAT(refusalOf(bytesOf("\x89PNG\r\n\x1A\n")), HasSubstr("neither a PNG nor a JPEG"));
}

TEST(ImageCodecs, APictureWithoutPixelsIsRefused) {
  EXPECT_THAT(refusalOf(pngThatPromises(0, 10)), HasSubstr("no pixels"));
  EXPECT_THAT(refusalOf(pngThatPromises(10, 0)), HasSubstr("no pixels"));
}

TEST(ImageCodecs, ATruncatedFileIsRefusedWhereverItEnds) {
  const ImagePixels drawn = noise(8, 8);
  Bytes rgb;
  for (std::size_t at = 0; at < drawn.rgba.size(); ++at) {
    if (at % 4 != 3) rgb.push_back(drawn.rgba[at]);
  }
  const std::vector<Bytes> files = {
      makePng({}, 8, 8, drawn.rgba), makePng({PngColors::rgba, 8, true}, 8, 8, drawn.rgba),
      makeJpeg({}, 8, 8, rgb), makeJpeg({JpegColors::rgb, true}, 8, 8, rgb),
      withSegment(makeJpeg({}, 8, 8, rgb), 0xE1, jpegExifOf(6))};
  for (const Bytes& file : files) {
    ASSERT_NE(codecs().decode(file).pixels, nullptr);
    for (std::size_t length = 0; length < file.size(); ++length) {
      const Bytes cut(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length));
      EXPECT_EQ(codecs().decode(cut).pixels, nullptr) << length << " of " << file.size();
    }
  }
}

TEST(ImageCodecs, ACutOffFileSaysSo) {
  Bytes png = makePng({}, 8, 8, noise(8, 8).rgba);
  png.resize(png.size() / 2);
  EXPECT_EQ(refusalOf(png), "The PNG cannot be read: it is cut off.");
  Bytes jpeg = makeJpeg({JpegColors::grey}, 3, 2, letters);
  jpeg.resize(jpeg.size() - 2);
  EXPECT_EQ(refusalOf(jpeg), "The JPEG cannot be read: it is cut off.");
}

TEST(ImageCodecs, DamageInThePixelsOfAPngIsRefused) {
  Bytes png = makePng({}, 8, 8, noise(8, 8).rgba);
  png[png.size() / 2] ^= 0xFF;
  EXPECT_THAT(refusalOf(png), HasSubstr("The PNG cannot be read"));
}

// Whatever one byte becomes, the answer is pixels or a refusal.
TEST(ImageCodecs, DamageAnywhereIsSurvived) {
  const Bytes files[] = {
      makePng({PngColors::palette}, 3, 1, {0, 1, 2}),
      withSegment(makeJpeg({JpegColors::grey}, 3, 2, letters), 0xE1, jpegExifOf(6)),
      makeJpeg({JpegColors::ycck, true}, 1, 1, {1, 2, 3, 4})};
  for (const Bytes& file : files) {
    for (std::size_t at = 0; at < file.size(); ++at) {
      for (const int flip : {0x01, 0x80, 0xFF}) {
        Bytes damaged = file;
        damaged[at] = static_cast<std::uint8_t>(damaged[at] ^ flip);
        const DecodedPicture picture = codecs().decode(damaged);
        EXPECT_EQ(picture.pixels == nullptr, !picture.problem.empty());
      }
    }
  }
}

TEST(ImageCodecs, ASideOf65500IsTheLongest) {
  EXPECT_EQ(refusalOf(pngThatPromises(100'000, 1)),
            "The picture has 100000 x 1 pixels; a side may have at most 65500.");
  EXPECT_EQ(refusalOf(pngThatPromises(1, 65'501)),
            "The picture has 1 x 65501 pixels; a side may have at most 65500.");
  const Bytes longest = makePng({PngColors::grey, 1}, 65'500, 1, Bytes(65'500 / 8 + 1, 0xFF));
  EXPECT_EQ(read(longest).width, 65'500U);
}

TEST(ImageCodecs, ABombIsRefusedByItsHeader) {
  EXPECT_EQ(refusalOf(pngThatPromises(50'000, 50'000)),
            "The picture has 50000 x 50000 pixels; at most 100 million pixels are read.");
  EXPECT_THAT(refusalOf(pngThatPromises(10'000, 10'001)), HasSubstr("at most 100 million"));
  EXPECT_EQ(refusalOf(pngThatPromises(0xFFFFFFFF, 0xFFFFFFFF)),
            "The picture has 4294967295 x 4294967295 pixels; a side may have at most 65500.");
}

TEST(ImageCodecs, AProgressivePictureWithTooManyScansIsRefused) {
  Bytes file = makeJpeg({JpegColors::grey, true}, 3, 2, letters);
  const std::string_view scanStart("\xFF\xDA", 2);
  const std::string text(file.begin(), file.end());
  const std::size_t last = text.rfind(scanStart);
  const std::string scan = text.substr(last, text.size() - 2 - last);
  std::string many = text.substr(0, text.size() - 2);
  for (int i = 0; i < 100; ++i) many += scan;
  many += "\xFF\xD9";
  EXPECT_EQ(refusalOf(bytesOf(many)),
            "The JPEG cannot be read: it goes over the picture too often.");
}

TEST(ImageCodecs, APngComesBackAsItWasWritten) {
  ImagePixels pixels = noise(31, 17);
  for (const bool transparent : {false, true}) {
    if (transparent) pixels.rgba[3] = 7;
    const EncodedPicture file = codecs().encodePng(pixels, ImageCodecs::noLimit);
    ASSERT_EQ(file.outcome, EncodingOutcome::done);
    EXPECT_EQ(read(file.bytes).rgba, pixels.rgba);
  }
}

TEST(ImageCodecs, AGreyPictureIsWrittenAsSuch) {
  ImagePixels pixels = noise(64, 64);
  for (std::size_t at = 0; at < pixels.rgba.size(); at += 4) {
    pixels.rgba[at + 1] = pixels.rgba[at + 2] = pixels.rgba[at];
  }
  for (const bool transparent : {false, true}) {
    if (transparent) pixels.rgba[3] = 7;
    const EncodedPicture file = codecs().encodePng(pixels, ImageCodecs::noLimit);
    constexpr std::size_t colourType = 25;
    EXPECT_EQ(file.bytes.at(colourType), transparent ? 4 : 0);
    EXPECT_EQ(read(file.bytes).rgba, pixels.rgba);
  }
}

TEST(ImageCodecs, EqualPixelsGiveEqualFiles) {
  const auto file = codecs().encodePng(noise(50, 40), ImageCodecs::noLimit);
  EXPECT_EQ(file.bytes, codecs().encodePng(noise(50, 40), ImageCodecs::noLimit).bytes);
  const auto jpeg = codecs().encodeJpeg(noise(50, 40), 0.5, ImageCodecs::noLimit);
  EXPECT_EQ(jpeg.bytes, codecs().encodeJpeg(noise(50, 40), 0.5, ImageCodecs::noLimit).bytes);
}

TEST(ImageCodecs, AJpegShowsWhatWasWritten) {
  ImagePixels pixels{40, 30, Bytes(40 * 30 * 4)};
  for (std::size_t at = 0; at < pixels.rgba.size(); at += 4) {
    pixels.rgba[at] = 200;
    pixels.rgba[at + 1] = 100;
    pixels.rgba[at + 2] = 50;
    pixels.rgba[at + 3] = 0xFF;
  }
  const auto file = codecs().encodeJpeg(pixels, 0.9, ImageCodecs::noLimit);
  EXPECT_LE(distance(pixelAt(read(file.bytes), 20, 15), "C86432FF"), 3);
}

TEST(ImageCodecs, WhatIsTransparentBecomesWhiteInAJpeg) {
  ImagePixels pixels{16, 16, Bytes(16 * 16 * 4)};
  auto file = codecs().encodeJpeg(pixels, 0.9, ImageCodecs::noLimit);
  EXPECT_LE(distance(pixelAt(read(file.bytes), 8, 8), "FFFFFFFF"), 1);
  for (std::size_t at = 3; at < pixels.rgba.size(); at += 4) pixels.rgba[at] = 128;
  file = codecs().encodeJpeg(pixels, 0.9, ImageCodecs::noLimit);
  EXPECT_LE(distance(pixelAt(read(file.bytes), 8, 8), "7F7F7FFF"), 2) << "half of black";
}

TEST(ImageCodecs, AWorseQualityGivesASmallerJpeg) {
  const ImagePixels pixels = noise(100, 100);
  std::size_t previous = 0;
  for (const double quality : {0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7, 0.8}) {
    const auto file = codecs().encodeJpeg(pixels, quality, ImageCodecs::noLimit);
    EXPECT_GT(file.bytes.size(), previous) << quality;
    previous = file.bytes.size();
  }
}

TEST(ImageCodecs, AQualityOutsideOfTheRangeCountsAsItsEnd) {
  const ImagePixels pixels = noise(20, 20);
  const auto at = [&](double quality) {
    return codecs().encodeJpeg(pixels, quality, ImageCodecs::noLimit).bytes;
  };
  EXPECT_EQ(at(-3), at(0));
  EXPECT_EQ(at(std::numeric_limits<double>::quiet_NaN()), at(0));
  EXPECT_EQ(at(7), at(1));
  EXPECT_NE(at(0), at(1));
}

// The decision is that of the whole file, to the byte.
TEST(ImageCodecs, TheLimitIsTheLargestFileThatIsWritten) {
  const ImagePixels pixels = noise(200, 200);
  const std::size_t png = codecs().encodePng(pixels, ImageCodecs::noLimit).bytes.size();
  EXPECT_EQ(codecs().encodePng(pixels, png).outcome, EncodingOutcome::done);
  EXPECT_EQ(codecs().encodePng(pixels, png - 1).outcome, EncodingOutcome::aboveLimit);
  EXPECT_EQ(codecs().encodePng(pixels, 0).outcome, EncodingOutcome::aboveLimit);
  const std::size_t jpeg = codecs().encodeJpeg(pixels, 0.8, ImageCodecs::noLimit).bytes.size();
  EXPECT_EQ(codecs().encodeJpeg(pixels, 0.8, jpeg).outcome, EncodingOutcome::done);
  const EncodedPicture above = codecs().encodeJpeg(pixels, 0.8, jpeg - 1);
  EXPECT_EQ(above.outcome, EncodingOutcome::aboveLimit);
  EXPECT_TRUE(above.bytes.empty());
  EXPECT_EQ(above.problem, "");
}

TEST(ImageCodecs, PixelsThatMakeNoPictureAreNotWritten) {
  const ImagePixels nothing;
  const ImagePixels tooFew{4, 4, Bytes(7)};
  const ImagePixels tooWide{70'000, 1, Bytes(280'000)};
  for (const ImagePixels* pixels : {&nothing, &tooFew, &tooWide}) {
    const auto png = codecs().encodePng(*pixels, ImageCodecs::noLimit);
    EXPECT_EQ(png.outcome, EncodingOutcome::failed);
    EXPECT_NE(png.problem, "");
    const auto jpeg = codecs().encodeJpeg(*pixels, 0.5, ImageCodecs::noLimit);
    EXPECT_EQ(jpeg.outcome, EncodingOutcome::failed);
    EXPECT_NE(jpeg.problem, "");
  }
}

}  // namespace
}  // namespace uikit_test
