// Requests about a messenger group that belongs to the app.

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "LumoApi/converters/Converters.h"
#include "LumoApi/internal/Keys.h"

namespace lumo::converters {

namespace {

/// The entries that other kinds always carry; here only where the messenger can open the app again.
void setSource(LumoApiQueryDictionary& query, const Conversion& conversion) {
  if (!conversion.store->scheme) return;
  query.set(keys::kSource, "external");
  query.set(keys::kCallbackType, "scheme");
  setCallbackName(query, conversion);
  query.set(keys::kSourceType, "app");
  query.set(keys::kVersion, "1");
}

/// Binding and joining differ in what they send of these two texts, and in where they lead.
Result<URL> urlWithGroupObject(const LumoApiObject& object, Text unionID, Text displayName,
                               const Destination& destination, Conversion& conversion) {
  LumoApiQueryDictionary query;
  setIdentifiers(query, conversion);
  if (unionID) query.set(keys::kUnionId, QueryValue::text(*std::move(unionID)));
  setBase64(query, keys::kDisplayName, std::move(displayName));
  setSource(query, conversion);
  setTitles(query, object, conversion);
  return route(destination, query, conversion, object.shareDestType());
}

}  // namespace

Result<URL> urlWithApiThirdAppBindGroupObject(const LumoApiThirdAppBindGroupObject& object,
                                              Conversion& conversion) {
  const auto& name = object.appDisplayName() ? object.appDisplayName() : conversion.store->appName;
  return urlWithGroupObject(object, unowned(object.unionID()), unowned(name), destinations::kBindGroup,
                            conversion);
}

Result<URL> urlWithApiThirdAppJoinGroupObject(const LumoApiThirdAppJoinGroupObject& object,
                                              Conversion& conversion) {
  Text unionID = isEmpty(object.unionID()) ? std::nullopt : unowned(object.unionID());
  return urlWithGroupObject(object, std::move(unionID), std::nullopt, destinations::kJoinGroup, conversion);
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
