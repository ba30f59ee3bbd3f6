#include "platform/kernels/Plain.h"

namespace lumo::kernels {

namespace {

using Piece = std::array<char, 4>;

// "%" and two digits for each byte, then each byte as it is; the rest of the four characters does not count.
constexpr auto kPieces = []() {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::array<Piece, 512> pieces{};
  for (std::size_t byte = 0; byte < 256; ++byte) {
    pieces[byte] = {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    pieces[256 + byte] = {static_cast<char>(byte)};
  }
  return pieces;
}();

}  // namespace

// Four characters are written for each byte, and one or three of them kept: no branch depends on the text.
char* escapeFollowed(std::string_view text, const ASCIISet& kept, char* out) noexcept {
  for (const char c : text) {
    const std::size_t isKept = kept.contains(c);
    std::memcpy(out, kPieces[256 * isKept + static_cast<std::uint8_t>(c)].data(), sizeof(Piece));
    out += 3 - 2 * isKept;
  }
  return out;
}

char* plain::escape(std::string_view text, const ASCIISet& kept, char* out) noexcept {
  const std::size_t followed = text.size() < 3 ? 0 : text.size() - 3;
  out = escapeFollowed(text.substr(0, followed), kept, out);
  for (const char c : text.substr(followed)) {
    if (kept.contains(c)) {
      *out++ = c;
    } else {
      std::memcpy(out, kPieces[static_cast<std::uint8_t>(c)].data(), 3);
      out += 3;
    }
  }
  return out;
}

constinit const Kernels kPlain = {
    "plain",           plain::encodeBase64, plain::decodeBase64, plain::utf16Length,
    plain::escapedRun, plain::count,        plain::escape,       plain::places};

}  // namespace lumo::kernels
