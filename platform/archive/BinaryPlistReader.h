#pragma once

#include "LumoApi/Data.h"
#include "platform/archive/BinaryPlist.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace lumo {

/// An object as it stands in a property list.
struct PlistObject {
  PlistKind kind;
  std::uint64_t number = 0;             ///< a boolean, integer or UID; the bits of a real or a date
  std::size_t count = 0;                ///< bytes, characters, UTF-16 units, elements or entries
  const std::uint8_t* bytes = nullptr;  ///< where they begin

  double real() const noexcept { return std::bit_cast<double>(number); }

  bool isASCII(std::string_view text) const noexcept {
    return kind == PlistKind::ASCII && text == std::string_view(reinterpret_cast<const char*>(bytes), count);
  }
};

/// Reads a property list that may be damaged or hostile: nothing outside it is touched, whatever it says.
/// Objects are looked at when they are asked for, and none costs more for being large. Several
/// threads may read one at once.
class PlistReader {
 public:
  /// Null where the head, the trailer or the table of offsets is not in order.
  static std::optional<PlistReader> open(const Data& bytes);

  std::size_t objectCount() const noexcept { return objectCount_; }

  /// The object with that number, which must be below objectCount(). Null where it does not fit into the
  /// object area, or is of no known kind.
  std::optional<PlistObject> object(std::size_t number) const;
  std::optional<PlistObject> top() const { return object(top_); }

  /// The number of the object that is the element at `index` of a container. In a dictionary of n entries the
  /// keys are at 0 to n - 1, their values at n to 2n - 1.
  std::optional<std::size_t> elementNumber(const PlistObject& container, std::size_t index) const;
  std::optional<PlistObject> element(const PlistObject& container, std::size_t index) const;

  /// The value of a key in a small dictionary. Null for every key of one with more than kMaxSearched entries,
  /// so that no search is a long one.
  std::optional<PlistObject> find(const PlistObject& dictionary, std::string_view key) const;
  static constexpr std::size_t kMaxSearched = 16;

  /// The text in UTF-8, lone surrogates in their three-byte form; null for other kinds, and for "ASCII" that
  /// is none.
  static std::optional<std::string> text(const PlistObject& object);

  /// The bytes of data; shares the list's memory.
  Data data(const PlistObject& object) const;

 private:
  PlistReader() noexcept = default;
  bool readTrailer();
  std::uint64_t offsetOf(std::size_t number) const;

  // What follows an object's first byte.
  std::optional<PlistObject> integer(std::size_t width, const std::uint8_t* next) const;
  std::optional<PlistObject> real(std::uint8_t marker, const std::uint8_t* next) const;
  std::optional<PlistObject> counted(PlistKind kind, std::uint64_t count, const std::uint8_t* next,
                                     std::size_t unit) const;
  std::size_t roomAt(const std::uint8_t* next) const { return static_cast<std::size_t>(table_ - next); }

  Data bytes_;
  const std::uint8_t* table_ = nullptr;  // of the offsets; the objects end here
  std::size_t offsetWidth_ = 0;
  std::size_t referenceWidth_ = 0;
  std::size_t objectCount_ = 0;
  std::size_t top_ = 0;
};

}  // namespace lumo
