#include "documents/Words.h"

#include <cstddef>

namespace lumo::documents {

std::string joined(const std::vector<std::string>& words, std::string_view between) {
  std::string text;
  for (const std::string& word : words) text.append(text.empty() ? "" : between).append(word);
  return text;
}

std::string hyphenated(std::string_view name) {
  const auto isCapital = [](char c) { return c >= 'A' && c <= 'Z'; };
  std::string words;
  for (std::size_t at = 0; at < name.size(); ++at) {
    if (at > 0 && isCapital(name[at]) && !isCapital(name[at - 1])) words += '-';
    words += isCapital(name[at]) ? static_cast<char>(name[at] - 'A' + 'a') : name[at];
  }
  return words;
}

std::string kindOf(std::string_view className) {
  constexpr std::string_view kPrefix = "LumoApi", kSuffix = "Object";
  return hyphenated(className.substr(kPrefix.size(), className.size() - kPrefix.size() - kSuffix.size()));
}

}  // namespace lumo::documents
