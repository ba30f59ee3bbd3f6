// A local file: its bytes are staged, its name stands in the URL as it is.

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "LumoApi/converters/Converters.h"
#include "LumoApi/internal/Keys.h"

namespace lumo::converters {

Result<URL> urlWithFileObject(const LumoApiFileObject& object, Conversion& conversion) {
  if (Check refusal = checkedData(object.data(), object.previewImageData(), "param error: image data is nil",
                                  "param error: file data is too big")) {
    return *refusal;
  }

  LumoApiQueryDictionary query = fixedEntriesWithPasteboard("localFile");
  setCallbackName(query, conversion);
  query.set(keys::kFileName, QueryValue::text(unowned(object.fileName()).value_or(Data())));
  setTitles(query, object, conversion);
  stage({&object.previewImageData(), &object.data(), &object.imageDataArray(), kivaDataOf(conversion)},
        conversion);
  return route(destinations::kShareToFriend, query, conversion, object.shareDestType());
}

}  // namespace lumo::converters

// urlWithFileObject:type:kivaObj:
std::optional<lumo::URL> LumoApiMessageAndUrlConverter::urlWithFileObject(
    const LumoApiFileObject& object, std::int32_t type, const LumoApiKivaObject* kivaObj) noexcept {
  return lumo::convertedObject<lumo::converters::urlWithFileObject>(object, type, kivaObj);
}
