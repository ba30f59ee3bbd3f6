#include "LumoApi/RawQuery.h"

#include "platform/kernels/Kernels.h"

#include <utility>

namespace lumo {

namespace {

/// Calls `visit` with each piece between the separators, in order.
template <class Visitor>
void forEachPiece(std::string_view text, const Visitor& visit) {
  for (;;) {
    const std::size_t separator = text.find('&');
    visit(text.substr(0, separator));
    if (separator == std::string_view::npos) return;
    text.remove_prefix(separator + 1);
  }
}

/// Whether the piece is a pair with the key, which has no "=".
bool hasKey(std::string_view piece, std::string_view key) noexcept {
  return piece.size() > key.size() && piece[key.size()] == '=' && piece.starts_with(key);
}

}  // namespace

RawQuery::RawQuery(Data text) noexcept : text_(std::move(text)) {
  known_ = kernels::best().places('&', text_.view(), ends_);
  if (known_ < kMostKnown) ends_[known_++] = text_.size();
}

bool RawQuery::empty() const noexcept { return text_.view().find('=') == std::string_view::npos; }

std::optional<std::string_view> RawQuery::find(std::string_view key) const noexcept {
  const std::string_view query = text_.view();
  if (query.empty() || key.find('=') != key.npos) return std::nullopt;
  std::optional<std::string_view> last;
  const auto look = [&](std::string_view piece) {
    if (hasKey(piece, key)) last = piece.substr(key.size() + 1);
  };
  if (ends_[known_ - 1] < query.size()) forEachPiece(query.substr(ends_[known_ - 1] + 1), look);
  for (std::size_t i = known_; i-- > 0 && !last;) {
    const std::size_t begin = i == 0 ? 0 : ends_[i - 1] + 1;
    look(query.substr(begin, ends_[i] - begin));
  }
  return last;
}

StringDictionary RawQuery::dictionary() const {
  StringDictionary pairs;
  forEachPiece(text_.view(), [&pairs](std::string_view piece) {
    const std::size_t equals = piece.find('=');
    if (equals == std::string_view::npos) return;
    pairs.set(std::string(piece.substr(0, equals)), std::string(piece.substr(equals + 1)));
  });
  return pairs;
}

}  // namespace lumo
