#include "bench/plain/Plain.h"

#include <cctype>
#include <cstring>

namespace plain {

namespace {

/// Reads one character; gives its length in bytes, 0 where the bytes are not UTF-8.
std::size_t characterLength(std::string_view text, std::size_t place) {
  const auto first = static_cast<unsigned char>(text[place]);
  if (first < 0x80) return 1;
  const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC2 || first > 0xF4 || place + length > text.size()) return 0;
  char32_t code = first & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    const auto byte = static_cast<unsigned char>(text[place + i]);
    if ((byte & 0xC0) != 0x80) return 0;
    code = (code << 6) | (byte & 0x3FU);
  }
  if (length == 3 && (code < 0x800 || (code >= 0xD800 && code < 0xE000))) return 0;
  if (length == 4 && (code < 0x10000 || code > 0x10FFFF)) return 0;
  return length;
}

bool isQueryAllowed(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x80 && (std::isalnum(byte) || (c != 0 && std::strchr("-._~!$&'()*+,;=:@/?", c)));
}

}  // namespace

bool isValidUTF8(std::string_view text) {
  for (std::size_t place = 0; place < text.size();) {
    const std::size_t length = characterLength(text, place);
    if (length == 0) return false;
    place += length;
  }
  return true;
}

std::size_t utf16Length(std::string_view text) {
  std::size_t units = 0;
  for (std::size_t place = 0; place < text.size();) {
    const std::size_t length = characterLength(text, place);
    units += length == 4 ? 2 : 1;
    place += length == 0 ? 1 : length;
  }
  return units;
}

std::string base64(std::string_view bytes) {
  static const char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  unsigned bits = 0;
  int count = 0;
  for (const char c : bytes) {
    bits = (bits << 8) | static_cast<unsigned char>(c);
    count += 8;
    while (count >= 6) {
      count -= 6;
      text += alphabet[(bits >> count) & 0x3F];
    }
  }
  if (count > 0) text += alphabet[(bits << (6 - count)) & 0x3F];
  while (text.size() % 4 != 0) text += '=';
  return text;
}

std::string percentEncoded(std::string_view text) {
  static const char digits[] = "0123456789ABCDEF";
  std::string encoded;
  for (const char c : text) {
    if (isQueryAllowed(c)) {
      encoded += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      encoded += '%';
      encoded += digits[byte >> 4];
      encoded += digits[byte & 15];
    }
  }
  return encoded;
}

}  // namespace plain
