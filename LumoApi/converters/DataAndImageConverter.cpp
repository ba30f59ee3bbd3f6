// Data and pictures given as bytes, which are staged, and pictures given by their URL, which are not.

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "LumoApi/converters/Converters.h"
#include "LumoApi/internal/Keys.h"

namespace lumo::converters {

namespace {

/// The words in which data and image objects differ; everything else about them is alike.
struct Words {
  FixedWord kind;
  std::string_view isNil;
  std::string_view isTooBig;
};
constexpr Words kData{"file", "param error: data is nil", "param error: data is too big"};
constexpr Words kImage{"img", "param error: image data is nil", "param error: image data is too big"};

Result<URL> urlWithDataObject(const DataObject& object, const Words& words, Conversion& conversion) {
  if (Check refusal = checkedData(object.data(), object.previewImageData(), words.isNil, words.isTooBig))
    return *refusal;

  LumoApiQueryDictionary query = fixedEntriesWithPasteboard(words.kind);
  setCallbackName(query, conversion);
  if (Check refusal = setTagNameAndMessageExt(query, object)) return *refusal;
  setTitles(query, object, conversion);
  stage({&object.previewImageData(), &object.data(), &object.imageDataArray(), kivaDataOf(conversion)},
        conversion);
  return route(destinations::kShareToFriend, query, conversion, object.shareDestType());
}

}  // namespace

Result<URL> urlWithExtendObject(const LumoApiExtendObject& object, Conversion& conversion) {
  return urlWithDataObject(object, kData, conversion);
}

Result<URL> urlWithImageObject(const LumoApiImageObject& object, Conversion& conversion) {
  return urlWithDataObject(object, kImage, conversion);
}

Result<URL> urlWithWebImageObject(const LumoApiWebImageObject& object, Conversion& conversion) {
  const auto& picture = object.previewImageURL();
  if (!picture || picture->absoluteString().empty()) {
    return missing("previewImageURL", "param error: preview image url is nil");
  }

  LumoApiQueryDictionary query = fixedEntriesWithPasteboard("img");
  setCallbackName(query, conversion);
  if (Check refusal = setTagNameAndMessageExt(query, object)) return *refusal;
  setURL(query, keys::kPreviewImageURL, picture);
  setTitles(query, object, conversion);
  // Nothing is staged, although the object is said to be on the pasteboard: the messenger fetches the URL.
  return route(destinations::kShareToFriend, query, conversion, object.shareDestType());
}

}  // namespace lumo::converters

// urlWithExtendObject:type:kivaObj:
std::optional<lumo::URL> LumoApiMessageAndUrlConverter::urlWithExtendObject(
    const LumoApiExtendObject& object, std::int32_t type, const LumoApiKivaObject* kivaObj) noexcept {
  return lumo::convertedObject<lumo::converters::urlWithExtendObject>(object, type, kivaObj);
}

// urlWithImageObject:type:kivaObj:
std::optional<lumo::URL> LumoApiMessageAndUrlConverter::urlWithImageObject(
    const LumoApiImageObject& object, std::int32_t type, const LumoApiKivaObject* kivaObj) noexcept {
  return lumo::convertedObject<lumo::converters::urlWithImageObject>(object, type, kivaObj);
}

// urlWithWebImageObject:type:
std::optional<lumo::URL> LumoApiMessageAndUrlConverter::urlWithWebImageObject(
    const LumoApiWebImageObject& object, std::int32_t type) noexcept {
  return lumo::convertedObject<lumo::converters::urlWithWebImageObject>(object, type);
}
