#pragma once

#include "platform/BinaryPlist.h"
#include "platform/Data.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace lumo {

/// Writes a property list whose objects are given in their order: a container first, then its elements, each
/// with its own elements; of a dictionary all keys, then all values. Equal texts, numbers, data and UIDs are
/// written once. What is given must live until finish().
class PlistWriter {
 public:
  PlistWriter();

  /// The next `count` keys and `count` values belong to the dictionary.
  void beginDictionary(std::size_t count) { addContainer(PlistKind::Dictionary, count, count * 2); }
  /// The next `count` objects belong to the array.
  void beginArray(std::size_t count) { addContainer(PlistKind::Array, count, count); }

  void boolean(bool value) { addNumber(PlistKind::Boolean, value); }
  void integer(std::int64_t value) { addNumber(PlistKind::Integer, static_cast<std::uint64_t>(value)); }
  void unsignedInteger(std::uint64_t value) { addNumber(PlistKind::UnsignedInteger, value); }
  void real(double value);
  /// The text must be UTF-8.
  void text(std::string_view value);
  void data(const Data& value);
  /// Takes memory for all the smaller UIDs too, which are mostly there.
  void uid(std::uint32_t value);

  /// The whole list. Large data stands in it as the very Data that was given.
  DataChain finish();

 private:
  struct Object {
    PlistKind kind;
    std::uint64_t number;    // the number's bits, or the place of a container's first reference
    std::size_t count;       // as written: bytes, UTF-16 units, elements or entries
    std::string_view bytes;  // the text in UTF-8, or the data
    std::size_t offset;
  };
  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t place = 0;  // of an object, plus one; 0 where the slot is free
  };
  struct OpenContainer {
    std::size_t next;
    std::size_t end;
  };
  struct Output;

  void addContainer(PlistKind kind, std::size_t count, std::size_t references);
  void addNumber(PlistKind kind, std::uint64_t number);
  bool addUnlessKnown(PlistKind kind, std::uint64_t number, std::size_t count, std::string_view bytes,
                      std::uint64_t hash);
  void add(PlistKind kind, std::uint64_t number, std::size_t count, std::string_view bytes);
  void refer(std::size_t place);

  template <class Same>
  Slot& slotOf(std::uint64_t hash, Same same);
  void growIndex();

  std::size_t writtenSize(const Object& object, std::size_t referenceWidth) const;
  void write(const Object& object, std::size_t referenceWidth, Output& output) const;

  std::vector<Object> objects_;
  std::vector<std::uint32_t> references_;
  std::vector<OpenContainer> open_;
  std::vector<Slot> index_;          // the texts, numbers and data: open addressing, at most half full
  std::vector<std::uint32_t> uids_;  // the place of each UID, plus one
  std::size_t indexed_ = 0;
  std::vector<const Data*> large_;  // the data that is not copied, in its order
  std::size_t largeBytes_ = 0;
};

}  // namespace lumo
