#include "inspect/Query.h"

#include <utility>

namespace lumo::inspection {

Query::Query(std::string_view text) : text_(text) {
  forEachPiece([this](const Piece& piece) {
    if (!piece.value) return;
    if (Occurrences* known = keys_.find(piece.key)) {
      *known = {known->times + 1, *piece.value};
    } else {
      keys_.set(piece.key, Occurrences{1, *piece.value});
    }
  });
}

const std::string_view* Query::find(std::string_view key) const noexcept {
  const Occurrences* known = keys_.find(key);
  return known ? &known->last : nullptr;
}

bool Query::is(std::string_view key, std::string_view value) const noexcept {
  const std::string_view* held = find(key);
  return held && *held == value;
}

std::size_t Query::timesOf(std::string_view key) const noexcept {
  const Occurrences* known = keys_.find(key);
  return known ? known->times : 0;
}

}  // namespace lumo::inspection
