#include "model/LogMessage.h"

#include "platform/kernels/Plain.h"

#include <algorithm>

namespace lumo {

namespace {

void appendEscape(std::string& message, char letter, char32_t code, int digits) {
  (message += '\\') += letter;
  for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
    message += "0123456789abcdef"[code >> shift & 15];
}

/// The code of a well-formed character; of a stray byte, the byte.
char32_t codeOf(std::string_view character) {
  const auto byteAt = [character](std::size_t place) { return static_cast<unsigned char>(character[place]); };
  char32_t code = byteAt(0);
  if (character.size() > 1) code &= 0xFFU >> character.size();
  for (std::size_t place = 1; place < character.size(); ++place) code = code << 6 | (byteAt(place) & 0x3FU);
  return code;
}

/// Whether a terminal or a reader of the log obeys the character instead of showing it: controls, ends of
/// lines, and marks that turn the direction of the text.
bool isObeyed(char32_t code) {
  return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x61C || code == 0x200E || code == 0x200F ||
         (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

/// Appends a text such that it can forge no line.
void append(std::string& message, std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = kernels::plain::characterLength(text);
    const std::string_view character = text.substr(0, std::max<std::size_t>(length, 1));
    text.remove_prefix(character.size());
    const char32_t code = codeOf(character);
    if (length == 0) {
      appendEscape(message, 'x', code, 2);
    } else if (isObeyed(code)) {
      appendEscape(message, 'u', code, 4);
    } else {
      message += character;
    }
  }
}

void append(std::string& message, const LumoApiLog::Argument& argument) {
  if (const auto* text = std::get_if<std::string_view>(&argument)) {
    append(message, *text);
  } else if (const auto* number = std::get_if<std::int64_t>(&argument)) {
    message += std::to_string(*number);
  } else {
    message += std::to_string(*std::get_if<std::uint64_t>(&argument));
  }
}

}  // namespace

std::string logMessage(std::string_view format, std::initializer_list<LumoApiLog::Argument> arguments) {
  std::string message;
  const LumoApiLog::Argument* next = arguments.begin();
  while (!format.empty()) {
    const std::size_t place = format.find('%');
    message += format.substr(0, place);
    if (place == std::string_view::npos) break;
    format.remove_prefix(place + 1);
    if (format.starts_with('%')) {
      message += '%';
    } else if (next != arguments.end()) {
      append(message, *next++);
    }
    format = format.substr(std::min<std::size_t>(format.starts_with("lu") ? 2 : 1, format.size()));
  }
  return message;
}

}  // namespace lumo
