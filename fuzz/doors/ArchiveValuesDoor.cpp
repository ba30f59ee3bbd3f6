// Values of every kind: what is archived is read back, here and by another reader.

#include "fuzz/Door.h"
#include "fuzz/Messages.h"
#include "platform/archive/KeyedArchiver.h"
#include "platform/archive/KeyedUnarchiver.h"
#include "platform/text/Text.h"

#include <plist/plist.h>

#include <algorithm>
#include <string>
#include <vector>

namespace lumo::fuzz {

namespace {

/// What the other reader finds in an archive of ours.
class OtherReader {
 public:
  explicit OtherReader(const Data& archive) {
    plist_from_bin(archive.view().data(), static_cast<std::uint32_t>(archive.size()), &top_);
    require(top_ != nullptr, "the other reader takes the archive");
    const plist_t objects = plist_dict_get_item(top_, "$objects");
    for (std::uint32_t i = 0; i < plist_array_get_size(objects); ++i) {
      objects_.push_back(plist_array_get_item(objects, i));
    }
  }
  ~OtherReader() { plist_free(top_); }
  OtherReader(const OtherReader&) = delete;
  OtherReader& operator=(const OtherReader&) = delete;

  Value root() const { return valueOf(plist_access_path(top_, 2, "$top", "root")); }

 private:
  plist_t object(plist_t uid) const {
    std::uint64_t number = 0;
    plist_get_uid_val(uid, &number);
    return objects_.at(number);
  }

  static std::string text(plist_t node) { return plist_get_string_ptr(node, nullptr); }

  Value valueOf(plist_t uid) const {
    const plist_t node = object(uid);
    std::uint64_t number = 0;
    std::uint8_t boolean = 0;
    double real = 0;
    const char* bytes = nullptr;
    switch (plist_get_node_type(node)) {
      case PLIST_STRING:
        return text(node);
      case PLIST_DATA:
        bytes = plist_get_data_ptr(node, &number);
        return Data::copy({bytes, number});
      case PLIST_BOOLEAN:
        plist_get_bool_val(node, &boolean);
        return boolean != 0;
      case PLIST_REAL:
        plist_get_real_val(node, &real);
        return real;
      case PLIST_UINT:
        plist_get_uint_val(node, &number);
        return static_cast<std::int64_t>(number);
      default:
        return instance(node);
    }
  }

  Value instance(plist_t node) const {
    const std::string name =
        text(plist_dict_get_item(object(plist_dict_get_item(node, "$class")), "$classname"));
    if (name == "NSNull") return {};
    if (name == "NSString") return text(plist_dict_get_item(node, "NS.string"));
    const plist_t keys = plist_dict_get_item(node, "NS.keys");
    const plist_t elements = plist_dict_get_item(node, "NS.objects");
    Value::Array array;
    Value::Dictionary entries;
    for (std::uint32_t i = 0; i < plist_array_get_size(elements); ++i) {
      array.push_back(valueOf(plist_array_get_item(elements, i)));
      if (keys) entries.set(*valueOf(plist_array_get_item(keys, i)).asString(), array.back());
    }
    return keys ? Value(std::move(entries)) : Value(std::move(array));
  }

  plist_t top_ = nullptr;
  std::vector<plist_t> objects_;
};

/// What decides about a value, level by level: the format's own limits and those of the other reader.
struct Traits {
  bool isUTF8 = true;
  bool isForOther = true;  ///< no NUL in a text, which it ends there, and no number of more than 63 bits
  int height = 0;

  void add(std::string_view text) {
    isUTF8 = isUTF8 && isValidUTF8(text);
    isForOther = isForOther && text.find('\0') == text.npos;
  }
};

void look(const Value& value, int depth, Traits& traits) {
  if (traits.height > kMaxArchiveDepth) return;  // nothing else matters, and the way down may be endless
  if (const std::string* text = value.asString()) traits.add(*text);
  if (value.asUnsigned()) traits.isForOther = false;
  if (const Value::Array* array = value.asArray()) {
    traits.height = std::max(traits.height, depth);
    for (const Value& element : *array) look(element, depth + 1, traits);
  } else if (const Value::Dictionary* entries = value.asDictionary()) {
    traits.height = std::max(traits.height, depth);
    for (const auto& [key, element] : *entries) {
      traits.add(key);
      look(element, depth + 1, traits);
    }
  }
}

}  // namespace

void door(std::string_view input) {
  Input bytes(input);
  const Value value = dictionary(bytes);
  Traits traits;
  look(value, 1, traits);
  const std::optional<DataChain> archive = archivedData(value);
  require(archive.has_value() == (traits.isUTF8 && traits.height <= kMaxArchiveDepth),
          "what the format can hold is archived");
  if (!archive) return;
  const Data joined = archive->joined();
  require(unarchivedValue(joined) == value, "what is archived is read");
  if (traits.isForOther) require(OtherReader(joined).root() == value, "by the other reader too");
}

}  // namespace lumo::fuzz
