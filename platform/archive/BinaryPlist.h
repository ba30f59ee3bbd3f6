#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace lumo {

// The binary property list, the container of the keyed archive: objects back to back, a table of their
// offsets and a trailer. Objects refer to each other by number.

enum class PlistKind : std::uint8_t {
  Boolean,
  Integer,          ///< 64 signed bits
  UnsignedInteger,  ///< 2^63 to 2^64 - 1
  Real,
  Date,
  Data,
  ASCII,
  UTF16,
  UID,  ///< the number of an object of a keyed archive
  Array,
  Dictionary,
};

}  // namespace lumo

namespace lumo::plist {

// How it is written. All numbers are big-endian.

inline constexpr std::string_view kHead = "bplist00";
inline constexpr std::size_t kTrailerSize = 32;

// The first byte of an object: its type in the upper half, a count or a width in the lower.
enum Marker : std::uint8_t {
  kFalse = 0x08,
  kTrue = 0x09,
  kInteger = 0x10,
  kWideInteger = 0x14,
  kFloat = 0x22,
  kDouble = 0x23,
  kDate = 0x33,
  kData = 0x40,
  kASCII = 0x50,
  kUTF16 = 0x60,
  kUID = 0x80,
  kArray = 0xA0,
  kDictionary = 0xD0,
};
inline constexpr std::size_t kLongCount = 15;  // in the lower half: the count follows as an integer object

/// The width that a number is written in.
constexpr std::size_t byteWidth(std::uint64_t number) {
  return number <= 0xFF ? 1 : number <= 0xFFFF ? 2 : number <= 0xFFFF'FFFF ? 4 : 8;
}

}  // namespace lumo::plist
