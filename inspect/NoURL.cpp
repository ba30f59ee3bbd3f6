// Why a text is no URL.

#include "inspect/URL.h"
#include "platform/text/PercentEncoding.h"
#include "platform/text/Text.h"

#include <algorithm>

namespace lumo::inspection {

namespace {

constexpr std::string_view kHexadecimal = "0123456789ABCDEFabcdef";

/// Where the part before the path ends: the scheme with its ":", and what follows a "//".
std::size_t pathOf(std::string_view text) noexcept {
  const std::size_t colon = text.find_first_of(":/?#");
  const std::size_t begin = colon != std::string_view::npos && text[colon] == ':' ? colon + 1 : 0;
  if (!text.substr(begin).starts_with("//")) return begin;
  return std::min(text.find_first_of("/?#", begin + 2), text.size());
}

bool isEscape(std::string_view text, std::size_t at) noexcept {
  return text.size() > at + 2 && kHexadecimal.find(text[at + 1]) != std::string_view::npos &&
         kHexadecimal.find(text[at + 2]) != std::string_view::npos;
}

std::string escapeOf(char c) {
  return percentEncoded(std::string_view(&c, 1), CharacterSet::Alphanumeric).value_or("");
}

/// What is wrong with the character at that place; empty: nothing, as far as one sees.
std::string faultAt(std::string_view text, std::size_t at, std::size_t path) {
  const char c = text[at];
  const auto byte = static_cast<unsigned char>(c);
  if (byte >= 0x80) return at < path ? "only ASCII characters stand before the path" : "";
  if (c == ' ') return "a blank, which is written %20";
  if (byte < 0x20 || byte == 0x7F) return "a control character, which is written " + escapeOf(c);
  if (c == '%')
    return isEscape(text, at) ? "" : "a “%” without two hexadecimal digits; the sign itself is written %25";
  const bool isForeign = std::string_view("\"<>\\^`{|}").find(c) != std::string_view::npos;
  const bool isBracket = (c == '[' || c == ']') && at >= path;
  if (isForeign || isBracket) return "“" + std::string(1, c) + "”, which is written " + escapeOf(c);
  return "";
}

NoURL noURL(std::string_view text) {
  if (text.empty()) return {0, "no text at all"};
  if (text.front() == '{') return {0, "a document; lumoapi encode --url writes its URL"};
  if (!isValidUTF8(text)) return {0, "bytes that are no UTF-8 text"};
  const std::size_t path = pathOf(text);
  bool hasFragment = false;
  for (std::size_t at = 0; at < text.size(); ++at) {
    std::string fault = faultAt(text, at, path);
    if (text[at] == '#' && hasFragment) fault = "a second “#”, which is written %23";
    if (!fault.empty()) return {at, std::move(fault)};
    hasFragment = hasFragment || text[at] == '#';
  }
  const std::size_t authority = text.find("//");
  return {authority < path ? authority + 2 : 0, "the part before the path is none of a URL"};
}

}  // namespace

std::optional<URL> launchURLOf(std::string_view text, NoURL& reason) {
  std::optional<URL> url = URL::parse(text);
  if (url && (url->scheme() || url->host())) return url;
  reason =
      url && !text.empty() ? NoURL{0, "a launch URL begins with a scheme, as mlumoapi:// does"} : noURL(text);
  return std::nullopt;
}

}  // namespace lumo::inspection
