// Requests for the messenger's services.

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "LumoApi/converters/Converters.h"
#include "LumoApi/internal/Keys.h"
#include "platform/JSON.h"

namespace lumo::converters {

namespace {

/// A copy of the free-form base where that is a dictionary; anything else counts as none.
Value::Dictionary userInfo(const std::optional<Value>& base) {
  const Value::Dictionary* entries = base ? base->asDictionary() : nullptr;
  return entries ? *entries : Value::Dictionary();
}

/// The user info as base64 of its JSON text; refused where its base holds something that JSON cannot.
Check setUserInfo(LumoApiQueryDictionary& query, Value::Dictionary info, std::string_view baseField) {
  std::optional<std::string> json = writeJSON(Value(std::move(info)));
  if (!json) return refused(LumoApiRefusal::Code::NotSerialisable, baseField, kSilent);
  query.set(keys::kServiceUserInfo, QueryValue::base64(*std::move(json)));
  return std::nullopt;
}

}  // namespace

Result<URL> urlWithExtraServiceObject(const LumoApiExtraServiceObject& object, Conversion& conversion) {
  LumoApiQueryDictionary query;
  query.set(keys::kSourceType, QueryValue::fixed("app"));
  query.set(keys::kVersion, QueryValue::fixed("1"));
  query.set(keys::kServiceId, QueryValue::text(unowned(object.serviceID()).value_or(Data())));
  setCallbackName(query, conversion);
  if (const auto& openId = conversion.store->openId)
    query.set(keys::kOpenId, textOf(conversion.store, *openId));

  Value::Dictionary info = userInfo(object.extraInfo());
  info.set("openId", object.openID().value_or(""));
  info.set("exsvr_touin", object.toUin().value_or(""));
  if (Check refusal = setUserInfo(query, std::move(info), "extraInfo")) return *refusal;
  setTitles(query, object, conversion);
  return route(destinations::kExtraService, query, conversion, object.shareDestType());
}

Result<URL> urlWithCommonServiceObject(const LumoApiCommonServiceObject& object, Conversion& conversion) {
  LumoApiQueryDictionary query;
  query.set(keys::kSourceType, QueryValue::fixed("app"));
  query.set(keys::kVersion, QueryValue::fixed("1"));
  query.set(keys::kCallbackType, QueryValue::fixed("scheme"));
  query.set(keys::kServiceId, QueryValue::text(unowned(object.serviceID()).value_or(Data())));
  setCallbackName(query, conversion);
  // Here the open identifier is the object's own, not the store's.
  if (!isEmpty(object.openID())) query.set(keys::kOpenId, QueryValue::text(Data::unowned(*object.openID())));

  Value::Dictionary info = userInfo(object.extendInfo());
  info.set("openId", object.openID().value_or(""));
  if (Check refusal = setUserInfo(query, std::move(info), "extendInfo")) return *refusal;
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
