#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace lumo {

// Without state: any thread may call these functions at any time.

/// Whether the text is well-formed UTF-8: no overlong form, no surrogate, nothing past U+10FFFF.
bool isValidUTF8(std::string_view text) noexcept;

/// The text's length in UTF-16 code units, the unit of every text limit: a character outside the Basic
/// Multilingual Plane counts 2. Text that is not UTF-8 has a length too: a surrogate in its three-byte form
/// counts 1, and so does every other stray byte.
std::size_t utf16Length(std::string_view text) noexcept;

/// Whether a value is null or empty, two things that differ everywhere else.
template <class T>
bool isEmpty(const std::optional<T>& value) noexcept {
  return !value || value->empty();
}

}  // namespace lumo
