// Pictures and videos for the user's profile.

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "LumoApi/converters/Converters.h"
#include "platform/pictures/Image.h"

namespace lumo::converters {

namespace {

/// The step that the three conversions share once their object is checked: no tag name and no message
/// extension.
LumoApiQueryDictionary profileQuery(FixedWord kindWord, const LumoApiObject& object,
                                    const Conversion& conversion) {
  LumoApiQueryDictionary query = fixedEntriesWithPasteboard(kindWord);
  setCallbackName(query, conversion);
  setTitles(query, object, conversion);
  return query;
}

/// Re-encodes a picture that is too long to be sent, once: the quality is the ratio of the limit to the
/// length, less one hundredth. Bytes that are no picture leave the object without data.
void reencode(LumoApiImageForLumoAvatarObject& object) {
  const Data picture = *object.data();
  const double quality =
      static_cast<double>(limits::kData.largest) / static_cast<double>(picture.size()) - 0.01;
  object.setData(jpegRepresentation(picture, quality));
}

Check checked(LumoApiImageForLumoAvatarObject& object) {
  if (isEmpty(object.data())) return missing("data", "param error: image data is nil");
  if (exceeds(*object.data(), limits::kAvatarPicture)) {
    return tooLarge("data", *object.data(), limits::kAvatarPicture, "param error: image data is too big");
  }
  if (exceeds(*object.data(), limits::kData)) reencode(object);
  if (object.data() && exceeds(*object.data(), limits::kData)) {
    return tooLarge("data", *object.data(), limits::kData, "param error: image data is too big");
  }
  return std::nullopt;
}

Check checked(const LumoApiImageArrayForFaceCollectionObject& object) {
  const auto& pictures = object.imageDataArray();
  if (!pictures) return missing("imageDataArray", "param error: image data is nil");
  if (pictures->empty()) return missing("imageDataArray", "param error: image count <= 0");
  if (exceeds(pictures->size(), limits::kFacePictures)) {
    return tooLarge("imageDataArray", pictures->size(), limits::kFacePictures,
                    "param error: image count > 9");
  }
  std::uint64_t together = 0;
  for (const Data& picture : *pictures) {
    if (exceeds(picture, limits::kFacePicture)) {
      return tooLarge("imageDataArray", picture, limits::kFacePicture, "param error: image data is too big");
    }
    together += picture.size();
  }
  if (exceeds(together, limits::kFacePicturesTogether)) {
    return tooLarge("imageDataArray", together, limits::kFacePicturesTogether,
                    "param error: all image data is too big");
  }
  return std::nullopt;
}

}  // namespace

Result<URL> urlWithImageObjectForAvatar(LumoApiImageForLumoAvatarObject& object, Conversion& conversion) {
  if (Check refusal = checked(object)) return *refusal;

  LumoApiQueryDictionary query = profileQuery("img", object, conversion);
  stage({.previewImage = &object.previewImageData(), .fileData = &object.data()}, conversion);
  return route(destinations::kAvatarPicture, query, conversion, object.shareDestType());
}

Result<URL> urlWithVideoObjectForAvatar(const LumoApiVideoForLumoAvatarObject& object,
                                        Conversion& conversion) {
  if (isEmpty(object.data())) return missing("data", "param error: video data is nil");
  if (exceeds(*object.data(), limits::kData)) {
    return tooLarge("data", *object.data(), limits::kData, "param error: video data is too big than 5M.");
  }

  LumoApiQueryDictionary query = profileQuery("video", object, conversion);
  stage({.previewImage = &object.previewImageData(), .fileData = &object.data()}, conversion);
  return route(destinations::kAvatarVideo, query, conversion, object.shareDestType());
}

Result<URL> urlWithImageObjectForFaceCollection(const LumoApiImageArrayForFaceCollectionObject& object,
                                                Conversion& conversion) {
  if (Check refusal = checked(object)) return *refusal;

  LumoApiQueryDictionary query = profileQuery("img", object, conversion);
  stage({.imageList = &object.imageDataArray()}, conversion);
  return route(destinations::kFaceCollection, query, conversion, object.shareDestType());
}

}  // namespace lumo::converters

// urlWithImageObjectForAvatar:type:
std::optional<lumo::URL> LumoApiMessageAndUrlConverter::urlWithImageObjectForAvatar(
    LumoApiImageForLumoAvatarObject& object, std::int32_t type) noexcept {
  return lumo::convertedObject<lumo::converters::urlWithImageObjectForAvatar>(object, type);
}

// urlWithVideoObjectForAvatar:type:
std::optional<lumo::URL> LumoApiMessageAndUrlConverter::urlWithVideoObjectForAvatar(
    const LumoApiVideoForLumoAvatarObject& object, std::int32_t type) noexcept {
  return lumo::convertedObject<lumo::converters::urlWithVideoObjectForAvatar>(object, type);
}

// urlWithImageObjectForFaceCollection:type:
std::optional<lumo::URL> LumoApiMessageAndUrlConverter::urlWithImageObjectForFaceCollection(
    const LumoApiImageArrayForFaceCollectionObject& object, std::int32_t type) noexcept {
  return lumo::convertedObject<lumo::converters::urlWithImageObjectForFaceCollection>(object, type);
}
