// A local file: its bytes are staged, its name stands in the URL as it is.

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "LumoApi/converters/Converters.h"
#include "LumoApi/internal/Keys.h"

namespace lumo::converters {

namespace {

Check checked(const LumoApiFileObject& object) {
  const auto& preview = object.previewImageData();
  if (isEmpty(object.data())) return missing("data", "param error: image data is nil");
  if (exceeds(*object.data(), limits::kData)) {
    return tooLarge("data", *object.data(), limits::kData, "param error: file data is too big");
  }
  if (preview && exceeds(*preview, limits::kPreviewImage)) {
    return tooLarge("previewImageData", *preview, limits::kPreviewImage,
                    "param error: preview image data is too big");
  }
  return std::nullopt;
}

}  // namespace

Result<URL> urlWithFileObject(const LumoApiFileObject& object, Conversion& conversion) {
  if (Check refusal = checked(object)) return *refusal;

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
