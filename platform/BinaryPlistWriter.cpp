#include "platform/BinaryPlistWriter.h"

#include "platform/Dictionary.h"
#include "platform/Text.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

namespace lumo {

namespace {

constexpr std::size_t kCopiedDataSize = 64;  // up to here a copy is cheaper than a piece of its own

constexpr std::size_t headSize(std::size_t count) {
  return count < plist::kLongCount ? 1 : 2 + plist::byteWidth(count);
}

plist::Marker markerOf(PlistKind kind) {
  switch (kind) {
    case PlistKind::Data:
      return plist::kData;
    case PlistKind::ASCII:
      return plist::kASCII;
    case PlistKind::UTF16:
      return plist::kUTF16;
    case PlistKind::Array:
      return plist::kArray;
    default:
      return plist::kDictionary;
  }
}

std::uint64_t hashOf(PlistKind kind, std::uint64_t number) {
  char bytes[sizeof number];
  std::memcpy(bytes, &number, sizeof number);
  return seededHash({bytes, sizeof bytes}) + static_cast<std::uint64_t>(kind);
}

bool equalBytes(std::string_view a, std::string_view b) {
  return a.size() == b.size() && (a.data() == b.data() || a == b);
}

}  // namespace

/// Where the list is written: everything but large data goes into one buffer, whose parts become pieces of
/// the result with the large data between them.
struct PlistWriter::Output {
  explicit Output(std::size_t size) : buffer(Data::uninitialized(size)), next(buffer.bytes) {}

  void byte(std::size_t value) { *next++ = static_cast<std::uint8_t>(value); }

  // Always eight bytes in one store: what stands behind the number is overwritten later, if only by the last
  // number of the trailer, which has eight.
  void number(std::uint64_t value, std::size_t width) {
    value <<= 64 - width * 8;
    if constexpr (std::endian::native == std::endian::little) value = __builtin_bswap64(value);
    std::memcpy(next, &value, sizeof value);
    next += width;
  }

  void integer(std::uint64_t value) {
    const std::size_t width = plist::byteWidth(value);
    byte(plist::kInteger | static_cast<std::size_t>(std::countr_zero(width)));
    number(value, width);
  }

  void head(PlistKind kind, std::size_t count) {
    byte(markerOf(kind) | std::min(count, plist::kLongCount));
    if (count >= plist::kLongCount) integer(count);
  }

  void bytes(std::string_view value) {
    if (!value.empty()) std::memcpy(next, value.data(), value.size());
    next += value.size();
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

  void insert(const Data& data) {
    flush();
    chain.append(data);
  }

  void flush() {
    const auto end = static_cast<std::size_t>(next - buffer.bytes);
    chain.append(buffer.data.slice(flushed, end - flushed));
    flushed = end;
  }

  DataBuffer buffer;
  std::uint8_t* next;
  std::size_t flushed = 0;
  std::size_t inserted = 0;
  DataChain chain;
};

PlistWriter::PlistWriter() : index_(128) {
  objects_.reserve(64);
  references_.reserve(64);
  open_.reserve(8);
  uids_.reserve(64);
}

void PlistWriter::real(double value) { addNumber(PlistKind::Real, std::bit_cast<std::uint64_t>(value)); }

void PlistWriter::text(std::string_view value) {
  const std::size_t units = utf16Length(value);
  const PlistKind kind = units == value.size() ? PlistKind::ASCII : PlistKind::UTF16;
  addUnlessKnown(kind, 0, units, value, seededHash(value));
}

// The bytes are read only where there is other data of the same size before: it is compared with the first of
// them, which stands in the index by its size alone, then looked for among the rest by its bytes.
void PlistWriter::data(const Data& value) {
  const std::uint64_t sizeHash = hashOf(PlistKind::Data, value.size());
  const Slot& first = slotOf(sizeHash, [&](const Object& other) {
    return other.kind == PlistKind::Data && other.count == value.size();
  });
  const bool isFirst = first.place == 0 || equalBytes(objects_[first.place - 1].bytes, value.view());
  const std::uint64_t hash = isFirst ? sizeHash : seededHash(value.view());
  const bool isNew = addUnlessKnown(PlistKind::Data, 0, value.size(), value.view(), hash);
  if (isNew && value.size() > kCopiedDataSize) {
    large_.push_back(&value);
    largeBytes_ += value.size();
  }
}

void PlistWriter::uid(std::uint32_t value) {
  if (value >= uids_.size()) uids_.resize(std::size_t{value} + 1);
  if (uids_[value] != 0) return refer(uids_[value] - 1);
  add(PlistKind::UID, value, 0, {});
  uids_[value] = static_cast<std::uint32_t>(objects_.size());
}

void PlistWriter::addContainer(PlistKind kind, std::size_t count, std::size_t references) {
  const std::size_t first = references_.size();
  add(kind, first, count, {});
  references_.resize(first + references);
  if (references != 0) open_.push_back({first, first + references});
}

void PlistWriter::addNumber(PlistKind kind, std::uint64_t number) {
  addUnlessKnown(kind, number, 0, {}, hashOf(kind, number));
}

/// Whether the object is new.
bool PlistWriter::addUnlessKnown(PlistKind kind, std::uint64_t number, std::size_t count,
                                 std::string_view bytes, std::uint64_t hash) {
  Slot& slot = slotOf(hash, [&](const Object& other) {
    return other.kind == kind && other.number == number && equalBytes(other.bytes, bytes);
  });
  if (slot.place != 0) {
    refer(slot.place - 1);
    return false;
  }
  add(kind, number, count, bytes);
  slot = {static_cast<std::uint32_t>(hash), static_cast<std::uint32_t>(objects_.size())};
  if (++indexed_ * 2 > index_.size()) growIndex();
  return true;
}

void PlistWriter::add(PlistKind kind, std::uint64_t number, std::size_t count, std::string_view bytes) {
  refer(objects_.size());
  objects_.push_back({kind, number, count, bytes, 0});
}

/// Fills the next place of the innermost container that still has one.
void PlistWriter::refer(std::size_t place) {
  if (open_.empty()) return;  // the top object
  OpenContainer& innermost = open_.back();
  references_[innermost.next++] = static_cast<std::uint32_t>(place);
  if (innermost.next == innermost.end) open_.pop_back();
}

/// The slot of the object with that hash for which `same` holds, else the free one where it belongs.
template <class Same>
PlistWriter::Slot& PlistWriter::slotOf(std::uint64_t hash, Same same) {
  const std::size_t mask = index_.size() - 1;
  const auto shortHash = static_cast<std::uint32_t>(hash);
  std::size_t i = shortHash & mask;
  while (index_[i].place != 0 && !(index_[i].hash == shortHash && same(objects_[index_[i].place - 1]))) {
    i = (i + 1) & mask;
  }
  return index_[i];
}

void PlistWriter::growIndex() {
  std::vector<Slot> larger(index_.size() * 2);
  index_.swap(larger);
  for (const Slot& slot : larger) {
    if (slot.place != 0) slotOf(slot.hash, [](const Object&) { return false; }) = slot;
  }
}

DataChain PlistWriter::finish() {
  const std::size_t referenceWidth = plist::byteWidth(objects_.size());
  std::size_t tableOffset = plist::kHead.size();
  for (Object& object : objects_) {
    object.offset = tableOffset;
    tableOffset += writtenSize(object, referenceWidth);
  }
  const std::size_t offsetWidth = plist::byteWidth(tableOffset);
  const std::size_t size = tableOffset + objects_.size() * offsetWidth + plist::kTrailerSize;

  Output output(size - largeBytes_);
  output.bytes(plist::kHead);
  for (const Object& object : objects_) write(object, referenceWidth, output);
  for (const Object& object : objects_) output.number(object.offset, offsetWidth);
  output.number(0, 6);
  output.byte(offsetWidth);
  output.byte(referenceWidth);
  output.number(objects_.size(), 8);
  output.number(0, 8);  // the top object is the first
  output.number(tableOffset, 8);
  output.flush();
  return std::move(output.chain);
}

std::size_t PlistWriter::writtenSize(const Object& object, std::size_t referenceWidth) const {
  switch (object.kind) {
    case PlistKind::Boolean:
      return 1;
    case PlistKind::Integer:
    case PlistKind::UID:
      return 1 + plist::byteWidth(object.number);
    case PlistKind::UnsignedInteger:
      return 1 + 16;
    case PlistKind::Real:
    case PlistKind::Date:
      return 1 + 8;
    case PlistKind::Data:
    case PlistKind::ASCII:
      return headSize(object.count) + object.count;
    case PlistKind::UTF16:
      return headSize(object.count) + object.count * 2;
    case PlistKind::Array:
      return headSize(object.count) + object.count * referenceWidth;
    case PlistKind::Dictionary:
      return headSize(object.count) + object.count * 2 * referenceWidth;
  }
  return 0;
}

void PlistWriter::write(const Object& object, std::size_t referenceWidth, Output& output) const {
  switch (object.kind) {
    case PlistKind::Boolean:
      output.byte(object.number != 0 ? plist::kTrue : plist::kFalse);
      return;
    case PlistKind::Integer:
      output.integer(object.number);
      return;
    case PlistKind::UnsignedInteger:
      output.byte(plist::kWideInteger);
      output.number(0, 8);
      output.number(object.number, 8);
      return;
    case PlistKind::Real:
    case PlistKind::Date:
      output.byte(object.kind == PlistKind::Real ? plist::kDouble : plist::kDate);
      output.number(object.number, 8);
      return;
    case PlistKind::UID:
      output.byte(plist::kUID | (plist::byteWidth(object.number) - 1));
      output.number(object.number, plist::byteWidth(object.number));
      return;
    default:
      break;
  }
  output.head(object.kind, object.count);
  if (object.kind == PlistKind::Data && object.count > kCopiedDataSize) {
    output.insert(*large_[output.inserted++]);
  } else if (object.kind == PlistKind::UTF16) {
    output.utf16(object.bytes);
  } else {
    output.bytes(object.bytes);
  }
  if (object.kind != PlistKind::Array && object.kind != PlistKind::Dictionary) return;
  const std::size_t references = object.kind == PlistKind::Array ? object.count : object.count * 2;
  for (std::size_t i = 0; i < references; ++i) output.number(references_[object.number + i], referenceWidth);
}

}  // namespace lumo
