// An authorization check, which carries no content of its own.

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "LumoApi/converters/Converters.h"

namespace lumo::converters {

Result<URL> urlWithAuthObject(const LumoApiAuthObject& object, Conversion& conversion) {
  // The messenger expects the kind word of a profile video here.
  LumoApiQueryDictionary query = fixedEntriesWithPasteboard("video");
  setCallbackName(query, conversion);
  setTitles(query, object, conversion);
  stage({}, conversion);
  return route(destinations::kAuth, query, conversion, object.shareDestType());
}

}  // namespace lumo::converters

// urlWithAuthObject:type:
std::optional<lumo::URL> LumoApiMessageAndUrlConverter::urlWithAuthObject(const LumoApiAuthObject& object,
                                                                          std::int32_t type) noexcept {
  return lumo::convertedObject<lumo::converters::urlWithAuthObject>(object, type);
}
