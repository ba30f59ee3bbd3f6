#pragma once

#include "LumoApi/Data.h"
#include "platform/archive/BinaryPlist.h"
#include "platform/archive/SmallVector.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace lumo {

class PlistCursor;

/// An object as it stands in a property list, made once for what is written often: a number or a text in
/// ASCII of at most 21 characters.
struct PlistWord {
  static constexpr std::size_t kRoom = 24;

  PlistWord() noexcept = default;
  PlistWord(std::string_view text) noexcept;
  PlistWord(std::int64_t number) noexcept;

  std::array<std::uint8_t, kRoom> bytes{};
  std::size_t size = 0;
  std::uint64_t hash = 0;

 private:
  void finish(const PlistCursor& end) noexcept;
};

/// Writes a property list whose objects are given in their order: a container first, then its elements, each
/// with its own elements; of a dictionary all keys, then all values. Equal texts, numbers, data and UIDs are
/// written once. Data that is given must live until finish(). For one thread.
class PlistWriter {
 public:
  PlistWriter();

  /// The next `count` keys and `count` values belong to the dictionary.
  void beginDictionary(std::size_t count) { addContainer(plist::kDictionary, count, count * 2); }
  /// The next `count` objects belong to the array.
  void beginArray(std::size_t count) { addContainer(plist::kArray, count, count); }

  void boolean(bool value);
  void integer(std::int64_t value);
  void unsignedInteger(std::uint64_t value);
  void real(double value);
  /// The text must be UTF-8.
  void text(std::string_view value);
  void data(const Data& value);
  void word(const PlistWord& word);
  /// Takes memory for all the smaller UIDs too, which are mostly there.
  void uid(std::uint32_t value);

  /// The whole list. Large data stands in it as the very Data that was given.
  DataChain finish();

 private:
  /// Where an object begins.
  struct Object {
    std::size_t position;    // in bytes_
    std::size_t references;  // before it
    std::size_t largeBytes;  // before it
    const Data* large;       // what it is, where it is large data
  };

  /// What belongs between two of the bytes in bytes_.
  struct Gap {
    std::size_t position;
    std::size_t references;
    const Data* large;
  };

  struct Slot {
    std::uint32_t hash;
    std::uint32_t place;  // of an object, plus one; 0 where the slot is free
  };

  struct OpenContainer {
    std::size_t next;
    std::size_t end;
  };

  PlistCursor begin(std::size_t mostBytes);
  std::string_view written(const PlistCursor& end) const;
  void finishObject(std::string_view object);
  void finishObject(std::string_view object, std::uint64_t hash);
  void finishLargeData(std::string_view head, const Data& value);
  template <class Same>
  void addUnlessKnown(std::uint64_t hash, Same same, std::size_t size, const Data* large);
  void add(std::size_t size, const Data* large);
  void addContainer(plist::Marker marker, std::size_t count, std::size_t references);
  void refer(std::size_t place);

  template <class Same>
  Slot& slotOf(std::uint64_t hash, Same same);
  void growIndex();

  static constexpr std::size_t kFirstIndexSize = 128;
  static constexpr std::size_t kFirstUIDs = 32;

  // Room for what the archive of a record takes.
  SmallVector<std::uint8_t, 1024> bytes_;  // the objects back to back, without what belongs into the gaps
  SmallVector<Gap, 24> gaps_;
  SmallVector<Object, 64> objects_;
  SmallVector<std::uint32_t, 96> references_;  // of all containers, in their order
  SmallVector<OpenContainer, 8> open_;
  SmallVector<Slot, kFirstIndexSize> index_;     // the texts, numbers and data: at most half full
  SmallVector<std::uint32_t, kFirstUIDs> uids_;  // the place of each UID, plus one
  std::size_t indexed_ = 0;
  std::size_t largeCount_ = 0;
  std::size_t largeBytes_ = 0;
};

}  // namespace lumo
