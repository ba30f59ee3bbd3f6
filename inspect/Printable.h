#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Text of strangers on a terminal: nothing in it moves the cursor, changes a colour or the order of letters.

namespace lumo::inspection {

/// The text on one line: "\n", "\t", "\x1b" for control characters, "\u{202e}" for characters that are seen
/// only in what they do, "\xff" for bytes that are not UTF-8.
std::string printable(std::string_view text);

/// JSON text with what its writer leaves as it is, but a terminal would obey, as "\u009b".
std::string printableJSON(std::string_view text);

/// How many columns a printable text takes.
std::size_t columnsOf(std::string_view text) noexcept;

/// How many characters a text has.
std::size_t charactersOf(std::string_view text) noexcept;

/// The beginning of a printable text that fits, with "…" where something is missing.
std::string cut(std::string_view text, std::size_t columns);

/// A printable text in lines of at most `columns`, broken at blanks where there are some.
std::vector<std::string> wrapped(std::string_view text, std::size_t columns);

/// "1,234,567"
std::string grouped(std::uint64_t number);

}  // namespace lumo::inspection
