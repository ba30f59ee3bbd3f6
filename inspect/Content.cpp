#include "inspect/Content.h"

#include "platform/text/Text.h"

#include <algorithm>
#include <cstddef>

namespace lumo::inspection {

namespace {

using Size = Content::Size;
using namespace std::string_view_literals;

/// Numbers at places of the bytes; what lies behind their end reads as 0.
class Numbers {
 public:
  explicit Numbers(std::string_view bytes) noexcept : bytes_(bytes) {}

  std::uint32_t byte(std::size_t at) const noexcept {
    return at < bytes_.size() ? static_cast<unsigned char>(bytes_[at]) : 0;
  }
  std::uint32_t big16(std::size_t at) const noexcept { return byte(at) << 8 | byte(at + 1); }
  std::uint32_t big32(std::size_t at) const noexcept { return big16(at) << 16 | big16(at + 2); }
  std::uint32_t little16(std::size_t at) const noexcept { return byte(at + 1) << 8 | byte(at); }
  std::uint32_t little24(std::size_t at) const noexcept { return byte(at + 2) << 16 | little16(at); }
  std::size_t size() const noexcept { return bytes_.size(); }

 private:
  std::string_view bytes_;
};

std::optional<Size> sizeOfPNG(std::string_view bytes) noexcept {
  if (bytes.substr(0, 24).size() < 24 || bytes.substr(12, 4) != "IHDR") return std::nullopt;
  return Size{Numbers(bytes).big32(16), Numbers(bytes).big32(20)};
}

std::optional<Size> sizeOfGIF(std::string_view bytes) noexcept {
  if (bytes.size() < 10) return std::nullopt;
  return Size{Numbers(bytes).little16(6), Numbers(bytes).little16(8)};
}

/// The frame header says it; the segments before it are passed over by their lengths.
std::optional<Size> sizeOfJPEG(std::string_view bytes) noexcept {
  const Numbers numbers(bytes);
  for (std::size_t at = 2; at + 9 <= numbers.size() && numbers.byte(at) == 0xFF;) {
    const std::uint32_t marker = numbers.byte(at + 1);
    if (marker == 0xFF) {  // a filling byte
      ++at;
      continue;
    }
    const bool isFrame =
        marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
    if (isFrame) return Size{numbers.big16(at + 7), numbers.big16(at + 5)};
    at += 2 + std::max(numbers.big16(at + 2), 2U);
  }
  return std::nullopt;
}

/// Three forms: with loss, without, extended.
std::optional<Size> sizeOfWebP(std::string_view bytes) noexcept {
  if (bytes.size() < 30) return std::nullopt;
  const Numbers numbers(bytes);
  const std::string_view form = bytes.substr(12, 4);
  if (form == "VP8 ") return Size{numbers.little16(26) & 0x3FFF, numbers.little16(28) & 0x3FFF};
  if (form == "VP8X") return Size{numbers.little24(24) + 1, numbers.little24(27) + 1};
  if (form != "VP8L") return std::nullopt;
  const std::uint32_t bits = numbers.little24(21) | numbers.byte(24) << 24;
  return Size{(bits & 0x3FFF) + 1, (bits >> 14 & 0x3FFF) + 1};
}

struct Signature {
  std::size_t at;
  std::string_view bytes;
  Content content;
  std::optional<Size> (*size)(std::string_view bytes) noexcept = nullptr;
};

// A box of a brand comes before the box of any.
const Signature kSignatures[] = {
    {0, "\xFF\xD8\xFF", {"JPEG picture", "jpg"}, sizeOfJPEG},
    {0, "\x89PNG\r\n\x1A\n", {"PNG picture", "png"}, sizeOfPNG},
    {0, "GIF87a", {"GIF picture", "gif"}, sizeOfGIF},
    {0, "GIF89a", {"GIF picture", "gif"}, sizeOfGIF},
    {8, "WEBPVP8", {"WebP picture", "webp"}, sizeOfWebP},
    {4, "ftypheic", {"HEIC picture", "heic"}},
    {4, "ftypheix", {"HEIC picture", "heic"}},
    {4, "ftypmif1", {"HEIF picture", "heif"}},
    {4, "ftypmsf1", {"HEIF picture", "heif"}},
    {4, "ftypavif", {"AVIF picture", "avif"}},
    {4, "ftypqt  ", {"QuickTime video", "mov"}},
    {4, "ftyp", {"MP4 video", "mp4"}},
    {0, "\x1A\x45\xDF\xA3", {"Matroska video", "mkv"}},
    {0, "II*\0"sv, {"TIFF picture", "tiff"}},
    {0, "MM\0*"sv, {"TIFF picture", "tiff"}},
    {0, "%PDF-", {"PDF document", "pdf"}},
    {0, "PK\x03\x04", {"ZIP archive", "zip"}},
    {0, "\x1F\x8B", {"gzip archive", "gz"}},
    {0, "bplist00", {"property list", "plist"}},
};

bool isText(std::string_view bytes) noexcept {
  const auto isControl = [](char c) {
    return (static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\r' && c != '\t') || c == 0x7F;
  };
  return isValidUTF8(bytes) && std::none_of(bytes.begin(), bytes.end(), isControl);
}

}  // namespace

Content contentOf(const Data& data) noexcept {
  const std::string_view bytes = data.view();
  if (bytes.empty()) return {"nothing", "bin"};
  for (const Signature& signature : kSignatures) {
    if (bytes.size() < signature.at || !bytes.substr(signature.at).starts_with(signature.bytes)) continue;
    Content content = signature.content;
    if (signature.size) content.size = signature.size(bytes);
    return content;
  }
  if (isText(bytes)) return {"text", "txt"};
  return {"unknown bytes", "bin"};
}

}  // namespace lumo::inspection
