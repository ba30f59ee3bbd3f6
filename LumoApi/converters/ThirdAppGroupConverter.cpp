// Requests about a messenger group that belongs to the app.

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "LumoApi/converters/Converters.h"
#include "LumoApi/internal/Keys.h"

namespace lumo::converters {

namespace {

void setIdentifiers(LumoApiQueryDictionary& query, const Conversion& conversion) {
  const StoreValues& store = conversion.store;
  if (store->openId) query.set(keys::kOpenId, textOf(store, *store->openId));
  if (store->appId) query.set(keys::kAppId, textOf(store, *store->appId));
}

/// The entries that other kinds always carry; here only where the messenger can open the app again.
void setSource(LumoApiQueryDictionary& query, const Conversion& conversion) {
  if (!conversion.store->scheme) return;
  query.set(keys::kSource, QueryValue::fixed("external"));
  query.set(keys::kCallbackType, QueryValue::fixed("scheme"));
  setCallbackName(query, conversion);
  query.set(keys::kSourceType, QueryValue::fixed("app"));
  query.set(keys::kVersion, QueryValue::fixed("1"));
}

}  // namespace

Result<URL> urlWithApiThirdAppBindGroupObject(const LumoApiThirdAppBindGroupObject& object,
                                              Conversion& conversion) {
  LumoApiQueryDictionary query;
  setIdentifiers(query, conversion);
  if (object.unionID()) query.set(keys::kUnionId, QueryValue::text(Data::unowned(*object.unionID())));
  setBase64(query, keys::kDisplayName,
            unowned(object.appDisplayName() ? object.appDisplayName() : conversion.store->appName));
  setSource(query, conversion);
  setTitles(query, object, conversion);
  return route(destinations::kBindGroup, query, conversion, object.shareDestType());
}

Result<URL> urlWithApiThirdAppJoinGroupObject(const LumoApiThirdAppJoinGroupObject& object,
                                              Conversion& conversion) {
  LumoApiQueryDictionary query;
  setIdentifiers(query, conversion);
  if (!isEmpty(object.unionID()))
    query.set(keys::kUnionId, QueryValue::text(Data::unowned(*object.unionID())));
  setSource(query, conversion);
  setTitles(query, object, conversion);
  return route(destinations::kJoinGroup, query, conversion, object.shareDestType());
}

}  // namespace lumo::converters

// urlWithApiThirdAppBindGroupObject:type:
std::optional<lumo::URL> LumoApiMessageAndUrlConverter::urlWithApiThirdAppBindGroupObject(
    const LumoApiThirdAppBindGroupObject& object, std::int32_t type) noexcept {
  return lumo::convertedObject<lumo::converters::urlWithApiThirdAppBindGroupObject>(object, type);
}

// urlWithApiThirdAppJoinGroupObject:type:
std::optional<lumo::URL> LumoApiMessageAndUrlConverter::urlWithApiThirdAppJoinGroupObject(
    const LumoApiThirdAppJoinGroupObject& object, std::int32_t type) noexcept {
  return lumo::convertedObject<lumo::converters::urlWithApiThirdAppJoinGroupObject>(object, type);
}
