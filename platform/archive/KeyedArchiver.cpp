#include "platform/archive/KeyedArchiver.h"

#include "platform/archive/BinaryPlistWriter.h"
#include "platform/archive/KeyedArchiveKeys.h"
#include "platform/archive/SmallVector.h"
#include "platform/text/Text.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace lumo {

namespace {

using namespace std::string_view_literals;

// Keeps all numbers far inside 32 bits: an object takes at most four places in the property list.
constexpr std::size_t kMaxObjects = std::numeric_limits<std::uint32_t>::max() / 8;

/// The classes that are written.
enum class Class : std::uint8_t { MutableDictionary, Dictionary, Array, String, Null };

constexpr std::size_t kClassCount = 5;

/// The words of the archive, prepared once.
struct Words {
  PlistWord versionNumber{kVersion}, version{kVersionKey}, objects{kObjectsKey}, archiver{kArchiverKey},
      top{kTopKey};
  PlistWord root{kRootKey}, archiverName{kArchiverName}, nil{kNilText};
  PlistWord keys{kKeysKey}, elements{kElementsKey}, string{kStringKey}, classKey{kClassKey};
  PlistWord className{kClassNameKey}, classes{kClassesKey};

  /// For each class the names from the class itself up to the root class.
  struct ClassNames {
    std::size_t count;
    std::array<PlistWord, 3> names;
  };
  std::array<ClassNames, kClassCount> classNames{{
      {3, {"NSMutableDictionary"sv, "NSDictionary"sv, "NSObject"sv}},
      {2, {"NSDictionary"sv, "NSObject"sv}},
      {2, {"NSArray"sv, "NSObject"sv}},
      {2, {"NSString"sv, "NSObject"sv}},
      {2, {"NSNull"sv, "NSObject"sv}},
  }};
};

const Words& words() {
  static const Words made;
  return made;
}

/// Numbers the objects of a value in the order in which the messenger's archiver meets them, then writes
/// them.
class Archiver {
 public:
  Archiver() { addObject({.form = Form::Nil}); }

  /// The number that the value got; kNil where it cannot be archived.
  std::uint32_t add(const Value& value, int depth);
  void write(PlistWriter& plist) const;

 private:
  enum class Form : std::uint8_t { Nil, Scalar, Text, Instance, ClassRecord };

  struct Object {
    Form form;
    Class classOf = Class::Null;     // of an instance, or of a class record the class itself
    const Value* scalar = nullptr;   // a boolean, a number or data
    std::string_view text{};         // as itself, or of an instance of String
    std::size_t firstReference = 0;  // the elements of an instance: in a dictionary keys, then values
    std::size_t count = 0;
  };

  std::uint32_t addObject(const Object& object);
  std::uint32_t addText(std::string_view text);
  std::uint32_t addArray(const Value::Array& array, int depth);
  std::uint32_t addDictionary(const Value::Dictionary& dictionary, int depth);
  std::uint32_t finished(std::uint32_t number);

  void write(PlistWriter& plist, const Object& object) const;
  void writeInstance(PlistWriter& plist, const Object& object) const;
  void writeClassRecord(PlistWriter& plist, Class recorded) const;
  void writeReferences(PlistWriter& plist, std::size_t first, std::size_t count) const;

  SmallVector<Object, 16> objects_;
  SmallVector<std::uint32_t, 16> references_;
  std::array<std::uint32_t, kClassCount> classNumbers_{};  // kNil until the first object is finished
  const Words& words_ = words();
};

std::uint32_t Archiver::add(const Value& value, int depth) {
  if (objects_.size() >= kMaxObjects) return kNil;
  if (const std::string* text = value.asString()) return addText(*text);
  if (const Value::Array* array = value.asArray()) return addArray(*array, depth);
  if (const Value::Dictionary* dictionary = value.asDictionary()) return addDictionary(*dictionary, depth);
  if (value.isNull()) return finished(addObject({.form = Form::Instance, .classOf = Class::Null}));
  return addObject({.form = Form::Scalar, .scalar = &value});
}

std::uint32_t Archiver::addObject(const Object& object) {
  objects_.push_back(object);
  return static_cast<std::uint32_t>(objects_.size() - 1);
}

std::uint32_t Archiver::addText(std::string_view text) {
  if (!isValidUTF8(text)) return kNil;
  if (text != kNilText) return addObject({.form = Form::Text, .text = text});
  return finished(addObject({.form = Form::Instance, .classOf = Class::String, .text = text}));
}

std::uint32_t Archiver::addArray(const Value::Array& array, int depth) {
  if (depth > kMaxArchiveDepth) return kNil;
  const std::size_t first = references_.size();
  references_.resize(first + array.size());
  const std::uint32_t number = addObject(
      {.form = Form::Instance, .classOf = Class::Array, .firstReference = first, .count = array.size()});
  for (std::size_t i = 0; i < array.size(); ++i) {
    const std::uint32_t element = add(array[i], depth + 1);
    if (element == kNil) return kNil;
    references_[first + i] = element;
  }
  return finished(number);
}

std::uint32_t Archiver::addDictionary(const Value::Dictionary& dictionary, int depth) {
  if (depth > kMaxArchiveDepth) return kNil;
  const std::size_t first = references_.size();
  std::size_t next = first;
  references_.resize(first + 2 * dictionary.size());
  const std::uint32_t number =
      addObject({.form = Form::Instance,
                 .classOf = depth == 1 ? Class::MutableDictionary : Class::Dictionary,
                 .firstReference = first,
                 .count = dictionary.size()});
  const auto refer = [&](std::uint32_t element) {
    references_[next++] = element;
    return element != kNil;
  };
  for (const auto& [key, value] : dictionary) {
    if (!refer(addText(key))) return kNil;
  }
  for (const auto& [key, value] : dictionary) {
    if (!refer(add(value, depth + 1))) return kNil;
  }
  return finished(number);
}

/// Gives the class of a finished object a number too, if it is the first of its class.
std::uint32_t Archiver::finished(std::uint32_t number) {
  const Class classOf = objects_[number].classOf;
  std::uint32_t& classNumber = classNumbers_[static_cast<std::size_t>(classOf)];
  if (classNumber == kNil) classNumber = addObject({.form = Form::ClassRecord, .classOf = classOf});
  return number;
}

void writeScalar(PlistWriter& plist, const Value& value) {
  if (const bool* boolean = value.asBoolean()) plist.boolean(*boolean);
  if (const std::int64_t* integer = value.asInteger()) plist.integer(*integer);
  if (const std::uint64_t* integer = value.asUnsigned()) plist.unsignedInteger(*integer);
  if (const double* real = value.asDouble()) plist.real(*real);
  if (const Data* data = value.asData()) plist.data(*data);
}

template <class... Names>
void beginDictionary(PlistWriter& plist, const Names&... names) {
  plist.beginDictionary(sizeof...(names));
  (plist.word(names), ...);
}

void Archiver::write(PlistWriter& plist) const {
  beginDictionary(plist, words_.version, words_.objects, words_.archiver, words_.top);
  plist.word(words_.versionNumber);
  plist.beginArray(objects_.size());
  for (const Object& object : objects_) write(plist, object);
  plist.word(words_.archiverName);
  beginDictionary(plist, words_.root);
  plist.uid(kRootNumber);
}

void Archiver::write(PlistWriter& plist, const Object& object) const {
  switch (object.form) {
    case Form::Nil:
      plist.word(words_.nil);
      return;
    case Form::Scalar:
      writeScalar(plist, *object.scalar);
      return;
    case Form::Text:
      plist.text(object.text);
      return;
    case Form::Instance:
      writeInstance(plist, object);
      return;
    case Form::ClassRecord:
      writeClassRecord(plist, object.classOf);
      return;
  }
}

void Archiver::writeClassRecord(PlistWriter& plist, Class recorded) const {
  const auto& [count, names] = words_.classNames[static_cast<std::size_t>(recorded)];
  beginDictionary(plist, words_.className, words_.classes);
  plist.word(names.front());
  plist.beginArray(count);
  for (std::size_t i = 0; i < count; ++i) plist.word(names[i]);
}

void Archiver::writeInstance(PlistWriter& plist, const Object& object) const {
  switch (object.classOf) {
    case Class::MutableDictionary:
    case Class::Dictionary:
      beginDictionary(plist, words_.keys, words_.elements, words_.classKey);
      writeReferences(plist, object.firstReference, object.count);
      writeReferences(plist, object.firstReference + object.count, object.count);
      break;
    case Class::Array:
      beginDictionary(plist, words_.elements, words_.classKey);
      writeReferences(plist, object.firstReference, object.count);
      break;
    case Class::String:
      beginDictionary(plist, words_.string, words_.classKey);
      plist.text(object.text);
      break;
    case Class::Null:
      beginDictionary(plist, words_.classKey);
      break;
  }
  plist.uid(classNumbers_[static_cast<std::size_t>(object.classOf)]);
}

void Archiver::writeReferences(PlistWriter& plist, std::size_t first, std::size_t count) const {
  plist.beginArray(count);
  for (std::size_t i = 0; i < count; ++i) plist.uid(references_[first + i]);
}

}  // namespace

std::optional<DataChain> archivedData(const Value& root) {
  Archiver archiver;
  if (!root.asDictionary() || archiver.add(root, 1) != kRootNumber) return std::nullopt;
  PlistWriter plist;
  archiver.write(plist);
  return plist.finish();
}

}  // namespace lumo
