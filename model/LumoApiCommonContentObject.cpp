#include "LumoApi/LumoApiCommonContentObject.h"

#include "platform/archive/KeyedArchiver.h"
#include "platform/text/Text.h"

namespace {

using lumo::Data;
using lumo::Value;

// How each type of field stands in the dictionary form …

void put(Value::Dictionary& form, const char* name, std::uint64_t number) {
  if (number != 0) form.set(name, number);
}

void put(Value::Dictionary& form, const char* name, const std::optional<std::string>& text) {
  if (text && lumo::isValidUTF8(*text)) form.set(name, *text);  // other text cannot be archived
}

void put(Value::Dictionary& form, const char* name, const std::optional<Data>& bytes) {
  if (bytes) form.set(name, *bytes);
}

template <class T>
void put(Value::Dictionary& form, const char* name, const std::optional<std::vector<T>>& list) {
  if (list) form.set(name, Value(Value::Array(list->begin(), list->end())));
}

// … and is read back, as absent where it is of another type.

void take(const Value& value, std::uint64_t& number) {
  if (const auto* small = value.asInteger(); small && *small >= 0)
    number = static_cast<std::uint64_t>(*small);
  if (const auto* large = value.asUnsigned()) number = *large;
}

template <class T>
void take(const Value& value, std::optional<T>& field) {
  if (const T* content = lumo::contentOf<T>(value)) field = *content;
}

template <class T>
void take(const Value& value, std::optional<std::vector<T>>& field) {
  field = lumo::listOf<T>(value);
}

}  // namespace

// toDictionary
Value::Dictionary LumoApiCommonContentObject::toDictionary() const {
  Value::Dictionary form;
  lumo::forEachField(*this, [&form](const char* name, const auto& field) { put(form, name, field); });
  return form;
}

// objectWithDictionary:
std::shared_ptr<LumoApiCommonContentObject> LumoApiCommonContentObject::objectWithDictionary(
    const LumoApiLargeData* record) {
  auto object = std::make_shared<LumoApiCommonContentObject>();
  const Value* entry = record ? record->find(lumo::record::kFileData.text) : nullptr;
  const Data* archive = entry ? entry->asData() : nullptr;
  if (!archive) return object;
  const std::optional<Value> root = lumo::unarchivedValue(*archive);
  const Value::Dictionary* form = root ? root->asDictionary() : nullptr;
  if (!form) return object;
  lumo::forEachField(*object, [form](const char* name, auto& field) {
    if (const Value* value = form->find(name)) take(*value, field);
  });
  return object;
}
