// A preview image with one text or one picture; it travels as the archive of its dictionary form.

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "LumoApi/converters/Converters.h"
#include "platform/archive/KeyedArchiver.h"

namespace lumo::converters {

namespace {

Check checked(const LumoApiCommonContentObject& object) {
  const auto& texts = object.textArray();
  const auto& pictures = object.pictureDataArray();
  if (isEmpty(object.previewImageData()))
    return missing("previewImageData", "param error: image data is nil");
  if (isEmpty(texts) && isEmpty(pictures)) return missing("textArray", "param error: image data is nil");
  if (Check refusal = checkedPreview(object.previewImageData())) return refusal;
  if (object.title() && exceeds(*object.title(), limits::kTitle)) {
    return tooLarge("title", *object.title(), limits::kTitle, kSilent);
  }
  if (texts && exceeds(texts->size(), limits::kCommonTexts)) {
    return tooLarge("textArray", texts->size(), limits::kCommonTexts, kSilent);
  }
  if (pictures && exceeds(pictures->size(), limits::kCommonPictures)) {
    return tooLarge("pictureDataArray", pictures->size(), limits::kCommonPictures, kSilent);
  }
  if (!isEmpty(texts) && exceeds(texts->front(), limits::kText)) {
    return tooLarge("textArray", texts->front(), limits::kText, kSilent);
  }
  if (!isEmpty(pictures) && exceeds(pictures->front(), limits::kData)) {
    return tooLarge("pictureDataArray", pictures->front(), limits::kData, kSilent);
  }
  return std::nullopt;
}

}  // namespace

Result<URL> urlWithCommonContentObject(const LumoApiCommonContentObject& object, Conversion& conversion) {
  if (Check refusal = checked(object)) return *refusal;

  LumoApiQueryDictionary query = fixedEntriesWithPasteboard("common");
  setCallbackName(query, conversion);
  if (Check refusal = setTagNameAndMessageExt(query, object)) return *refusal;
  setTitles(query, object, conversion);
  const std::optional<DataChain> archive = archivedData(Value(object.toDictionary()));
  if (!archive) return refused(LumoApiRefusal::Code::NotSerialisable, "textArray", kSilent);
  const std::optional<Data> fileData = archive->joined();
  stage({.fileData = &fileData, .kivaData = kivaDataOf(conversion)}, conversion);
  return route(destinations::kShareToFriend, query, conversion, object.shareDestType());
}

}  // namespace lumo::converters

// urlWithCommonContentObject:type:kivaObj:
std::optional<lumo::URL> LumoApiMessageAndUrlConverter::urlWithCommonContentObject(
    const LumoApiCommonContentObject& object, std::int32_t type, const LumoApiKivaObject* kivaObj) noexcept {
  return lumo::convertedObject<lumo::converters::urlWithCommonContentObject>(object, type, kivaObj);
}
