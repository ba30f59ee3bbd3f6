#include "LumoApi/Base64.h"
#include "platform/pictures/Codec.h"
#include "platform/pictures/Image.h"
#include "support/Pictures.h"
#include "tests/platform/SampleHEIF.h"

#include <gtest/gtest.h>

#include <cmath>

namespace lumo {
namespace {

const std::string kOrientationOnly = "Exif\0\0MM\0*\0\0\0\x08\0\1\x01\x12\0\3\0\0\0\1\0\6\0\0\0\0\0\0"s;

/// The same picture as it is to be seen, by a rule for a channel and the fourth one.
Colors seen(Colors colors, int (*rule)(int, int)) {
  for (Color& color : colors) {
    for (std::size_t channel = 0; channel < 3; ++channel) color[channel] = rule(color[channel], color[3]);
  }
  return colors;
}

double rootMeanSquare(const std::vector<std::uint8_t>& a, const std::vector<std::uint8_t>& b) {
  double sum = 0;
  for (std::size_t place = 0; place < a.size(); ++place) sum += std::pow(a[place] - b.at(place), 2);
  return std::sqrt(sum / static_cast<double>(a.size()));
}

/// An animation whose first frame, after its header of 16 bytes, is this picture.
Data animated(const Data& webp) {
  return Data("RIFF\0\0\1\0WEBP"s + riffChunk("VP8X", "\x12\0\0\0\x1F\0\0\x1F\0\0"s) +
              riffChunk("ANIM", "\0\0\0\0\0\0"s) +
              riffChunk("ANMF", std::string(16, '\0').append(webp.view().substr(12))));
}

TEST(ImageTest, EveryFormatShowsTheSameColors) {
  const std::vector<std::size_t> kRGB = {0, 1, 2}, kAll = {0, 1, 2, 3};
  const Colors overWhite =
      seen(kTranslucent, [](int v, int alpha) { return (v * alpha + 255 * (255 - alpha)) / 255; });
  const Colors light = seen(kTranslucent, [](int v, int black) { return v * black / 255; });
  const Colors ink = seen(kTranslucent, [](int v, int black) { return (255 - v) * (255 - black) / 255; });
  Colors grayOverWhite = overWhite, punched = kOpaque, grayPunched = kGray;
  for (Color& color : grayOverWhite) color = {color[0], color[0], color[0]};
  punched[3] = grayPunched[0] = {255, 255, 255};
  const std::vector<std::uint8_t> four = pixelsOf(kTranslucent, kAll), gray = pixelsOf(kGray, {0});
  std::vector<std::tuple<std::string, Data, Colors>> cases = {
      {"JPEG", makeJPEG(opaquePixels(), {.sampling = {2, 2}}), kOpaque},
      {"JPEG progressive", makeJPEG(opaquePixels(), {.progressive = true}), kOpaque},
      {"JPEG RGB", makeJPEG(opaquePixels(), {.to = JCS_RGB}), kOpaque},
      {"JPEG grey", makeJPEG(gray, {.from = JCS_GRAYSCALE, .to = JCS_GRAYSCALE}), kGray},
      {"JPEG CMYK", makeJPEG(four, {.from = JCS_CMYK, .to = JCS_CMYK}), light},
      {"JPEG CMYK of ink", makeJPEG(four, {.from = JCS_CMYK, .to = JCS_CMYK, .adobe = false}), ink},
      {"JPEG YCCK", makeJPEG(four, {.from = JCS_CMYK, .to = JCS_YCCK}), light},
      {"WebP", makeWebP(kOpaque), kOpaque}, {"WebP alpha", makeWebP(kTranslucent), overWhite},
      {"WebP animation", animated(makeWebP(kTranslucent)), overWhite}};
  const Colors twoTone = seen(kGray, [](int v, int) { return v < 128 ? 0 : 255; });
  const std::string alphas = pngChunk("tRNS", "\xFF\xFF\x80\0"s), noBlack = pngChunk("tRNS", "\0\0"s);
  const std::tuple<int, int, Colors, Colors, std::string> kPNGs[] = {{0, 1, kGray, twoTone, ""},
      {0, 2, kGray, kGray, ""}, {0, 4, kGray, grayPunched, noBlack}, {0, 8, kGray, kGray, ""},
      {0, 16, kGray, grayPunched, noBlack}, {2, 8, kOpaque, punched, pngChunk("tRNS", "\0\x5A\0\x5A\0\x0A"s)},
      {2, 16, kOpaque, kOpaque, ""}, {3, 2, kOpaque, kOpaque, ""}, {3, 4, kTranslucent, overWhite, alphas},
      {3, 8, kOpaque, kOpaque, ""}, {4, 8, kTranslucent, grayOverWhite, ""},
      {4, 16, kTranslucent, grayOverWhite, ""}, {6, 8, kTranslucent, overWhite, ""},
      {6, 16, kTranslucent, overWhite, ""}};
  for (const auto& [type, depth, colors, expected, chunks] : kPNGs) {
    const std::string name = "PNG " + std::to_string(type) + "/" + std::to_string(depth);
    cases.emplace_back(name, makePNG(colors, type, depth, chunks), expected);
    cases.emplace_back(name + " interlaced", makePNG(colors, type, depth, chunks, true), expected);
  }
#ifdef LUMOAPI_HAVE_HEIF
  cases.emplace_back("HEIF", base64DecodedData(kHEIF).value(), kOpaque);
#endif
  for (const auto& [name, picture, expected] : cases) {
    SCOPED_TRACE(name);
    for (const double quality : {0.8, 0.95}) {
      const std::optional<Data> jpeg = jpegRepresentation(picture, quality);
      ASSERT_TRUE(jpeg);
      ASSERT_EQ(decoded(*jpeg).size, (std::array<JDIMENSION, 2>{kSide, kSide}));
      EXPECT_LT(rootMeanSquare(decoded(*jpeg).pixels, pixelsOf(expected, kRGB)), 12);
    }
  }
}

TEST(ImageTest, KeepsOrientationAndProfileAndNothingElse) {
  const std::string icc = "ICC_PROFILE\0"s, profile = profileFor("RGB ");
  const auto jpegWith = [&](const char* space, const char* second = "\2\2", const char* first = "\1\2") {
    const std::string whole = profileFor(space);
    return makeJPEG(opaquePixels(),
        {.segments = {{JPEG_APP0 + 1, "http://ns.adobe.com/xap/1.0/\0Taipei"s},
             {JPEG_APP0 + 1, "Exif\0\0"s + kExif}, {JPEG_APP0 + 2, icc + second + whole.substr(100)},
             {JPEG_APP0 + 2, icc + first + whole.substr(0, 100)}, {JPEG_COM, "Taipei"}}});
  };
  const std::string chunks = riffChunk("VP8X", "\x28\0\0\0\x1F\0\0\x1F\0\0"s) + riffChunk("ICCP", profile) +
                             std::string(makeWebP(kOpaque).view().substr(12)) + riffChunk("EXIF", kExif) +
                             riffChunk("XMP ", "Taipei");
  const Data webp("RIFF" + riffChunk("", "WEBP" + chunks));
  for (const Data& picture : {jpegWith("RGB "),
           makePNG(kOpaque, 2, 8,
               pngChunk("iCCP", "p\0\0"s + deflated(profile)) + pngChunk("eXIf", kExif) +
                   pngChunk("tEXt", "k\0Taipei"s)),
           webp}) {
    SCOPED_TRACE(picture.view().substr(1, 3));
    ASSERT_NE(picture.view().find("Taipei"), std::string_view::npos);
    const Data jpeg = jpegRepresentation(picture, 0.5).value();
    EXPECT_NE(jpeg.view().find(kOrientationOnly), std::string_view::npos);
    EXPECT_NE(jpeg.view().find(icc + "\1\1" + profile), std::string_view::npos);
    EXPECT_EQ(jpeg.view().find("Taipei"), std::string_view::npos);
  }
  for (const Data& picture : {jpegWith("CMYK"), jpegWith("RGB ", "\2\3", "\1\3"), jpegWith("RGB ", "\2\3"),
           jpegWith("RGB ", "\1\2"), jpegWith("RGB ", "\3\2")}) {
    EXPECT_EQ(jpegRepresentation(picture, 0.5)->view().find(icc), std::string_view::npos);
  }
  EXPECT_EQ(
      jpegRepresentation(makeJPEG(opaquePixels(), {}), 0.5)->view().find("Exif"), std::string_view::npos);
}

TEST(ImageTest, OrientationOfRubbishIsUpright) {
  const auto orientation = [](std::string exif, std::size_t place, char byte) {
    exif[place] = byte;
    return image::orientationOf({reinterpret_cast<const std::uint8_t*>(exif.data()), exif.size()});
  };
  EXPECT_EQ(orientation(kExif, 0, 'I'), 6);
  EXPECT_EQ(orientation(kOrientationOnly, 25, 8), 8);
  const std::pair<std::size_t, char> kFaults[] = {
      {0, 'X'}, {4, '\xFF'}, {7, '\xFF'}, {8, 0}, {22, 2}, {24, 4}, {30, 9}, {30, 0}};
  for (const auto& [place, byte] : kFaults) EXPECT_EQ(orientation(kExif, place, byte), 1) << place;
}

std::vector<std::uint8_t> photo(int width, int height) {
  std::vector<std::uint8_t> pixels;
  unsigned noise = 1;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      noise = noise * 1664525 + 1013904223;
      const double wave = 60 * std::sin(x * 0.3) + 50 * std::cos(y * 0.2) + (noise >> 28);
      for (const double base : {120.0, 100 + wave / 2, 140 - wave}) {
        pixels.push_back(static_cast<std::uint8_t>(base + wave / 8));
      }
    }
  }
  return pixels;
}

TEST(ImageTest, PlanesArePassedOnAtTheirOwnSampling) {
  constexpr double kFifthOfADecibel = 1.0233;
  for (const std::array<int, 2>& sampling : {std::array{2, 2}, {2, 1}, {1, 1}, {1, 2}, {4, 1}}) {
    SCOPED_TRACE(testing::PrintToString(sampling));
    JPEGShape shape{.width = 211, .sampling = sampling, .quality = 92};
    const Data original = makeJPEG(photo(211, 67), shape);
    const Data ours = jpegRepresentation(original, 0.6).value();
    shape.quality = 60;
    const Data plain = makeJPEG(decoded(original).pixels, shape);
    ASSERT_EQ(decoded(ours).size, decoded(original).size);
    EXPECT_EQ(decoded(ours).sampling, sampling);
    const std::vector<std::uint8_t> pixels = decoded(original).pixels;
    EXPECT_LT(rootMeanSquare(decoded(ours).pixels, pixels),
        rootMeanSquare(decoded(plain).pixels, pixels) * kFifthOfADecibel);
  }
}

TEST(ImageTest, QualityIsHeldToItsScale) {
  const Data picture = makeJPEG(photo(64, 64), {.width = 64});
  const auto size = [&](double quality) { return jpegRepresentation(picture, quality)->size(); };
  EXPECT_LT(size(0.01), size(0.5));
  EXPECT_LT(size(0.5), size(1));
  for (const double low : {0.0, -1.0, std::nan(""), -HUGE_VAL}) EXPECT_EQ(size(low), size(0.01));
  EXPECT_EQ(size(HUGE_VAL), size(1));
}

TEST(ImageTest, RubbishIsNoPicture) {
  for (const std::string& text :
      {""s, "\xFF\xD8\xFF"s, "GIF89a"s, "RIFF\4\0\0\0WEBP"s, "\0\0\0\14ftypheic"s, "\x89PNG\r\n\x1A\n"s}) {
    EXPECT_FALSE(jpegRepresentation(Data::copy(text), 0.5)) << text;
  }
  const Data jpeg = makeJPEG(opaquePixels(), {}),
             progressive = makeJPEG(opaquePixels(), {.progressive = true});
  for (const Data& picture :
      {jpeg, progressive, makePNG(kOpaque, 2, 8, pngChunk("iCCP", "p\0\0"s + deflated(profileFor("RGB ")))),
          makePNG(kOpaque, 2, 8, "", true), makeWebP(kTranslucent), base64DecodedData(kHEIF).value()}) {
    SCOPED_TRACE(picture.view().substr(1, 3));
    const bool isJPEG = picture == jpeg || picture == progressive;
    for (std::size_t size = 0; size < picture.size(); ++size) {
      // A copy of its own, so that reading past it is noticed.
      const auto result = jpegRepresentation(Data::copy(picture.slice(0, size).view()), 0.5);
      EXPECT_TRUE(isJPEG || !result) << size;
      std::string damaged(picture.view());
      damaged[size] = static_cast<char>(damaged[size] ^ 0x55);
      jpegRepresentation(Data(std::move(damaged)), 0.5);
    }
  }
  EXPECT_TRUE(jpegRepresentation(jpeg.slice(0, jpeg.size() - 20), 0.5));
}

}  // namespace
}  // namespace lumo
