#include "platform/text/Text.h"

#include "platform/kernels/Plain.h"

namespace lumo {

namespace {

namespace plain = kernels::plain;

// A surrogate in the three bytes that UTF-8 would give it, were it a character.
bool startsWithSurrogate(std::string_view text) noexcept {
  return plain::byteAt(text, 0) == 0xED && plain::isContinuation(text, 1) && plain::isContinuation(text, 2);
}

std::size_t utf16LengthOfAnyText(std::string_view text) noexcept {
  std::size_t units = 0;
  while (!text.empty()) {
    const std::size_t length = plain::characterLength(text);
    units += length == 4 ? 2 : 1;
    text.remove_prefix(length == 0 ? (startsWithSurrogate(text) ? 3 : 1) : length);
  }
  return units;
}

}  // namespace

bool isValidUTF8(std::string_view text) noexcept {
  return plain::isShortASCII(text) || kernels::best().utf16Length(text) != kernels::kNotUTF8;
}

std::size_t utf16Length(std::string_view text) noexcept {
  if (plain::isShortASCII(text)) return text.size();
  const std::size_t units = kernels::best().utf16Length(text);
  return units != kernels::kNotUTF8 ? units : utf16LengthOfAnyText(text);
}

}  // namespace lumo
