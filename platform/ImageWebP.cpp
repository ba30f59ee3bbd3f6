#include "platform/ImageCodec.h"

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

}  // namespace

std::optional<Data> reencodeWebP(const Data& picture, int quality) {
  constexpr std::size_t kFrameHeader = 16;
  WebPBitstreamFeatures features;
  if (WebPGetFeatures(picture.data(), picture.size(), &features) != VP8_STATUS_OK) return std::nullopt;
  Data still = picture;
  if (features.has_animation) {
    still = chunkOf(picture, "ANMF"sv);
    still = still.slice(kFrameHeader, still.size());
    if (WebPGetFeatures(still.data(), still.size(), &features) != VP8_STATUS_OK) return std::nullopt;
  }
  const auto width = static_cast<std::uint32_t>(features.width);
  const auto height = static_cast<std::uint32_t>(features.height);
  if (!isWithin(width, height, kMaxHeldPixels)) return std::nullopt;

  const int channels = features.has_alpha ? 4 : 3;
  const std::size_t stride = std::size_t{width} * static_cast<unsigned>(channels);
  std::vector<std::uint8_t> pixels(stride * height);
  constexpr int kLossy = 1;
  if (features.format != kLossy || features.has_alpha) requireMemory(std::uint64_t{width} * height * 8);
  WebPDecoderConfig config{};
  if (!WebPInitDecoderConfig(&config)) return std::nullopt;
  config.output.colorspace = features.has_alpha ? MODE_RGBA : MODE_RGB;
  config.output.is_external_memory = 1;
  config.output.u.RGBA = {pixels.data(), static_cast<int>(stride), pixels.size()};
  const VP8StatusCode status = WebPDecode(still.data(), still.size(), &config);
  // Nobody aborts here but the decoder itself, where its last buffer is not to be had.
  if (status == VP8_STATUS_OUT_OF_MEMORY || status == VP8_STATUS_USER_ABORT) throw std::bad_alloc();
  if (status != VP8_STATUS_OK) return std::nullopt;
  const Data exif = chunkOf(picture, "EXIF"sv);
  const Traits traits{orientationOf({exif.data(), exif.size()}),
                      fittingProfile(chunkOf(picture, "ICCP"sv), 3)};
  return encode({pixels.data(), stride, width, height, channels}, quality, traits);
}

}  // namespace lumo::image
