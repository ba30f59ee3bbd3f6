#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lumo::documents {

/// The text without the blanks and line breaks around it.
inline std::string_view trimmed(std::string_view text) noexcept {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

inline std::string_view firstLine(std::string_view text) noexcept { return text.substr(0, text.find('\n')); }

std::string joined(const std::vector<std::string>& words, std::string_view between = " ");

/// "ImageArrayForNimbo" as "image-array-for-nimbo", "unionID" as "union-id".
std::string hyphenated(std::string_view name);

/// What a class of content is called in short: "text" for LumoApiTextObject.
std::string kindOf(std::string_view className);

}  // namespace lumo::documents
