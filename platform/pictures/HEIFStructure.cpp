#include "platform/pictures/Codec.h"
#include "platform/pictures/HEVC.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <vector>

namespace lumo::image {

namespace {

/// Calls `visit(type, content)` for each box; false where one does not fit into the bytes, or `visit` says
/// so.
template <class Visitor>
bool everyBox(Bytes bytes, const Visitor& visit) {
  for (ByteReader reader(bytes); !reader.rest().empty();) {
    const std::size_t all = reader.rest().size();
    std::uint64_t size = reader.number(4);
    const std::string_view type = reader.word();
    if (size == 1) size = reader.number(8);
    const std::size_t header = all - reader.rest().size();
    if (size == 0) size = all;  // to the end
    if (reader.isShort() || size < header || size > all) return false;
    if (!visit(type, reader.take(size - header))) return false;
  }
  return true;
}

struct Size {
  std::uint64_t width, height;
  std::uint64_t pixels() const { return width * height; }
  std::uint64_t longer() const { return std::max(width, height); }
  std::uint64_t shorter() const { return std::min(width, height); }
};

struct Property {
  std::string_view type;
  Bytes content;
};

struct Item {
  std::string_view type;
  Bytes content;                        // empty where it is not in one piece
  std::vector<std::size_t> properties;  // counted from 1
};

struct Reference {
  std::string_view type;
  std::uint64_t from, to;
};

/// Whether a cut ("clap": width, height and two offsets, each as numerator and denominator) has numbers of
/// the size of a picture. On far larger ones the decoder's arithmetic overflows.
bool isSensibleCut(Bytes cut) {
  constexpr std::int64_t kLargest = 1 << 17;
  ByteReader numbers(cut);
  for (int place = 0; place < 8; ++place) {
    const std::int64_t number = static_cast<std::int32_t>(numbers.number(4));
    const bool mayBeNegative = place == 4 || place == 6;
    if (number > kLargest || number < (mayBeNegative ? -kLargest : 1)) return false;
  }
  return !numbers.isShort();
}

/// The items of a file, their properties and who refers to whom.
class Structure {
 public:
  /// False where the file is damaged, and where it has more of anything than a camera writes.
  bool read(Bytes file);

  std::optional<Size> statedSize(const Item& item) const;
  const Property* find(const Item& item, std::string_view type) const;

  std::uint64_t primary = 0;
  std::map<std::uint64_t, Item> items;
  std::vector<Reference> references;

 private:
  bool readMeta(Bytes content);
  bool readItemInfos(Bytes content);
  bool readLocations(Bytes content);
  bool readReferences(Bytes content);
  bool readProperties(Bytes content);
  bool readAssociations(Bytes content);

  Bytes file_, inside_;  // where the items' contents are: anywhere, or within the description
  std::vector<Property> properties_;
};

bool Structure::read(Bytes file) {
  file_ = file;
  int descriptions = 0;
  return everyBox(file, [&](std::string_view type, Bytes content) {
    return type != "meta" || (++descriptions == 1 && content.size() >= 4 && readMeta(content.subspan(4)));
  });
}

bool Structure::readMeta(Bytes content) {
  constexpr std::string_view kRead = "pitm iinf iloc iprp iref idat";
  std::map<std::string_view, Bytes> boxes;
  const bool areDistinct = everyBox(content, [&](std::string_view type, Bytes box) {
    return kRead.find(type) == kRead.npos || boxes.emplace(type, box).second;
  });
  ByteReader primaryItem(boxes["pitm"]);
  primary = primaryItem.number(primaryItem.number(4) >> 24 == 0 ? 2 : 4);
  inside_ = boxes["idat"];
  return areDistinct && !primaryItem.isShort() && readItemInfos(boxes["iinf"]) &&
         readLocations(boxes["iloc"]) &&
         everyBox(boxes["iprp"],
                  [this](std::string_view type, Bytes box) {
                    if (type == "ipco") return readProperties(box);
                    return type != "ipma" || readAssociations(box);
                  }) &&
         readReferences(boxes["iref"]);
}

bool Structure::readItemInfos(Bytes content) {
  constexpr std::size_t kMostItems = 10'000;
  ByteReader reader(content);
  reader.take(reader.number(4) >> 24 == 0 ? 2 : 4);  // the count
  return everyBox(reader.rest(), [this](std::string_view type, Bytes info) {
    ByteReader numbers(info);
    const std::uint64_t version = numbers.number(4) >> 24;
    if (type != "infe" || version < 2) return true;  // no picture to the decoder, which a part must be
    const std::uint64_t item = numbers.number(version == 2 ? 2 : 4);
    numbers.take(2);  // how it is protected
    return items.size() < kMostItems && items.emplace(item, Item{numbers.word(), {}, {}}).second;
  });
}

bool Structure::readLocations(Bytes content) {
  ByteReader reader(content);
  const std::uint64_t version = reader.number(4) >> 24;
  const std::uint64_t widths = reader.number(2);
  const auto widthAt = [&](int shift) { return static_cast<std::size_t>(widths >> shift & 15); };
  const std::size_t offsetWidth = widthAt(12), lengthWidth = widthAt(8), baseWidth = widthAt(4);
  const std::size_t indexWidth = version == 0 ? 0 : widthAt(0);
  for (const std::size_t width : {offsetWidth, lengthWidth, baseWidth, indexWidth}) {
    if (width != 0 && width != 4 && width != 8) return false;
  }
  std::set<std::uint64_t> found;
  const std::size_t idWidth = version < 2 ? 2 : 4;
  for (std::uint64_t count = reader.number(idWidth); count > 0 && !reader.isShort(); --count) {
    const std::uint64_t id = reader.number(idWidth);
    const std::uint64_t place = version == 0 ? 0 : reader.number(2) & 15;
    reader.take(2);  // which file
    const std::uint64_t base = reader.number(baseWidth);
    const std::uint64_t pieces = reader.number(2);
    ByteReader piece(reader.take(pieces * (indexWidth + offsetWidth + lengthWidth)));
    const auto item = items.find(id);
    if (!found.insert(id).second) return false;
    if (item == items.end() || pieces != 1 || place > 1) continue;
    piece.take(indexWidth);
    ByteReader whole(place == 0 ? file_ : inside_);
    whole.take(base);
    whole.take(piece.number(offsetWidth));
    item->second.content = whole.take(piece.number(lengthWidth));
  }
  return !reader.isShort();
}

bool Structure::readReferences(Bytes content) {
  constexpr std::size_t kMostReferences = 10'000;
  ByteReader reader(content);
  const std::size_t width = reader.number(4) >> 24 == 0 ? 2 : 4;
  return everyBox(reader.rest(), [&](std::string_view type, Bytes list) {
    ByteReader numbers(list);
    const std::uint64_t from = numbers.number(width);
    for (std::uint64_t count = numbers.number(2); count > 0 && !numbers.isShort(); --count) {
      if (references.size() == kMostReferences) return false;
      references.push_back({type, from, numbers.number(width)});
    }
    return !numbers.isShort();
  });
}

bool Structure::readProperties(Bytes content) {
  constexpr std::size_t kMostProperties = 0x7FFF;  // the last that a number of 15 bits can name
  return everyBox(content, [this](std::string_view type, Bytes property) {
    properties_.push_back({type, property});
    return properties_.size() <= kMostProperties && (type != "clap" || isSensibleCut(property));
  });
}

/// Each of an item's properties may turn, mirror or cut the whole picture again.
bool Structure::readAssociations(Bytes content) {
  constexpr std::uint64_t kMostProperties = 16;
  ByteReader reader(content);
  const std::uint64_t versionAndFlags = reader.number(4);
  const std::size_t idWidth = versionAndFlags >> 24 == 0 ? 2 : 4;
  const std::size_t indexWidth = versionAndFlags & 1 ? 2 : 1;
  const std::uint64_t indexMask = indexWidth == 2 ? 0x7FFF : 0x7F;
  for (std::uint64_t count = reader.number(4); count > 0 && !reader.isShort(); --count) {
    const auto item = items.find(reader.number(idWidth));
    const std::uint64_t associations = reader.number(1);
    ByteReader numbers(reader.take(associations * indexWidth));
    if (item == items.end()) continue;  // a group of items may have properties too
    if (associations > kMostProperties || !item->second.properties.empty()) return false;
    while (!numbers.rest().empty()) {
      item->second.properties.push_back(static_cast<std::size_t>(numbers.number(indexWidth) & indexMask));
    }
  }
  return !reader.isShort();
}

/// The only one of this type; null where there is none, or several to choose from.
const Property* Structure::find(const Item& item, std::string_view type) const {
  const Property* found = nullptr;
  for (const std::size_t number : item.properties) {
    if (number == 0 || number > properties_.size() || properties_[number - 1].type != type) continue;
    if (found) return nullptr;
    found = &properties_[number - 1];
  }
  return found;
}

std::optional<Size> Structure::statedSize(const Item& item) const {
  const Property* property = find(item, "ispe");
  if (!property || property->content.size() < 12) return std::nullopt;
  ByteReader numbers(property->content.subspan(4));
  const std::uint64_t width = numbers.number(4);
  return Size{width, numbers.number(4)};
}

/// The samples that decoding this item alone goes over: those of a coded picture once for each slice, and a
/// few for each of its bytes; a grid has only tiles to copy. Null for one of another kind, and where the size
/// that the decoder finds is not the one that the file states.
std::optional<std::uint64_t> costOf(const Structure& structure, const Item& item) {
  constexpr std::uint64_t kLargestBlock = 64;  // of which a coded picture may have a part to spare
  constexpr std::uint64_t kSamplesAByte = 5, kCopiedPixelsASample = 8;
  if (item.type == "iden") return 0;  // shows another picture, turned or cut
  if (item.content.empty()) return std::nullopt;
  const std::optional<Size> stated = structure.statedSize(item);
  if (!stated || !isWithin(stated->width, stated->height, kMaxHeldPixels)) return std::nullopt;
  if (item.type == "grid") {
    ByteReader grid(item.content);
    const std::size_t width = grid.number(2) & 1 ? 4 : 2;
    grid.take(2);  // rows and columns
    const bool isTrue = grid.number(width) == stated->width && grid.number(width) == stated->height;
    return isTrue ? std::optional(stated->pixels() / kCopiedPixelsASample) : std::nullopt;
  }
  const Property* configuration = structure.find(item, "hvcC");
  HEVCPicture coded;
  if (item.type != "hvc1" || !configuration || !coded.addConfiguration(configuration->content) ||
      !coded.addUnits(item.content)) {
    return std::nullopt;
  }
  // Some encoders state the size of a turned picture as it is after the turn.
  const Size size{coded.width, coded.height};
  if (size.longer() >= stated->longer() + kLargestBlock ||
      size.shorter() >= stated->shorter() + kLargestBlock) {
    return std::nullopt;
  }
  return size.pixels() * coded.samplesOf2Pixels / 2 * coded.slices + item.content.size() * kSamplesAByte;
}

/// Who is put together from whom, and who belongs to whom as its transparency or the like.
struct Relations {
  std::set<std::uint64_t> derived, parts, auxiliaries, masters;
  std::size_t partUses = 0;

  explicit Relations(const Structure& structure) {
    for (const auto& [type, from, to] : structure.references) {
      // A "tmap" tells how bright screens show a picture, which is decoded without it.
      const auto item = structure.items.find(from);
      const bool isToneMap = item != structure.items.end() && item->second.type == "tmap";
      if (type == "dimg" && !isToneMap) derived.insert(from), parts.insert(to), ++partUses;
      if (type == "auxl") auxiliaries.insert(from), masters.insert(to);
    }
  }

  /// Whether no part is put together itself, none is used twice, and none has a companion, nor a companion
  /// one.
  bool areFlat() const {
    const auto apart = [](const auto& a, const auto& b) {
      return std::none_of(a.begin(), a.end(), [&b](std::uint64_t item) { return b.contains(item); });
    };
    return partUses == parts.size() && apart(derived, parts) && apart(auxiliaries, masters) &&
           apart(parts, masters);
  }
};

}  // namespace

bool isSimplyBuilt(const Data& picture) {
  constexpr std::uint64_t kMostSamples = 130'000'000;
  Structure structure;
  if (!structure.read({picture.data(), picture.size()})) return false;
  const Relations relations(structure);
  if (!relations.areFlat()) return false;

  std::set<std::uint64_t> decoded = relations.parts;
  decoded.insert(relations.auxiliaries.begin(), relations.auxiliaries.end());
  decoded.insert(structure.primary);
  std::uint64_t together = 0;
  for (const std::uint64_t id : decoded) {
    const auto item = structure.items.find(id);
    const auto cost = item == structure.items.end() ? std::nullopt : costOf(structure, item->second);
    if (!cost || *cost > kMostSamples - together) return false;
    together += *cost;
  }
  return true;
}

}  // namespace lumo::image
