#include "platform/archive/BinaryPlistReader.h"

#include <algorithm>
#include <bit>

namespace lumo {

namespace {

std::uint64_t bigEndian(const std::uint8_t* bytes, std::size_t width) {
  std::uint64_t number = 0;
  for (std::size_t i = 0; i < width; ++i) number = number << 8 | bytes[i];
  return number;
}

void appendUTF8(std::string& text, std::uint32_t point) {
  const auto append = [&text](std::uint32_t byte) { text += static_cast<char>(byte); };
  if (point < 0x80) {
    append(point);
    return;
  }
  if (point < 0x800) {
    append(0xC0 | point >> 6);
  } else {
    if (point < 0x10000) {
      append(0xE0 | point >> 12);
    } else {
      append(0xF0 | point >> 18);
      append(0x80 | (point >> 12 & 0x3F));
    }
    append(0x80 | (point >> 6 & 0x3F));
  }
  append(0x80 | (point & 0x3F));
}

std::string textOfUTF16(const std::uint8_t* bytes, std::size_t units) {
  const auto unitAt = [bytes](std::size_t i) {
    return static_cast<std::uint32_t>(bigEndian(bytes + 2 * i, 2));
  };
  std::string text;
  text.reserve(units);
  for (std::size_t i = 0; i < units; ++i) {
    const std::uint32_t unit = unitAt(i);
    const std::uint32_t following = (unit >> 10) == 0x36 && i + 1 < units ? unitAt(i + 1) : 0;
    if ((following >> 10) == 0x37) {
      appendUTF8(text, 0x10000 + ((unit & 0x3FF) << 10) + (following & 0x3FF));
      ++i;
    } else {
      appendUTF8(text, unit);
    }
  }
  return text;
}

}  // namespace

std::optional<PlistReader> PlistReader::open(const Data& bytes) {
  PlistReader reader;
  reader.bytes_ = bytes;
  if (!bytes.view().starts_with(plist::kHead) || !reader.readTrailer()) return std::nullopt;
  const auto tableOffset = static_cast<std::size_t>(reader.table_ - bytes.begin());
  for (std::size_t i = 0; i < reader.objectCount_; ++i) {
    const std::uint64_t offset = reader.offsetOf(i);
    if (offset < plist::kHead.size() || offset >= tableOffset) return std::nullopt;
  }
  return reader;
}

// The trailer: six bytes without meaning here, both widths, then the number of objects, the top object and
// the offset of the table, each in eight bytes. The parts must fill the file exactly, and each width must
// hold the largest number that it is there for.
bool PlistReader::readTrailer() {
  if (bytes_.size() < plist::kHead.size() + plist::kTrailerSize) return false;
  const std::size_t end = bytes_.size() - plist::kTrailerSize;
  const std::uint8_t* trailer = bytes_.begin() + end;
  const std::uint64_t objectCount = bigEndian(trailer + 8, 8);
  const std::uint64_t top = bigEndian(trailer + 16, 8);
  const std::uint64_t tableOffset = bigEndian(trailer + 24, 8);
  offsetWidth_ = trailer[6];
  referenceWidth_ = trailer[7];
  const auto holds = [](std::size_t width, std::uint64_t number) {
    return std::has_single_bit(width) && plist::byteWidth(number) <= width && width <= 8;
  };
  if (!holds(offsetWidth_, tableOffset) || !holds(referenceWidth_, objectCount)) return false;
  if (top >= objectCount || tableOffset > end || (end - tableOffset) % offsetWidth_ != 0) return false;
  if ((end - tableOffset) / offsetWidth_ != objectCount) return false;
  table_ = bytes_.begin() + tableOffset;
  objectCount_ = objectCount;
  top_ = top;
  return true;
}

std::uint64_t PlistReader::offsetOf(std::size_t number) const {
  return bigEndian(table_ + number * offsetWidth_, offsetWidth_);
}

std::optional<PlistObject> PlistReader::object(std::size_t number) const {
  const std::uint8_t* next = bytes_.begin() + offsetOf(number);
  const std::uint8_t marker = *next++;
  const std::size_t low = marker & 0x0F;
  switch (marker & 0xF0) {
    case 0x00:
      if (marker != plist::kFalse && marker != plist::kTrue) return std::nullopt;
      return PlistObject{.kind = PlistKind::Boolean, .number = marker == plist::kTrue};
    case plist::kInteger:
      return integer(std::size_t{1} << low, next);
    case 0x20:
    case 0x30:
      return real(marker, next);
    case plist::kUID:
      if (low > 7 || low >= roomAt(next) || bigEndian(next, low + 1) > 0xFFFF'FFFF) return std::nullopt;
      return PlistObject{.kind = PlistKind::UID, .number = bigEndian(next, low + 1)};
    case plist::kData:
      return counted(PlistKind::Data, low, next, 1);
    case plist::kASCII:
      return counted(PlistKind::ASCII, low, next, 1);
    case plist::kUTF16:
      return counted(PlistKind::UTF16, low, next, 2);
    case plist::kArray:
      return counted(PlistKind::Array, low, next, referenceWidth_);
    case plist::kDictionary:
      return counted(PlistKind::Dictionary, low, next, 2 * referenceWidth_);
    default:
      return std::nullopt;
  }
}

// One, two and four bytes are unsigned, eight are signed, and so are sixteen, of which only what 64 bits hold
// is taken.
std::optional<PlistObject> PlistReader::integer(std::size_t width, const std::uint8_t* next) const {
  if (width > 16 || width > roomAt(next)) return std::nullopt;
  if (width < 16) return PlistObject{.kind = PlistKind::Integer, .number = bigEndian(next, width)};
  const std::uint64_t upper = bigEndian(next, 8);
  const std::uint64_t lower = bigEndian(next + 8, 8);
  const bool negative = lower >> 63 != 0;
  if (upper == 0 && negative) return PlistObject{.kind = PlistKind::UnsignedInteger, .number = lower};
  if (upper != (negative ? ~std::uint64_t{0} : 0)) return std::nullopt;
  return PlistObject{.kind = PlistKind::Integer, .number = lower};
}

std::optional<PlistObject> PlistReader::real(std::uint8_t marker, const std::uint8_t* next) const {
  if (marker == plist::kFloat && roomAt(next) >= 4) {
    const auto bits = static_cast<std::uint32_t>(bigEndian(next, 4));
    return PlistObject{.kind = PlistKind::Real,
                       .number = std::bit_cast<std::uint64_t>(double{std::bit_cast<float>(bits)})};
  }
  if ((marker != plist::kDouble && marker != plist::kDate) || roomAt(next) < 8) return std::nullopt;
  return PlistObject{.kind = marker == plist::kDate ? PlistKind::Date : PlistKind::Real,
                     .number = bigEndian(next, 8)};
}

std::optional<PlistObject> PlistReader::counted(PlistKind kind, std::uint64_t count, const std::uint8_t* next,
                                                std::size_t unit) const {
  if (count == plist::kLongCount) {
    if (next == table_ || (*next & 0xF0) != plist::kInteger) return std::nullopt;
    const std::size_t width = std::size_t{1} << (*next++ & 0x0F);
    const std::optional<PlistObject> length = integer(width, next);
    if (!length) return std::nullopt;
    count = length->number;
    next += width;
  }
  if (count > roomAt(next) / unit) return std::nullopt;
  return PlistObject{.kind = kind, .count = count, .bytes = next};
}

std::optional<std::size_t> PlistReader::elementNumber(const PlistObject& container, std::size_t index) const {
  const std::uint64_t number = bigEndian(container.bytes + index * referenceWidth_, referenceWidth_);
  if (number >= objectCount_) return std::nullopt;
  return number;
}

std::optional<PlistObject> PlistReader::element(const PlistObject& container, std::size_t index) const {
  const std::optional<std::size_t> number = elementNumber(container, index);
  return number ? object(*number) : std::nullopt;
}

std::optional<PlistObject> PlistReader::find(const PlistObject& dictionary, std::string_view key) const {
  if (dictionary.kind != PlistKind::Dictionary || dictionary.count > kMaxSearched) return std::nullopt;
  for (std::size_t i = 0; i < dictionary.count; ++i) {
    const std::optional<PlistObject> candidate = element(dictionary, i);
    if (candidate && candidate->isASCII(key)) return element(dictionary, dictionary.count + i);
  }
  return std::nullopt;
}

std::optional<std::string> PlistReader::text(const PlistObject& object) {
  if (object.kind == PlistKind::UTF16) return textOfUTF16(object.bytes, object.count);
  if (object.kind != PlistKind::ASCII) return std::nullopt;
  const bool ascii =
      std::all_of(object.bytes, object.bytes + object.count, [](auto byte) { return byte < 0x80; });
  if (!ascii) return std::nullopt;
  return std::string(reinterpret_cast<const char*>(object.bytes), object.count);
}

Data PlistReader::data(const PlistObject& object) const {
  return bytes_.slice(static_cast<std::size_t>(object.bytes - bytes_.begin()), object.count);
}

}  // namespace lumo
