#include "platform/Text.h"

#include <cstdint>
#include <cstring>

namespace lumo {

namespace {

std::uint8_t byteAt(std::string_view text, std::size_t at) noexcept {
  return static_cast<std::uint8_t>(text[at]);
}

std::size_t asciiRun(std::string_view text) noexcept {
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  std::size_t at = 0;
  for (std::uint64_t word = 0; text.size() - at >= sizeof word; at += sizeof word) {
    std::memcpy(&word, text.data() + at, sizeof word);
    if (word & kHighBits) break;
  }
  while (at < text.size() && byteAt(text, at) < 0x80) ++at;
  return at;
}

bool isContinuation(std::string_view text, std::size_t at) noexcept {
  return at < text.size() && (byteAt(text, at) & 0xC0) == 0x80;
}

// Whether the second byte lies in the range that its first byte leaves: the values outside would be overlong
// forms (E0, F0), surrogates (ED) or lie past U+10FFFF (F4).
bool isSecondByte(std::string_view text) noexcept {
  if (!isContinuation(text, 1)) return false;
  const std::uint8_t second = byteAt(text, 1);
  switch (byteAt(text, 0)) {
    case 0xE0:
      return second >= 0xA0;
    case 0xED:
      return second < 0xA0;
    case 0xF0:
      return second >= 0x90;
    case 0xF4:
      return second < 0x90;
    default:
      return true;
  }
}

// The length of the well-formed character that a text which is not empty begins with; 0 where there is none.
std::size_t characterLength(std::string_view text) noexcept {
  const std::uint8_t first = byteAt(text, 0);
  if (first < 0x80) return 1;
  if (first < 0xC2 || first > 0xF4 || !isSecondByte(text)) return 0;
  if (first < 0xE0) return 2;
  if (!isContinuation(text, 2)) return 0;
  if (first < 0xF0) return 3;
  return isContinuation(text, 3) ? 4 : 0;
}

// A surrogate in the three bytes that UTF-8 would give it, were it a character.
bool startsWithSurrogate(std::string_view text) noexcept {
  return byteAt(text, 0) == 0xED && isContinuation(text, 1) && isContinuation(text, 2);
}

}  // namespace

bool isValidUTF8(std::string_view text) noexcept {
  for (text.remove_prefix(asciiRun(text)); !text.empty(); text.remove_prefix(asciiRun(text))) {
    const std::size_t length = characterLength(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

std::size_t utf16Length(std::string_view text) noexcept {
  std::size_t units = 0;
  while (!text.empty()) {
    const std::size_t ascii = asciiRun(text);
    units += ascii;
    text.remove_prefix(ascii);
    if (text.empty()) break;
    const std::size_t length = characterLength(text);
    units += length == 4 ? 2 : 1;
    text.remove_prefix(length == 0 ? (startsWithSurrogate(text) ? 3 : 1) : length);
  }
  return units;
}

}  // namespace lumo
