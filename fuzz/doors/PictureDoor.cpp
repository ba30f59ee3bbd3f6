// Pictures. The first byte tells the quality. Small ones only: what takes a decoder seconds is found
// elsewhere.

#include "fuzz/Door.h"
#include "fuzz/Input.h"
#include "inspect/Content.h"
#include "platform/pictures/Image.h"

#include <zlib.h>

#include <algorithm>
#include <string>

namespace lumo::fuzz {

namespace {

using inspection::contentOf;

std::uint32_t bigEndian(std::string_view bytes) { return Input(bytes).number<std::uint32_t>(); }

/// A PNG with right checksums, which no chance finds.
std::string withChecksums(std::string_view picture) {
  std::string repaired(picture);
  if (!repaired.starts_with("\x89PNG")) return repaired;
  for (std::size_t chunk = 8; chunk + 12 <= repaired.size();) {
    const std::size_t length = bigEndian(std::string_view(repaired).substr(chunk, 4));
    if (length > repaired.size() - chunk - 12) break;
    const auto* body = reinterpret_cast<const Bytef*>(repaired.data() + chunk + 4);
    const auto sum = crc32(0, body, static_cast<uInt>(length + 4));
    const std::size_t end = chunk + 8 + length;
    for (std::size_t i = 0; i < 4; ++i) repaired[end + i] = static_cast<char>(sum >> (24 - 8 * i));
    chunk = end + 4;
  }
  return repaired;
}

}  // namespace

void door(std::string_view input) {
  constexpr std::uint64_t kMostPixels = 1 << 18;
  Input bytes(input);
  const double quality = bytes.byte() / 255.0;
  const Data picture = Data(withChecksums(bytes.rest()));
  const auto size = contentOf(picture).size;
  const bool isHEIF = picture.view().substr(std::min<std::size_t>(picture.size(), 4)).starts_with("ftyp");
  if (!size && !isHEIF) return;  // the decoders may see one, of any size
  if (size && std::uint64_t{size->width} * size->height > kMostPixels) return;

  const std::optional<Data> jpeg = jpegRepresentation(picture, quality);
  if (!jpeg) return;
  require(jpeg->view().starts_with("\xFF\xD8\xFF") && jpeg->view().ends_with("\xFF\xD9"), "it is a JPEG");
  const auto written = contentOf(*jpeg).size;
  require(written && written->width > 0 && written->height > 0, "of some size");
  const std::optional<Data> again = jpegRepresentation(*jpeg, quality);
  require(again.has_value(), "which is a picture");
  const auto rewritten = contentOf(*again).size;
  require(rewritten && rewritten->width == written->width && rewritten->height == written->height,
          "and keeps its size");
}

}  // namespace lumo::fuzz
