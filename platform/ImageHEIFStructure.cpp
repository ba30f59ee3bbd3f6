#include "platform/ImageCodec.h"

#include <algorithm>
#include <map>
#include <set>
#include <span>
#include <string_view>
#include <vector>

namespace lumo::image {

namespace {

using Bytes = std::span<const std::uint8_t>;

/// Reads big-endian numbers off the front; past the end it gives zeros and remembers.
class Reader {
 public:
  explicit Reader(Bytes bytes) noexcept : rest_(bytes) {}

  std::uint64_t number(std::size_t size) noexcept {
    std::uint64_t value = 0;
    for (const std::uint8_t byte : take(size)) value = value << 8 | byte;
    return value;
  }
  std::string_view word() noexcept {
    const Bytes bytes = take(4);
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
  }
  Bytes take(std::size_t size) noexcept {
    if (size > rest_.size()) isShort_ = true;
    const Bytes taken = rest_.first(isShort_ ? 0 : size);
    rest_ = rest_.subspan(taken.size());
    return taken;
  }
  Bytes rest() const noexcept { return rest_; }
  bool isShort() const noexcept { return isShort_; }

 private:
  Bytes rest_;
  bool isShort_ = false;
};

/// Calls `visit(type, content)` for each box; false where one does not fit into the bytes, or `visit` says
/// so.
template <class Visitor>
bool everyBox(Bytes bytes, const Visitor& visit) {
  for (Reader reader(bytes); !reader.rest().empty();) {
    const std::size_t all = reader.rest().size();
    std::uint64_t size = reader.number(4);
    const std::string_view type = reader.word();
    if (size == 1) size = reader.number(8);
    const std::size_t header = all - reader.rest().size();
    if (size == 0) size = all;  // to the end
    if (reader.isShort() || size < header || size > all) return false;
    if (!visit(type, reader.take(static_cast<std::size_t>(size) - header))) return false;
  }
  return true;
}

/// Who is made of whom ("dimg"), and who belongs to whom ("auxl": from an auxiliary picture to its master).
struct References {
  std::set<std::uint64_t> derived, parts, auxiliaries, masters;
  std::size_t partUses = 0;

  bool read(Bytes content) {
    Reader reader(content);
    const std::size_t width = reader.number(4) >> 24 == 0 ? 2 : 4;
    return everyBox(reader.rest(), [&](std::string_view type, Bytes list) {
      Reader numbers(list);
      const std::uint64_t from = numbers.number(width);
      for (std::uint64_t count = numbers.number(2); count > 0 && !numbers.isShort(); --count) {
        const std::uint64_t to = numbers.number(width);
        if (type == "dimg") derived.insert(from), parts.insert(to), ++partUses;
        if (type == "auxl") auxiliaries.insert(from), masters.insert(to);
      }
      return !numbers.isShort();
    });
  }

  bool areFlat() const {
    const auto apart = [](const auto& a, const auto& b) {
      return std::none_of(a.begin(), a.end(), [&b](std::uint64_t item) { return b.contains(item); });
    };
    return apart(derived, parts) && apart(auxiliaries, masters) && apart(parts, masters);
  }
};

/// Whether no item is an overlay, which paints any number of pictures over each other.
bool hasNoOverlay(Bytes itemInfos) {
  Reader reader(itemInfos);
  const std::size_t countWidth = reader.number(4) >> 24 == 0 ? 2 : 4;
  reader.take(countWidth);
  return everyBox(reader.rest(), [](std::string_view, Bytes info) {
    Reader numbers(info);
    const std::size_t idWidth = numbers.number(4) >> 24 < 3 ? 2 : 4;
    numbers.take(idWidth + 2);
    return numbers.word() != "iovl";
  });
}

/// Whether a cut ("clap": width, height and two offsets, each as numerator and denominator) has numbers of
/// the size of a picture. On far larger ones the decoder's arithmetic overflows.
bool isSensibleCut(Bytes cut) {
  constexpr std::int64_t kLargest = 1 << 17;
  Reader numbers(cut);
  for (int place = 0; place < 8; ++place) {
    const std::int64_t number = static_cast<std::int32_t>(numbers.number(4));
    const bool mayBeNegative = place == 4 || place == 6;
    if (number > kLargest || number < (mayBeNegative ? -kLargest : 1)) return false;
  }
  return !numbers.isShort();
}

/// The properties of the items, as far as they tell what decoding costs.
struct Properties {
  std::vector<std::uint64_t> pixels;                // of each property that is a size, by its number less one
  std::map<std::uint64_t, std::uint64_t> pixelsOf;  // of each item that has a size

  /// False for a cut that is not sensible, and for an item with more properties than a camera gives it: each
  /// may turn, mirror or cut the whole picture again.
  bool read(Bytes content) {
    return everyBox(content, [this](std::string_view type, Bytes box) {
      if (type == "ipco") return readProperties(box);
      return type != "ipma" || readAssociations(box);
    });
  }

 private:
  bool readProperties(Bytes content) {
    return everyBox(content, [this](std::string_view type, Bytes property) {
      Reader size(property.subspan(std::min<std::size_t>(4, property.size())));
      pixels.push_back(type == "ispe" ? size.number(4) * size.number(4) : 0);
      return type != "clap" || isSensibleCut(property);
    });
  }

  bool readAssociations(Bytes content) {
    constexpr std::uint64_t kMostProperties = 16;
    Reader reader(content);
    const std::uint64_t versionAndFlags = reader.number(4);
    const std::size_t idWidth = versionAndFlags >> 24 == 0 ? 2 : 4;
    const std::size_t indexWidth = versionAndFlags & 1 ? 2 : 1;
    const std::uint64_t indexMask = indexWidth == 2 ? 0x7FFF : 0x7F;
    for (std::uint64_t items = reader.number(4); items > 0 && !reader.isShort(); --items) {
      const std::uint64_t item = reader.number(idWidth);
      const std::uint64_t count = reader.number(1);
      if (count > kMostProperties || pixelsOf.contains(item)) return false;
      for (std::uint64_t place = 0; place < count; ++place) {
        const std::uint64_t index = reader.number(indexWidth) & indexMask;
        const std::uint64_t size = index > 0 && index <= pixels.size() ? pixels[index - 1] : 0;
        pixelsOf[item] = std::max(pixelsOf[item], size);
      }
    }
    return !reader.isShort();
  }
};

/// Whether the parts of all pictures are distinct and together not far larger than a picture may be.
bool isAffordable(const Properties& properties, const References& references) {
  constexpr std::uint64_t kMostPixels = 4 * kMaxHeldPixels;
  if (references.partUses != references.parts.size()) return false;
  std::uint64_t together = 0;
  for (const std::uint64_t part : references.parts) {
    const auto found = properties.pixelsOf.find(part);
    const std::uint64_t pixels = found == properties.pixelsOf.end() ? 0 : found->second;
    if (pixels == 0 || pixels > kMostPixels - together) return false;
    together += pixels;
  }
  return true;
}

}  // namespace

bool isSimplyBuilt(const Data& picture) {
  References references;
  Properties properties;
  const auto inMeta = [&](std::string_view type, Bytes content) {
    if (type == "iinf") return hasNoOverlay(content);
    if (type == "iprp") return properties.read(content);
    return type != "iref" || references.read(content);
  };
  const bool isWellFormed =
      everyBox({picture.data(), picture.size()}, [&](std::string_view type, Bytes content) {
        return type != "meta" || (content.size() >= 4 && everyBox(content.subspan(4), inMeta));
      });
  return isWellFormed && references.areFlat() && isAffordable(properties, references);
}

}  // namespace lumo::image
