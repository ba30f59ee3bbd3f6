#include "cli/Text.h"

#include <cstddef>

namespace lumo::cli {

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

}  // namespace lumo::cli
