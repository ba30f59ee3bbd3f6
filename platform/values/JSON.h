#pragma once

#include "LumoApi/Value.h"

#include <optional>
#include <string>
#include <string_view>

namespace lumo {

// JSON, without state: any thread may read and write at any time.

/// The deepest nesting of arrays and dictionaries that is read or written.
inline constexpr int kMaxJSONDepth = 512;

/// What is wrong with a JSON text, in words, and the byte at which it was noticed.
struct JSONError {
  std::string message;
  std::size_t offset = 0;
};

/// Parses one JSON document. Null for text that is not JSON: trailing text, a number that no double holds, a
/// lone surrogate, bytes that are not UTF-8 and nesting beyond kMaxJSONDepth included. Of two equal keys the
/// last counts (in the place of the first). Integers keep all 64 bits, signed or unsigned; other numbers are
/// doubles.
std::optional<Value> parseJSON(std::string_view text, JSONError* error = nullptr);

struct JSONStyle {
  /// Writes `/` as `\/`, as the messenger's platform does.
  bool escapeSolidus = true;
  /// Blanks per level of nesting, each element on its own line; negative: compact, one line.
  int indent = -1;
};

/// Writes the value as JSON text: UTF-8 kept; `\b \f \n \r \t \" \\`, other controls as `\u00xx`; whole
/// doubles without ".0", others in the shortest form that reads back to the same number. Null for what JSON
/// cannot hold: bytes, NaN, infinity, text that is not UTF-8, nesting beyond kMaxJSONDepth.
std::optional<std::string> writeJSON(const Value& value, JSONStyle style = {});

}  // namespace lumo
