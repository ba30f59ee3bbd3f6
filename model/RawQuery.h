#pragma once

#include "platform/Data.h"
#include "platform/Dictionary.h"
#include "platform/Export.h"

#include <optional>
#include <string_view>
#include <utility>

namespace lumo {

/// The query of a URL as it was received: pieces between "&", each a key and a value around its first "=";
/// pieces without a "=" do not count. Of two equal keys the last counts. Nothing is decoded.
///
/// Immutable; shares the URL's text, and looks at it only when asked.
class LUMOAPI_EXPORT RawQuery {
 public:
  RawQuery() noexcept = default;
  explicit RawQuery(Data text) noexcept : text_(std::move(text)) {}

  /// Whether there is no pair at all.
  bool empty() const noexcept;

  /// The raw value of the key, valid as long as a copy of this query is; null where the key is absent. Takes
  /// time in proportion to the query's length.
  std::optional<std::string_view> find(std::string_view key) const noexcept;

  /// All pairs, each key in the place where it came first with the value that came last.
  StringDictionary dictionary() const;

 private:
  Data text_;
};

}  // namespace lumo
