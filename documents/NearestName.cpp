#include "documents/NearestName.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>
#include <vector>

namespace lumo::documents {

namespace {

constexpr std::size_t kLongestName = 64;

char lower(char letter) { return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter; }

/// How many letters must be put in, left out or replaced; a difference of case does not count.
std::size_t distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i + 1);
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t replaced = diagonal + (lower(a[i]) == lower(b[j]) ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
    }
  }
  return row.back();
}

}  // namespace

std::string suggestion(std::string_view given, std::span<const std::string_view> names) {
  if (given.size() > kLongestName) return "";
  std::string_view nearest;
  std::size_t least = given.size() / 3 + 1;  // farther away it would be a guess
  for (const std::string_view name : names) {
    const std::size_t letters = distance(given, name);
    if (letters <= least && (nearest.empty() || letters < least)) {
      nearest = name;
      least = letters;
    }
  }
  if (nearest.empty()) return "";
  return ", did you mean " + std::string(nearest) + "?";
}

}  // namespace lumo::documents
