#include "platform/text/PercentEncoding.h"

#include "platform/kernels/Plain.h"
#include "platform/text/AlphanumericRanges.h"
#include "platform/text/Text.h"

#include <algorithm>
#include <iterator>

namespace lumo {

namespace {

using kernels::ASCIISet;

constexpr ASCIISet kAlphanumeric("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789");

constexpr ASCIISet kValueAllowed = [] {
  ASCIISet set = kAlphanumeric;
  for (const char c : std::string_view("-._~!$'()*+,;=:@/?")) set.add(c);
  return set;
}();

constexpr ASCIISet kQueryAllowed = [] {
  ASCIISet set = kValueAllowed;
  set.add('&');
  return set;
}();

constexpr ASCIISet kASCII = [] {
  ASCIISet set;
  for (char c = 0;; ++c) {
    set.add(c);
    if (c == 0x7F) return set;
  }
}();

// For the two sets that have no character beyond ASCII.
const ASCIISet& asciiOf(CharacterSet set) noexcept {
  return set == CharacterSet::ASCII ? kASCII : kQueryAllowed;
}

bool isAlphanumericBeyondASCII(char32_t character) noexcept {
  const auto* range =
      std::lower_bound(std::begin(kAlphanumericRanges), std::end(kAlphanumericRanges), character,
                       [](const AlphanumericRange& r, char32_t c) { return r.last < c; });
  return range != std::end(kAlphanumericRanges) && range->first <= character;
}

// The character beyond ASCII that a valid text begins with, in its UTF-8 bytes.
std::string_view firstCharacter(std::string_view text) noexcept {
  const auto first = static_cast<std::uint8_t>(text.front());
  return text.substr(0, first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4);
}

char32_t decoded(std::string_view character) noexcept {
  char32_t value = static_cast<std::uint8_t>(character.front()) & (0x7FU >> character.size());
  for (const char c : character.substr(1)) value = value << 6 | (static_cast<std::uint8_t>(c) & 0x3FU);
  return value;
}

// Cuts a valid text, in order, into its characters beyond ASCII that are alphanumeric and the pieces between.
template <class Alphanumeric, class Between>
void cut(std::string_view text, Alphanumeric alphanumeric, Between between) {
  std::size_t at = 0;
  while (at < text.size()) {
    if (static_cast<std::uint8_t>(text[at]) < 0x80) {
      ++at;
      continue;
    }
    const std::string_view character = firstCharacter(text.substr(at));
    if (!isAlphanumericBeyondASCII(decoded(character))) {
      at += character.size();
      continue;
    }
    if (at > 0) between(text.substr(0, at));
    alphanumeric(character);
    text.remove_prefix(at + character.size());
    at = 0;
  }
  between(text);
}

std::size_t escapedSize(std::string_view text, const ASCIISet& kept) noexcept {
  return 3 * text.size() - 2 * kernels::best().count(text, kept);
}

// The value of a hexadecimal digit; 16 or more for any other character.
unsigned hexadecimalValue(char digit) noexcept {
  if (digit >= '0' && digit <= '9') return static_cast<unsigned>(digit - '0');
  const char lower = static_cast<char>(digit | 0x20);
  return lower >= 'a' && lower <= 'f' ? static_cast<unsigned>(lower - 'a' + 10) : 16;
}

}  // namespace

bool isQueryValue(std::string_view text) noexcept {
  if (text.size() <= kernels::plain::kShort) return kernels::plain::consistsOf(text, kValueAllowed);
  return kernels::best().count(text, kValueAllowed) == text.size();
}

std::optional<std::size_t> percentEncodedSize(std::string_view text, CharacterSet kept) noexcept {
  std::size_t size = 0;
  if (kept != CharacterSet::Alphanumeric) {
    size = escapedSize(text, asciiOf(kept));
    // Where nothing is escaped, all is ASCII.
    return size == text.size() || isValidUTF8(text) ? std::optional(size) : std::nullopt;
  }
  if (!isValidUTF8(text)) return std::nullopt;
  cut(
      text, [&size](std::string_view character) { size += character.size(); },
      [&size](std::string_view piece) { size += escapedSize(piece, kAlphanumeric); });
  return size;
}

char* percentEncode(std::string_view text, CharacterSet kept, char* out) noexcept {
  if (kept != CharacterSet::Alphanumeric) return kernels::best().escape(text, asciiOf(kept), out);
  cut(
      text, [&out](std::string_view character) { out = std::copy(character.begin(), character.end(), out); },
      [&out](std::string_view piece) { out = kernels::best().escape(piece, kAlphanumeric, out); });
  return out;
}

std::optional<std::string> percentEncoded(std::string_view text, CharacterSet kept) {
  const auto size = percentEncodedSize(text, kept);
  if (!size) return std::nullopt;
  std::string encoded(*size, '\0');
  percentEncode(text, kept, encoded.data());
  return encoded;
}

std::optional<std::string> percentDecoded(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  while (true) {
    const std::size_t plain = std::min(text.find('%'), text.size());
    bytes.append(text.substr(0, plain));
    text.remove_prefix(plain);
    if (text.empty()) break;
    if (text.size() < 3) return std::nullopt;
    const unsigned high = hexadecimalValue(text[1]);
    const unsigned low = hexadecimalValue(text[2]);
    if (high > 15 || low > 15) return std::nullopt;
    bytes.push_back(static_cast<char>(high << 4 | low));
    text.remove_prefix(3);
  }
  if (!isValidUTF8(bytes)) return std::nullopt;
  return bytes;
}

}  // namespace lumo
