#include "platform/pictures/Image.h"

#include "platform/pictures/Codec.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace lumo {

namespace {

using namespace std::string_view_literals;

int percentOf(double quality) {
  if (!(quality > 0)) return 1;  // NaN included
  return std::clamp(static_cast<int>(std::lround(std::min(quality, 1.0) * 100)), 1, 100);
}

}  // namespace

std::optional<Data> jpegRepresentation(const Data& picture, double quality) {
  const std::string_view bytes = picture.view();
  const int percent = percentOf(quality);
  if (bytes.starts_with("\xFF\xD8\xFF"sv)) return image::reencodeJPEG(picture, percent);
  if (bytes.starts_with("\x89PNG\r\n\x1A\n"sv)) return image::reencodePNG(picture, percent);
  if (bytes.size() < 12) return std::nullopt;
  if (bytes.starts_with("RIFF"sv) && bytes.substr(8, 4) == "WEBP"sv) {
    return image::reencodeWebP(picture, percent);
  }
  if (bytes.substr(4, 4) == "ftyp"sv) return image::reencodeHEIF(picture, percent);
  return std::nullopt;
}

namespace image {

void requireMemory(std::uint64_t size) { (void)Data::uninitialized(size); }

void layOverWhite(std::uint8_t* row, std::size_t width, int channels) noexcept {
  if (!hasAlpha(channels)) return;
  const int colors = channels - 1;
  std::uint8_t* out = row;
  for (const std::uint8_t* pixel = row; width > 0; --width, pixel += channels) {
    const unsigned alpha = pixel[colors];
    const unsigned white = 255 * (255 - alpha);
    for (int color = 0; color < colors; ++color) {
      *out++ = static_cast<std::uint8_t>((pixel[color] * alpha + white + 127) / 255);
    }
  }
}

std::optional<Data> encode(const Bitmap& bitmap, int quality, const Traits& traits) {
  JPEGWriter writer;
  const int colors = colorChannelsOf(bitmap.channels);
  if (!writer.startRows(bitmap.width, bitmap.height, colors, quality, traits)) return std::nullopt;
  std::uint8_t* row = bitmap.pixels;
  for (std::uint32_t line = 0; line < bitmap.height; ++line, row += bitmap.stride) {
    layOverWhite(row, bitmap.width, bitmap.channels);
    if (!writer.writeRow(row)) return std::nullopt;
  }
  return writer.finish();
}

}  // namespace image

}  // namespace lumo
