#pragma once

#include "LumoApi/Dictionary.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace lumo::inspection {

/// A piece of a query: what stands between two "&".
struct Piece {
  std::string_view key;  ///< the whole piece where it has no "="
  std::optional<std::string_view> value;
};

/// A query as its readers see it: of two equal keys the last counts. Nothing is decoded.
class Query {
 public:
  explicit Query(std::string_view text);

  bool empty() const noexcept { return keys_.empty(); }
  /// The value that counts; null for an absent key.
  const std::string_view* find(std::string_view key) const noexcept;
  bool has(std::string_view key) const noexcept { return find(key); }
  bool is(std::string_view key, std::string_view value) const noexcept;
  std::size_t timesOf(std::string_view key) const noexcept;

  /// Calls `visit` with each piece, in order.
  template <class Visitor>
  void forEachPiece(const Visitor& visit) const;

 private:
  struct Occurrences {
    std::size_t times = 0;
    std::string_view last{};
  };

  std::string_view text_;
  Dictionary<Occurrences, std::string_view> keys_;
};

template <class Visitor>
void Query::forEachPiece(const Visitor& visit) const {
  if (text_.empty()) return;
  for (std::size_t begin = 0, end = 0; end != std::string_view::npos; begin = end + 1) {
    end = text_.find('&', begin);
    const std::string_view piece = text_.substr(begin, end == std::string_view::npos ? end : end - begin);
    const std::size_t equals = piece.find('=');
    if (equals == std::string_view::npos) {
      visit(Piece{piece, std::nullopt});
    } else {
      visit(Piece{piece.substr(0, equals), piece.substr(equals + 1)});
    }
  }
}

}  // namespace lumo::inspection
