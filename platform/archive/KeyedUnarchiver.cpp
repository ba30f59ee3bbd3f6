#include "platform/archive/KeyedUnarchiver.h"

#include "platform/archive/BinaryPlistReader.h"
#include "platform/archive/KeyedArchiveKeys.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lumo {

namespace {

/// How much text an archive may become. A text is stored once, however often it is referred to, so there can
/// be more of it than the archive has bytes; but not without end.
constexpr std::size_t maxTextSize(std::size_t archiveSize) {
  return (std::size_t{16} << 20) + 4 * archiveSize;
}

/// What may stand for an instance of a class that is read. Every other class is refused.
enum class Reading : std::uint8_t { Dictionary, Array, String, Data, Date, Null };

struct ReadClass {
  std::string_view name;
  Reading reading;
};

constexpr ReadClass kReadClasses[] = {
    {"NSDictionary", Reading::Dictionary},
    {"NSMutableDictionary", Reading::Dictionary},
    {"NSArray", Reading::Array},
    {"NSMutableArray", Reading::Array},
    {"NSString", Reading::String},
    {"NSMutableString", Reading::String},
    {"NSData", Reading::Data},
    {"NSMutableData", Reading::Data},
    {"NSDate", Reading::Date},
    {"NSNull", Reading::Null},
};

/// Builds the value of the objects of an archive. An array or a dictionary that is referred to many times is
/// built once and shared, but counts each time against what the archive may become.
class Unarchiver {
 public:
  Unarchiver(const PlistReader& plist, const PlistObject& objects, std::size_t archiveSize)
      : plist_(plist),
        objects_(objects),
        memo_(plist.objectCount()),
        left_{archiveSize, maxTextSize(archiveSize)} {}

  /// The value of the object that a UID stands for, inside `depth` - 1 arrays and dictionaries.
  std::optional<Value> value(const std::optional<PlistObject>& uid, int depth);

 private:
  struct Allowance {
    std::size_t values;
    std::size_t textBytes;
  };

  /// An array or a dictionary that has been built.
  struct Built {
    Value value;
    Allowance used;
    int height;
  };

  static constexpr std::uint32_t kUnread = 0;
  static constexpr std::uint32_t kBeingRead = 1;
  static constexpr std::uint32_t kFirstBuilt = 2;

  std::optional<std::size_t> numberOf(const std::optional<PlistObject>& uid) const;
  std::optional<Value> instance(std::size_t number, const PlistObject& object, int depth);
  std::optional<Reading> readingOf(const PlistObject& object) const;
  std::optional<Value> container(Reading reading, std::size_t number, const PlistObject& object, int depth);
  std::optional<Value> array(const PlistObject& object, int depth);
  std::optional<Value> dictionary(const PlistObject& object, int depth);
  std::optional<Value> text(const std::optional<PlistObject>& object);
  std::optional<PlistObject> list(const PlistObject& object, std::string_view key);
  std::optional<Value> again(const Built& built, int depth);
  bool use(const Allowance& used);

  const PlistReader& plist_;
  const PlistObject objects_;
  std::vector<std::uint32_t> memo_;  // for each object of the list, where it is in built_, plus kFirstBuilt
  std::vector<Built> built_;
  Allowance left_;
  int deepest_ = 0;  // the deepest array or dictionary since the one that is being built was begun
};

bool Unarchiver::use(const Allowance& used) {
  if (used.values > left_.values || used.textBytes > left_.textBytes) return false;
  left_.values -= used.values;
  left_.textBytes -= used.textBytes;
  return true;
}

/// Where the object that a UID stands for is in the property list; nil is nowhere.
std::optional<std::size_t> Unarchiver::numberOf(const std::optional<PlistObject>& uid) const {
  if (!uid || uid->kind != PlistKind::UID || uid->number == kNil || uid->number >= objects_.count) return {};
  return plist_.elementNumber(objects_, uid->number);
}

std::optional<Value> Unarchiver::value(const std::optional<PlistObject>& uid, int depth) {
  const std::optional<std::size_t> number = numberOf(uid);
  const std::optional<PlistObject> object = number ? plist_.object(*number) : std::nullopt;
  if (!object) return {};
  switch (object->kind) {
    case PlistKind::Boolean:
      return Value(object->number != 0);
    case PlistKind::Integer:
      return Value(static_cast<std::int64_t>(object->number));
    case PlistKind::UnsignedInteger:
      return Value(object->number);
    case PlistKind::Real:
    case PlistKind::Date:
      return Value(object->real());
    case PlistKind::Data:
      return Value(plist_.data(*object));
    case PlistKind::ASCII:
    case PlistKind::UTF16:
      return object->isASCII(kNilText) ? std::nullopt : text(object);
    case PlistKind::Dictionary:
      return instance(*number, *object, depth);
    case PlistKind::UID:
    case PlistKind::Array:
      return {};
  }
  return {};
}

std::optional<Value> Unarchiver::text(const std::optional<PlistObject>& object) {
  if (!object) return {};
  const std::size_t most = object->kind == PlistKind::UTF16 ? object->count * 3 : object->count;
  if (!use({.values = 0, .textBytes = most})) return {};
  std::optional<std::string> text = PlistReader::text(*object);
  if (!text) return {};
  return Value(std::move(*text));
}

std::optional<Value> Unarchiver::instance(std::size_t number, const PlistObject& object, int depth) {
  const std::optional<Reading> reading = readingOf(object);
  if (!reading) return {};
  switch (*reading) {
    case Reading::Dictionary:
    case Reading::Array:
      return container(*reading, number, object, depth);
    case Reading::String:
      return text(plist_.find(object, kStringKey));
    case Reading::Null:
      return Value();
    case Reading::Data: {
      const std::optional<PlistObject> data = plist_.find(object, kDataKey);
      if (!data || data->kind != PlistKind::Data) return {};
      return Value(plist_.data(*data));
    }
    case Reading::Date: {
      const std::optional<PlistObject> time = plist_.find(object, kTimeKey);
      if (!time || time->kind != PlistKind::Real) return {};
      return Value(time->real());
    }
  }
  return {};
}

std::optional<Reading> Unarchiver::readingOf(const PlistObject& object) const {
  const std::optional<std::size_t> number = numberOf(plist_.find(object, kClassKey));
  const std::optional<PlistObject> record = number ? plist_.object(*number) : std::nullopt;
  const std::optional<PlistObject> name = record ? plist_.find(*record, kClassNameKey) : std::nullopt;
  if (!name) return {};
  for (const ReadClass& readClass : kReadClasses) {
    if (name->isASCII(readClass.name)) return readClass.reading;
  }
  return {};
}

std::optional<Value> Unarchiver::container(Reading reading, std::size_t number, const PlistObject& object,
                                           int depth) {
  if (depth > kMaxArchiveDepth || memo_[number] == kBeingRead) return {};
  if (memo_[number] != kUnread) return again(built_[memo_[number] - kFirstBuilt], depth);
  memo_[number] = kBeingRead;
  const Allowance before = left_;
  const int deepestBefore = std::exchange(deepest_, depth);
  std::optional<Value> value = reading == Reading::Array ? array(object, depth) : dictionary(object, depth);
  if (!value) return {};
  const Allowance used{before.values - left_.values, before.textBytes - left_.textBytes};
  built_.push_back({*value, used, deepest_ - depth});
  memo_[number] = static_cast<std::uint32_t>(built_.size() - 1) + kFirstBuilt;
  deepest_ = std::max(deepest_, deepestBefore);
  return value;
}

std::optional<Value> Unarchiver::again(const Built& built, int depth) {
  if (depth + built.height > kMaxArchiveDepth || !use(built.used)) return {};
  deepest_ = std::max(deepest_, depth + built.height);
  return built.value;
}

/// The references under a key of an array or a dictionary, all paid for.
std::optional<PlistObject> Unarchiver::list(const PlistObject& object, std::string_view key) {
  std::optional<PlistObject> list = plist_.find(object, key);
  if (!list || list->kind != PlistKind::Array || !use({.values = list->count, .textBytes = 0})) return {};
  return list;
}

std::optional<Value> Unarchiver::array(const PlistObject& object, int depth) {
  const std::optional<PlistObject> elements = list(object, kElementsKey);
  if (!elements) return {};
  Value::Array array;
  array.reserve(elements->count);
  for (std::size_t i = 0; i < elements->count; ++i) {
    std::optional<Value> element = value(plist_.element(*elements, i), depth + 1);
    if (!element) return {};
    array.push_back(std::move(*element));
  }
  return Value(std::move(array));
}

std::optional<Value> Unarchiver::dictionary(const PlistObject& object, int depth) {
  const std::optional<PlistObject> keys = list(object, kKeysKey);
  const std::optional<PlistObject> elements = list(object, kElementsKey);
  if (!keys || !elements || keys->count != elements->count) return {};
  Value::Dictionary dictionary;
  dictionary.reserve(keys->count);
  for (std::size_t i = 0; i < keys->count; ++i) {
    const std::optional<Value> key = value(plist_.element(*keys, i), depth + 1);
    std::optional<Value> element = value(plist_.element(*elements, i), depth + 1);
    if (!key || !key->asString() || !element) return {};
    dictionary.set(*key->asString(), std::move(*element));
  }
  return Value(std::move(dictionary));
}

}  // namespace

std::optional<Value> unarchivedValue(const Data& archive) {
  const std::optional<PlistReader> plist = PlistReader::open(archive);
  const std::optional<PlistObject> envelope = plist ? plist->top() : std::nullopt;
  if (!envelope) return std::nullopt;
  const std::optional<PlistObject> archiver = plist->find(*envelope, kArchiverKey);
  const std::optional<PlistObject> version = plist->find(*envelope, kVersionKey);
  const std::optional<PlistObject> objects = plist->find(*envelope, kObjectsKey);
  const std::optional<PlistObject> top = plist->find(*envelope, kTopKey);
  if (!archiver || !archiver->isASCII(kArchiverName)) return std::nullopt;
  if (!version || version->kind != PlistKind::Integer || version->number != kVersion) return std::nullopt;
  if (!objects || objects->kind != PlistKind::Array || !top) return std::nullopt;
  return Unarchiver(*plist, *objects, archive.size()).value(plist->find(*top, kRootKey), 1);
}

}  // namespace lumo
