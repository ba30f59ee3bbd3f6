// Pictures that would keep a decoder busy or fill the memory; each is stopped by one bound alone.

#include "platform/pictures/Image.h"
#include "support/Pictures.h"

#include <gtest/gtest.h>

namespace lumo {
namespace {

enum class Coding { Baseline, Progressive, Arithmetic };

/// A JPEG whose header states another size; what is missing of it would be shown grey.
Data ofStatedSize(Coding coding, unsigned width, unsigned height) {
  std::string bytes(makeJPEG(opaquePixels(), {.sampling = {2, 2},
                                                 .progressive = coding == Coding::Progressive,
                                                 .arithmetic = coding == Coding::Arithmetic})
                        .view());
  const char* const headers[] = {"\xFF\xC0", "\xFF\xC2", "\xFF\xC9"};
  const std::size_t header = bytes.find(headers[static_cast<std::size_t>(coding)]);
  return Data(std::move(bytes.replace(header + 5, 4, bigEndian(height << 16 | width))));
}

/// A black and white PNG of nothing but zeros, which shrink to next to nothing.
Data black(std::size_t width, std::size_t height, bool interlaced, const std::string& chunks = "") {
  return pngOf(width, height, {1, 0, interlaced}, std::string((width / 8 + 8) * height, '\0'), chunks);
}

/// The same with a palette, whose pixels have three bytes once they are unpacked.
Data red(std::size_t side, bool interlaced) {
  return pngOf(side, side, {1, 3, interlaced}, std::string((side / 8 + 8) * side, '\0'),
      pngChunk("PLTE", "\xFF\0\0"s));
}

/// A lossless WebP of one colour, which is of the same few bytes at any size.
Data lossless(unsigned width, unsigned height) {
  std::string bytes =
      "RIFF\x1E\0\0\0WEBPVP8L\x11\0\0\0\x2F\0\0\0\0\x07\x50\xA0\xC2\x14\xAA\xFF\x81\x88\xE8\x7F\0\0"s;
  const unsigned size = (width - 1) | (height - 1) << 14;
  for (std::size_t byte = 0; byte < 4; ++byte) bytes[21 + byte] = static_cast<char>(size >> 8 * byte);
  return Data(std::move(bytes));
}

Data canvas(int width, int height, int left) {
  const auto three = [](int n) { return std::string{char(n & 255), char(n >> 8 & 255), char(n >> 16)}; };
  return Data(
      "RIFF\0\0\1\0WEBP"s + riffChunk("VP8X", "\2\0\0\0"s + three(width - 1) + three(height - 1)) +
      riffChunk("ANMF", three(left / 2) + std::string(13, '\0').append(makeWebP(kOpaque).view().substr(12))));
}

TEST(ImageBoundsTest, EachStopsAPicture) {
  const std::tuple<const char*, Data, bool> kCases[] = {
      {"JPEG of 2^28 pixels and more", ofStatedSize(Coding::Baseline, 16'385, 16'384), false},
      {"JPEG cut off", ofStatedSize(Coding::Baseline, 4'000, 100), true},
      {"progressive JPEG of 10^8 pixels and more", ofStatedSize(Coding::Progressive, 10'001, 10'000), false},
      {"progressive JPEG cut off", ofStatedSize(Coding::Progressive, 4'000, 100), true},
      {"arithmetic JPEG of fewer than 4 * 10^6 blocks", ofStatedSize(Coding::Arithmetic, 13'000, 13'000),
          true},
      {"arithmetic JPEG of more", ofStatedSize(Coding::Arithmetic, 13'100, 13'100), false},
      {"PNG of 2^28 pixels and more", black(16'385, 16'384, false), false},
      {"PNG wider than a JPEG can be", black(65'501, 1, false), false},
      {"PNG as wide as a JPEG can be", black(65'500, 1, false), true},
      {"interlaced PNG of 10^8 pixels and more", black(10'001, 10'000, true), false},
      {"PNG that unpacks to fewer than 4 * 10^8 bytes", red(11'547, false), true},
      {"PNG that unpacks to more", red(11'548, false), false},
      {"interlaced PNG that unpacks to fewer than 2 * 10^8 bytes", red(8'164, true), true},
      {"interlaced PNG that unpacks to more", red(8'166, true), false},
      {"PNG with a chunk of 8 MB", black(8, 8, false, pngChunk("tEXt", std::string(8'000'000, 'k'))), true},
      {"PNG with one byte more", black(8, 8, false, pngChunk("tEXt", std::string(8'000'001, 'k'))), false},
      {"WebP of 10^8 pixels and more", canvas(10'001, 10'000, 0), false},
      {"lossless WebP of 8 * 10^7 pixels", lossless(10'000, 8'000), true},
      {"lossless WebP of more", lossless(10'000, 8'001), false},
      {"WebP frame at the edge", canvas(64, 32, 32), true},
      {"WebP frame beyond the edge", canvas(64, 32, 34), false}};
  for (const auto& [name, picture, isPicture] : kCases) {
    SCOPED_TRACE(name);
    EXPECT_EQ(jpegRepresentation(picture, 0.5).has_value(), isPicture);
  }
}

TEST(ImageBoundsTest, ManyScansAreFewWhereTheyAreLarge) {
  const auto scans = [](unsigned side, std::size_t count) {  // the last but one of ten over and over
    std::string bytes(ofStatedSize(Coding::Progressive, side, side).view());
    const std::size_t last = bytes.rfind("\xFF\xDA"), repeated = bytes.rfind("\xFF\xDA", last - 1);
    std::string more;
    for (; count > 10; --count) more.append(bytes, repeated, last - repeated);
    return jpegRepresentation(Data(std::move(bytes.insert(last, more))), 0.5).has_value();
  };
  EXPECT_TRUE(scans(kSide, 500));
  EXPECT_FALSE(scans(kSide, 501));
  EXPECT_TRUE(scans(5'000, 386));
  EXPECT_FALSE(scans(5'000, 387));  // of 40,061,815 blocks
}

}  // namespace
}  // namespace lumo
