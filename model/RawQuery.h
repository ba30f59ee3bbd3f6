#pragma once

#include "LumoApi/Data.h"
#include "LumoApi/Dictionary.h"
#include "LumoApi/Export.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace lumo {

/// The query of a URL as it was received: pieces between "&", each a key and a value around its first "=";
/// pieces without a "=" do not count. Of two equal keys the last counts. Nothing is decoded.
///
/// Immutable; shares the URL's text. Several threads may read one at once.
class LUMOAPI_EXPORT RawQuery {
 public:
  RawQuery() noexcept = default;
  /// The query of that text, which is shared.
  explicit RawQuery(Data text) noexcept;

  /// Whether there is no pair at all.
  bool empty() const noexcept;

  /// The raw value of the key, valid as long as a copy of this query is; null where the key is absent.
  std::optional<std::string_view> find(std::string_view key) const noexcept;

  /// All pairs, each key in the place where it came first with the value that came last.
  StringDictionary dictionary() const;

 private:
  // Enough for every query that the messenger sends: its long values are passed over once, not at every find.
  static constexpr std::size_t kMostKnown = 16;

  Data text_;
  std::size_t known_ = 0;  // how many of the first pieces have their ends here
  std::array<std::size_t, kMostKnown> ends_{};
};

}  // namespace lumo
