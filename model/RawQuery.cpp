#include "model/RawQuery.h"

#include "platform/Kernels.h"

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

}  // namespace

bool RawQuery::empty() const noexcept { return text_.view().find('=') == std::string_view::npos; }

std::optional<std::string_view> RawQuery::find(std::string_view key) const noexcept {
  if (key.find('=') != key.npos || key.find('&') != key.npos) return std::nullopt;
  const std::string_view query = text_.view();
  const std::size_t value = kernels::best().findValue(query, key);
  if (value == query.npos) return std::nullopt;
  return query.substr(value, query.substr(value).find('&'));
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
