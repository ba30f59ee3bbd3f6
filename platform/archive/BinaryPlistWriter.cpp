#include "platform/archive/BinaryPlistWriter.h"

#include "LumoApi/Dictionary.h"
#include "platform/text/Text.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>
#include <vector>

namespace lumo {

namespace {

constexpr std::size_t kCopiedDataSize = 64;  // up to here a copy is cheaper than a piece of its own
constexpr std::size_t kMostHeadBytes = 10;   // a marker and an integer object of eight bytes

std::string_view viewOf(const std::uint8_t* bytes, std::size_t size) {
  return {reinterpret_cast<const char*>(bytes), size};
}

}  // namespace

/// Writes one thing after the other where there is room for it and, since numbers are written as eight bytes
/// whatever their width, for seven bytes more.
class PlistCursor {
 public:
  explicit PlistCursor(std::uint8_t* place) : next_(place) {}

  std::uint8_t* next() const { return next_; }

  void byte(std::size_t value) { *next_++ = static_cast<std::uint8_t>(value); }

  void number(std::uint64_t value, std::size_t width) {
    value <<= 64 - width * 8;
    if constexpr (std::endian::native == std::endian::little) value = __builtin_bswap64(value);
    std::memcpy(next_, &value, sizeof value);
    next_ += width;
  }

  void integer(std::uint64_t value) {
    const std::size_t width = plist::byteWidth(value);
    byte(plist::kInteger | static_cast<std::size_t>(std::countr_zero(width)));
    number(value, width);
  }

  void head(plist::Marker marker, std::size_t count) {
    byte(marker | std::min(count, plist::kLongCount));
    if (count >= plist::kLongCount) integer(count);
  }

  void bytes(std::string_view value) {
    if (!value.empty()) std::memcpy(next_, value.data(), value.size());
    next_ += value.size();
  }

  void utf16(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
      const auto lead = static_cast<std::uint8_t>(text[i]);
      const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
      std::uint32_t point = length == 1 ? lead : lead & (0x7Fu >> length);
      for (std::size_t k = 1; k < length; ++k)
        point = point << 6 | (static_cast<unsigned>(text[i + k]) & 0x3F);
      i += length;
      if (point < 0x10000) {
        number(point, 2);
      } else {
        number(0xD7C0 + (point >> 10), 2);
        number(0xDC00 + (point & 0x3FF), 2);
      }
    }
  }

  void trailer(std::size_t offsetWidth, std::size_t referenceWidth, std::size_t objects, std::size_t table) {
    number(0, 6);
    byte(offsetWidth);
    byte(referenceWidth);
    number(objects, 8);
    number(0, 8);  // the top object is the first
    number(table, 8);
  }

 private:
  std::uint8_t* next_;
};

PlistWord::PlistWord(std::string_view text) noexcept {
  PlistCursor cursor(bytes.data());
  cursor.head(plist::kASCII, text.size());
  cursor.bytes(text);
  finish(cursor);
}

PlistWord::PlistWord(std::int64_t number) noexcept {
  PlistCursor cursor(bytes.data());
  cursor.integer(static_cast<std::uint64_t>(number));
  finish(cursor);
}

void PlistWord::finish(const PlistCursor& end) noexcept {
  size = static_cast<std::size_t>(end.next() - bytes.data());
  hash = seededHash(viewOf(bytes.data(), size));
}

PlistWriter::PlistWriter() {
  begin(plist::kHead.size()).bytes(plist::kHead);
  bytes_.extend(plist::kHead.size());
  index_.resize(kFirstIndexSize);
  uids_.resize(kFirstUIDs);
}

/// Where the next object is written, which takes at most so many bytes.
inline PlistCursor PlistWriter::begin(std::size_t mostBytes) {
  bytes_.reserve(bytes_.size() + mostBytes + sizeof(std::uint64_t));
  return PlistCursor(bytes_.data() + bytes_.size());
}

/// What was written since begin().
inline std::string_view PlistWriter::written(const PlistCursor& end) const {
  const std::uint8_t* begun = bytes_.data() + bytes_.size();
  return viewOf(begun, static_cast<std::size_t>(end.next() - begun));
}

/// Fills the next place of the innermost container that still has one.
inline void PlistWriter::refer(std::size_t place) {
  if (open_.empty()) return;  // the top object
  OpenContainer& innermost = open_.back();
  references_[innermost.next++] = static_cast<std::uint32_t>(place);
  if (innermost.next == innermost.end) open_.pop_back();
}

/// The slot of the object with that hash for which `same` holds, else the free one where it belongs.
template <class Same>
inline PlistWriter::Slot& PlistWriter::slotOf(std::uint64_t hash, Same same) {
  const std::size_t mask = index_.size() - 1;
  const auto shortHash = static_cast<std::uint32_t>(hash);
  std::size_t i = shortHash & mask;
  while (index_[i].place != 0 && !(index_[i].hash == shortHash && same(objects_[index_[i].place - 1]))) {
    i = (i + 1) & mask;
  }
  return index_[i];
}

/// Adds the object of which `size` bytes were written since begin().
inline void PlistWriter::add(std::size_t size, const Data* large) {
  refer(objects_.size());
  objects_.push_back({bytes_.size(), references_.size(), largeBytes_, large});
  bytes_.extend(size);
  if (!large) return;
  gaps_.push_back({bytes_.size(), 0, large});
  largeBytes_ += large->size();
  ++largeCount_;
}

template <class Same>
inline void PlistWriter::addUnlessKnown(std::uint64_t hash, Same same, std::size_t size, const Data* large) {
  Slot& slot = slotOf(hash, same);
  if (slot.place != 0) return refer(slot.place - 1);
  add(size, large);
  slot = {static_cast<std::uint32_t>(hash), static_cast<std::uint32_t>(objects_.size())};
  if (++indexed_ * 2 > index_.size()) growIndex();
}

// Two objects are equal where the bytes of one are found at the beginning of the other: the first of them say
// how many there are.
inline void PlistWriter::finishObject(std::string_view object, std::uint64_t hash) {
  const auto same = [&](const Object& other) {
    return std::memcmp(&bytes_[other.position], object.data(), object.size()) == 0;
  };
  addUnlessKnown(hash, same, object.size(), nullptr);
}

inline void PlistWriter::finishObject(std::string_view object) { finishObject(object, seededHash(object)); }

void PlistWriter::boolean(bool value) {
  PlistCursor cursor = begin(1);
  cursor.byte(value ? plist::kTrue : plist::kFalse);
  finishObject(written(cursor));
}

void PlistWriter::integer(std::int64_t value) {
  PlistCursor cursor = begin(9);
  cursor.integer(static_cast<std::uint64_t>(value));
  finishObject(written(cursor));
}

void PlistWriter::unsignedInteger(std::uint64_t value) {
  PlistCursor cursor = begin(17);
  cursor.byte(plist::kWideInteger);
  cursor.number(0, 8);
  cursor.number(value, 8);
  finishObject(written(cursor));
}

void PlistWriter::real(double value) {
  PlistCursor cursor = begin(9);
  cursor.byte(plist::kDouble);
  cursor.number(std::bit_cast<std::uint64_t>(value), 8);
  finishObject(written(cursor));
}

void PlistWriter::text(std::string_view value) {
  const std::size_t units = utf16Length(value);
  PlistCursor cursor = begin(kMostHeadBytes + 2 * units);
  if (units == value.size()) {
    cursor.head(plist::kASCII, units);
    cursor.bytes(value);
  } else {
    cursor.head(plist::kUTF16, units);
    cursor.utf16(value);
  }
  finishObject(written(cursor));
}

void PlistWriter::word(const PlistWord& word) {
  const PlistCursor place = begin(word.bytes.size());
  std::memcpy(place.next(), word.bytes.data(), word.bytes.size());
  finishObject(viewOf(place.next(), word.size), word.hash);
}

void PlistWriter::data(const Data& value) {
  const bool copied = value.size() <= kCopiedDataSize;
  PlistCursor cursor = begin(kMostHeadBytes + (copied ? value.size() : 0));
  cursor.head(plist::kData, value.size());
  if (!copied) return finishLargeData(written(cursor), value);
  cursor.bytes(value.view());
  finishObject(written(cursor));
}

void PlistWriter::uid(std::uint32_t value) {
  if (value >= uids_.size()) uids_.resize(std::size_t{value} * 2);
  if (uids_[value] != 0) return refer(uids_[value] - 1);
  const std::size_t width = plist::byteWidth(value);
  PlistCursor cursor = begin(1 + width);
  cursor.byte(plist::kUID | (width - 1));
  cursor.number(value, width);
  add(1 + width, nullptr);
  uids_[value] = static_cast<std::uint32_t>(objects_.size());
}

void PlistWriter::addContainer(plist::Marker marker, std::size_t count, std::size_t references) {
  PlistCursor cursor = begin(kMostHeadBytes);
  cursor.head(marker, count);
  add(written(cursor).size(), nullptr);
  gaps_.push_back({bytes_.size(), references, nullptr});
  if (references != 0) open_.push_back({references_.size(), references_.size() + references});
  references_.reserve(references_.size() + references);
  references_.extend(references);
}

// The bytes are read only where there is other data of the same size before: it is compared with the first of
// them, which stands in the index by its size alone, then looked for among the rest by its bytes.
void PlistWriter::finishLargeData(std::string_view head, const Data& value) {
  const auto sameSize = [&](const Object& other) {
    return other.large && other.large->size() == value.size();
  };
  const auto same = [&](const Object& other) { return other.large && *other.large == value; };
  const std::uint64_t sizeHash = seededHash(head);
  const std::uint32_t first = slotOf(sizeHash, sameSize).place;
  const bool isFirst = first == 0 || same(objects_[first - 1]);
  addUnlessKnown(isFirst ? sizeHash : seededHash(value.view()), same, head.size(), &value);
}

void PlistWriter::growIndex() {
  const std::vector<Slot> former(index_.begin(), index_.end());
  index_.resize(0);
  index_.resize(former.size() * 2);
  for (const Slot& slot : former) {
    if (slot.place != 0) slotOf(slot.hash, [](const Object&) { return false; }) = slot;
  }
}

// Everything but large data goes into one buffer, whose parts become pieces of the result with the large data
// between them.
DataChain PlistWriter::finish() {
  const std::size_t referenceWidth = plist::byteWidth(objects_.size());
  const std::size_t writtenSize = bytes_.size() + references_.size() * referenceWidth;  // of the objects
  const std::size_t tableOffset = writtenSize + largeBytes_;
  const std::size_t offsetWidth = plist::byteWidth(tableOffset);
  DataBuffer buffer = Data::uninitialized(writtenSize + objects_.size() * offsetWidth + plist::kTrailerSize);
  PlistCursor cursor(buffer.bytes);
  DataChain chain;
  chain.reserve(2 * largeCount_ + 1);
  std::size_t chained = 0;
  const auto flush = [&] {
    const auto end = static_cast<std::size_t>(cursor.next() - buffer.bytes);
    chain.append(buffer.data.slice(chained, end - chained));
    chained = end;
  };

  std::size_t copied = 0;
  const std::uint32_t* reference = references_.data();
  const auto copyUpTo = [&](std::size_t position) {
    cursor.bytes(viewOf(&bytes_[copied], position - copied));
    copied = position;
  };
  for (const Gap& gap : gaps_) {
    copyUpTo(gap.position);
    for (std::size_t i = 0; i < gap.references; ++i) cursor.number(*reference++, referenceWidth);
    if (!gap.large) continue;
    flush();
    chain.append(*gap.large);
  }
  copyUpTo(bytes_.size());
  for (const Object& object : objects_) {
    cursor.number(object.position + object.references * referenceWidth + object.largeBytes, offsetWidth);
  }
  cursor.trailer(offsetWidth, referenceWidth, objects_.size(), tableOffset);
  flush();
  return chain;
}

}  // namespace lumo
