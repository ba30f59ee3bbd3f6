// Requests to open something inside the messenger: a group-pro, whose query comes ready-made and signed, or a
// mini-program.

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "LumoApi/converters/Converters.h"
#include "LumoApi/internal/Keys.h"

namespace lumo::converters {

namespace {

Result<URL> urlWithGroupProObject(const GroupProObject& object, std::string_view path,
                                  const Conversion& conversion) {
  if (!object.signString()) return missing("signString", kSilent);
  LumoApiQueryDictionary query;
  if (const auto& pairs = object.queryDictionary()) {
    query.reserve(pairs->size());
    for (const auto& [key, value] : *pairs) query.set(key, QueryValue::text(Data::unowned(value)));
  }
  return routeSigned(query, path, *object.signString(), conversion.collaborators);
}

}  // namespace

Result<URL> urlWithCreateGroupProObject(const LumoApiCreateLumoGroupProObject& object,
                                        Conversion& conversion) {
  return urlWithGroupProObject(object, "/create", conversion);
}

Result<URL> urlWithJoinGroupProObject(const LumoApiJoinLumoGroupProObject& object, Conversion& conversion) {
  return urlWithGroupProObject(object, "/join", conversion);
}

Result<URL> urlWithApiLaunchMiniProgramObject(const LumoApiLaunchMiniProgramObject& object,
                                              Conversion& conversion) {
  if (isEmpty(object.miniAppID())) return missing("miniAppID", "param error: miniAppID is nil");

  LumoApiQueryDictionary query;
  query.set(keys::kSourceType, "app");
  query.set(keys::kCallbackType, "scheme");
  query.set(keys::kMiniAppId, QueryValue::text(Data::unowned(*object.miniAppID())));
  setUnownedBase64(query, keys::kMiniPath, object.miniPath());
  query.set(keys::kMiniType, QueryValue::number(Value(object.miniprogramType())));
  query.set(keys::kVersion, "1");
  setIdentifiers(query, conversion);
  setCallbackName(query, conversion);
  setTitles(query, object, conversion);
  return route(destinations::kMiniProgram, query, conversion, object.shareDestType());
}

}  // namespace lumo::converters

// urlWithCreateGroupProObject:type:
std::optional<lumo::URL> LumoApiMessageAndUrlConverter::urlWithCreateGroupProObject(
    const LumoApiCreateLumoGroupProObject& object, std::int32_t type) noexcept {
  return lumo::convertedObject<lumo::converters::urlWithCreateGroupProObject>(object, type);
}

// urlWithJoinGroupProObject:type:
std::optional<lumo::URL> LumoApiMessageAndUrlConverter::urlWithJoinGroupProObject(
    const LumoApiJoinLumoGroupProObject& object, std::int32_t type) noexcept {
  return lumo::convertedObject<lumo::converters::urlWithJoinGroupProObject>(object, type);
}

// urlWithApiLaunchMiniProgramObject:type:
std::optional<lumo::URL> LumoApiMessageAndUrlConverter::urlWithApiLaunchMiniProgramObject(
    const LumoApiLaunchMiniProgramObject& object, std::int32_t type) noexcept {
  return lumo::convertedObject<lumo::converters::urlWithApiLaunchMiniProgramObject>(object, type);
}
