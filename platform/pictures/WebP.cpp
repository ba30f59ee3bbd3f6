#include "platform/pictures/Codec.h"

#include <webp/decode.h>

#include <algorithm>
#include <new>
#include <string_view>
#include <vector>

namespace lumo::image {

namespace {

using namespace std::string_view_literals;

/// The content of the first chunk of this name; empty where there is none.
Data chunkOf(const Data& picture, std::string_view name) {
  constexpr std::size_t kSignature = 12, kHeader = 8;
  std::size_t place = kSignature;
  while (picture.size() - place >= kHeader) {
    const std::uint8_t* bytes = picture.data() + place;
    const std::size_t size = std::size_t{bytes[4]} | std::size_t{bytes[5]} << 8 |
                             std::size_t{bytes[6]} << 16 | std::size_t{bytes[7]} << 24;
    place += kHeader;
    if (size > picture.size() - place) break;
    if (picture.view().substr(place - kHeader, 4) == name) return picture.slice(place, size);
    place += std::min(size + size % 2, picture.size() - place);
  }
  return {};
}

std::uint32_t numberOf3(const std::uint8_t* bytes) {
  return bytes[0] | static_cast<std::uint32_t>(bytes[1]) << 8 | static_cast<std::uint32_t>(bytes[2]) << 16;
}

/// A picture as the file has it, and where on the canvas it lies.
struct Frame {
  Data webp;
  std::uint32_t left = 0, top = 0;
};

/// The first of an animation; empty where it is cut off.
Frame firstFrameOf(const Data& picture) {
  constexpr std::size_t kHeader = 16;  // begins with the place, in steps of 2 pixels
  const Data content = chunkOf(picture, "ANMF"sv);
  if (content.size() < kHeader) return {};
  return {content.slice(kHeader, content.size()), numberOf3(content.data()) * 2,
          numberOf3(content.data() + 3) * 2};
}

// The formats of a frame, by the library's numbers.
constexpr int kLossy = 1, kLossless = 2;
/// Each of them takes longer.
constexpr std::uint64_t kMaxLosslessPixels = 80'000'000;

bool isWithin(const WebPBitstreamFeatures& features, std::uint64_t maxPixels) {
  return image::isWithin(static_cast<unsigned>(features.width), static_cast<unsigned>(features.height),
                         maxPixels);
}

/// Decodes into the rows at `pixels`, which have room for `size` bytes; false for a damaged picture.
bool decodeInto(std::uint8_t* pixels, std::size_t size, std::size_t stride, const Data& webp,
                const WebPBitstreamFeatures& features, WEBP_CSP_MODE mode) {
  if (features.format != kLossy || features.has_alpha) {
    requireMemory(std::uint64_t{static_cast<unsigned>(features.width)} *
                  static_cast<unsigned>(features.height) * 8);
  }
  WebPDecoderConfig config{};
  if (!WebPInitDecoderConfig(&config)) return false;
  config.output.colorspace = mode;
  config.output.is_external_memory = 1;
  config.output.u.RGBA = {pixels, static_cast<int>(stride), size};
  const VP8StatusCode status = WebPDecode(webp.data(), webp.size(), &config);
  // Nobody aborts here but the decoder itself, where its last buffer is not to be had.
  if (status == VP8_STATUS_OUT_OF_MEMORY || status == VP8_STATUS_USER_ABORT) throw std::bad_alloc();
  return status == VP8_STATUS_OK;
}

/// A canvas on which there is nothing but the frame; empty where the frame does not fit or is damaged.
std::vector<std::uint8_t> paint(const Frame& frame, std::uint32_t width, std::uint32_t height, int channels) {
  WebPBitstreamFeatures features;
  if (WebPGetFeatures(frame.webp.data(), frame.webp.size(), &features) != VP8_STATUS_OK) return {};
  if (features.format == kLossless && !isWithin(features, kMaxLosslessPixels)) return {};
  if (std::uint64_t{frame.left} + static_cast<unsigned>(features.width) > width ||
      std::uint64_t{frame.top} + static_cast<unsigned>(features.height) > height) {
    return {};
  }
  const std::size_t pixelSize = static_cast<unsigned>(channels), stride = width * pixelSize;
  std::vector<std::uint8_t> pixels(stride * height);
  const std::size_t start = frame.top * stride + frame.left * pixelSize;
  if (!decodeInto(pixels.data() + start, pixels.size() - start, stride, frame.webp, features,
                  channels == 4 ? MODE_RGBA : MODE_RGB)) {
    return {};
  }
  return pixels;
}

}  // namespace

std::optional<Data> reencodeWebP(const Data& picture, int quality) {
  WebPBitstreamFeatures features;
  if (WebPGetFeatures(picture.data(), picture.size(), &features) != VP8_STATUS_OK) return std::nullopt;
  const auto width = static_cast<std::uint32_t>(features.width);
  const auto height = static_cast<std::uint32_t>(features.height);
  if (!isWithin(features, kMaxHeldPixels)) return std::nullopt;

  // What an animation's first frame leaves free is see-through.
  const int channels = features.has_animation || features.has_alpha ? 4 : 3;
  std::vector<std::uint8_t> pixels =
      paint(features.has_animation ? firstFrameOf(picture) : Frame{picture}, width, height, channels);
  if (pixels.empty()) return std::nullopt;
  const Data exif = chunkOf(picture, "EXIF"sv);
  const Traits traits{orientationOf({exif.data(), exif.size()}),
                      fittingProfile(chunkOf(picture, "ICCP"sv), 3)};
  return encode(
      {pixels.data(), std::size_t{width} * static_cast<unsigned>(channels), width, height, channels}, quality,
      traits);
}

}  // namespace lumo::image
