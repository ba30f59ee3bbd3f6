#pragma once

#include "LumoApi/Data.h"
#include "LumoApi/Value.h"
#include "inspect/Keys.h"

#include <optional>
#include <string>
#include <string_view>

namespace lumo::inspection {

/// What a value of a URL says.
struct Decoded {
  std::optional<std::string> text;  ///< of everything but bytes; null where it does not decode
  std::optional<Value> json;
  std::optional<Data> bytes;  ///< a picture's, or an archive's
  std::string_view fault{};   ///< the code of what is wrong with it; empty: nothing
  std::string reason{};       ///< the same in words
};

/// Decodes a raw value. `isEscaped`: the sender escaped the whole URL, as apps do and the messenger does not.
Decoded decoded(std::string_view raw, Encoding encoding, bool isEscaped);

/// Whether an escape stands in the value whose "%" was escaped once more ("%2520").
bool isEscapedTwice(std::string_view raw) noexcept;

}  // namespace lumo::inspection
