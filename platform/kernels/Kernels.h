#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string_view>

/// The loops that the text codecs spend their time in, once for each kind of vector unit.
namespace lumo::kernels {

/// A set of ASCII characters, in the two forms that looking one up and looking many up at once ask for.
struct ASCIISet {
  constexpr ASCIISet() noexcept = default;
  constexpr explicit ASCIISet(std::string_view characters) noexcept {
    for (const char c : characters) add(c);
  }

  constexpr void add(char character) noexcept {
    const auto byte = static_cast<std::uint8_t>(character);
    has[byte] = true;
    rows[byte & 15] = static_cast<std::uint8_t>(rows[byte & 15] | 1U << (byte >> 4));
  }

  constexpr bool contains(char character) const noexcept { return has[static_cast<std::uint8_t>(character)]; }

  std::array<bool, 256> has{};

  /// Bit `c >> 4` of row `c & 15` stands for the character c: a vector unit looks a character up in two small
  /// tables, the rows and the powers of two. There is no bit for bytes beyond ASCII.
  std::array<std::uint8_t, 16> rows{};
};

inline constexpr ASCIISet kHexadecimal("0123456789ABCDEFabcdef");
inline constexpr std::string_view kBase64Alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// What utf16Length gives for a text that is not valid UTF-8.
inline constexpr std::size_t kNotUTF8 = std::numeric_limits<std::size_t>::max();

/// The kernels of one kind of vector unit; all kinds give the same results. None reads or writes a byte
/// outside its text and its result.
struct Kernels {
  std::string_view name;

  /// Writes the base64 text of bytes whose number is a multiple of 3; gives its end.
  char* (*encodeBase64)(std::span<const std::uint8_t> bytes, char* out) noexcept;

  /// Reads base64 text without padding whose length is a multiple of 4. False, with `out` in any state, for a
  /// character outside the alphabet.
  bool (*decodeBase64)(std::string_view text, std::uint8_t* out) noexcept;

  /// The length of a valid text in UTF-16 code units, else kNotUTF8.
  std::size_t (*utf16Length)(std::string_view text) noexcept;

  /// The length of the longest beginning that has only characters of the set (no "%") and percent escapes.
  std::size_t (*escapedRun)(std::string_view text, const ASCIISet& set) noexcept;

  /// How many bytes are characters of the set.
  std::size_t (*count)(std::string_view text, const ASCIISet& set) noexcept;

  /// Writes the text with every byte that is not in the set as a percent escape; gives the end of it.
  char* (*escape)(std::string_view text, const ASCIISet& kept, char* out) noexcept;

  /// Writes the places of the first bytes that are the character (not NUL), as many as there is room for;
  /// gives their number.
  std::size_t (*places)(char character, std::string_view text, std::span<std::size_t> out) noexcept;
};

extern const Kernels kPlain;
extern const Kernels kAVX2;
extern const Kernels kAVX512;
extern const Kernels kNEON;

/// The kernels that this machine can run, the best last.
std::span<const Kernels* const> available() noexcept;

/// The best of them.
const Kernels& best() noexcept;

/// The escape kernel for a text that more text follows: it writes up to three bytes past its result.
char* escapeFollowed(std::string_view text, const ASCIISet& kept, char* out) noexcept;

}  // namespace lumo::kernels
