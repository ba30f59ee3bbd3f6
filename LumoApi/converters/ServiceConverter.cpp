// Requests for the messenger's services.

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "LumoApi/converters/Converters.h"
#include "LumoApi/internal/Keys.h"
#include "platform/text/Text.h"

namespace lumo::converters {

namespace {

/// One of the object's texts, as it is set in the user info; an absent one is set as empty.
struct Member {
  FixedWord key;
  std::string_view field;
  const std::optional<std::string>& text;
};

/// The user info: the free-form base, which counts as empty unless it is a dictionary, with the members set
/// over it.
Check setUserInfo(LumoApiQueryDictionary& query, const std::optional<Value>& base, std::string_view baseField,
                  std::initializer_list<Member> members) {
  const Value::Dictionary* entries = base ? base->asDictionary() : nullptr;
  Value::Dictionary info = entries ? *entries : Value::Dictionary();
  for (const auto& [key, field, text] : members) {
    if (text && !isValidUTF8(*text)) return refused(LumoApiRefusal::Code::NotUTF8, field, kSilent);
    info.set(std::string(key.text()), text.value_or(""));
  }
  return setJSON(query, keys::kServiceUserInfo, Value(std::move(info)), baseField);
}

}  // namespace

Result<URL> urlWithExtraServiceObject(const LumoApiExtraServiceObject& object, Conversion& conversion) {
  LumoApiQueryDictionary query;
  query.set(keys::kSourceType, "app");
  query.set(keys::kVersion, "1");
  query.set(keys::kServiceId, QueryValue::text(unowned(object.serviceID()).value_or(Data())));
  setCallbackName(query, conversion);
  setStoreText(query, keys::kOpenId, conversion.store, conversion.store->openId);
  if (Check refusal = setUserInfo(
          query, object.extraInfo(), "extraInfo",
          {{keys::kOpenId, "openID", object.openID()}, {keys::kServiceToUin, "toUin", object.toUin()}})) {
    return *refusal;
  }
  setTitles(query, object, conversion);
  return route(destinations::kExtraService, query, conversion, object.shareDestType());
}

Result<URL> urlWithCommonServiceObject(const LumoApiCommonServiceObject& object, Conversion& conversion) {
  LumoApiQueryDictionary query;
  query.set(keys::kSourceType, "app");
  query.set(keys::kVersion, "1");
  query.set(keys::kCallbackType, "scheme");
  query.set(keys::kServiceId, QueryValue::text(unowned(object.serviceID()).value_or(Data())));
  setCallbackName(query, conversion);
  // Here the open identifier is the object's own, not the store's.
  if (!isEmpty(object.openID())) query.set(keys::kOpenId, QueryValue::text(Data::unowned(*object.openID())));
  if (Check refusal = setUserInfo(query, object.extendInfo(), "extendInfo",
                                  {{keys::kOpenId, "openID", object.openID()}})) {
    return *refusal;
  }
  setTitles(query, object, conversion);
  return route(destinations::kCommonService, query, conversion, object.shareDestType());
}

}  // namespace lumo::converters

// urlWithExtraServiceObject:type:
std::optional<lumo::URL> LumoApiMessageAndUrlConverter::urlWithExtraServiceObject(
    const LumoApiExtraServiceObject& object, std::int32_t type) noexcept {
  return lumo::convertedObject<lumo::converters::urlWithExtraServiceObject>(object, type);
}

// urlWithCommonServiceObject:type:
std::optional<lumo::URL> LumoApiMessageAndUrlConverter::urlWithCommonServiceObject(
    const LumoApiCommonServiceObject& object, std::int32_t type) noexcept {
  return lumo::convertedObject<lumo::converters::urlWithCommonServiceObject>(object, type);
}
