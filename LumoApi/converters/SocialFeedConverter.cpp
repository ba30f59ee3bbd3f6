// Posts for the messenger's social feed: pictures, or one video.

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "LumoApi/converters/Converters.h"
#include "LumoApi/internal/Keys.h"

namespace lumo::converters {

namespace {

Check setExtMap(LumoApiQueryDictionary& query, const std::optional<Value>& extMap) {
  return extMap ? setJSON(query, keys::kExtMap, *extMap, "extMap") : std::nullopt;
}

/// A post without staged bytes is found in the URL, where the messenger can do that.
void setLocationWithoutBytes(LumoApiQueryDictionary& query, const Conversion& conversion) {
  if (conversion.store->isLumoSupportUrlInsteadPastedboard) {
    query.set(keys::kObjectLocation, "url");
  }
}

void cutToLimit(LumoApiImageArrayForNimboObject& object) {
  const auto& pictures = object.imageDataArray();
  if (!pictures || !exceeds(pictures->size(), limits::kFeedPictures)) return;
  const auto first = pictures->begin();
  object.setImageDataArray(std::vector<Data>(first, first + limits::kFeedPictures.largest));
}

}  // namespace

Result<URL> urlWithImageArrayForNimboObject(LumoApiImageArrayForNimboObject& object, Conversion& conversion) {
  LumoApiQueryDictionary query = fixedEntriesWithPasteboard("nimbo");
  setCallbackName(query, conversion);
  setTitles(query, object, conversion);
  if (Check refusal = setExtMap(query, object.extMap())) return *refusal;
  cutToLimit(object);
  if (!isEmpty(object.imageDataArray())) {
    stage({.imageList = &object.imageDataArray()}, conversion);
  } else {
    setLocationWithoutBytes(query, conversion);
  }
  return route(destinations::kShareToFriend, query, conversion, object.shareDestType());
}

Result<URL> urlWithVideoForNimboObject(const LumoApiVideoForNimboObject& object, Conversion& conversion) {
  const auto& asset = object.assetURL();
  const auto& video = object.videoData();
  if (isEmpty(asset) && isEmpty(video)) return missing("videoData", kSilent);

  LumoApiQueryDictionary query = fixedEntries("nimbo");
  if (!isEmpty(asset)) {
    if (!isValidUTF8(*asset)) return refused(LumoApiRefusal::Code::NotUTF8, "assetURL", kSilent);
    query.set(keys::kVideoAssetURL, QueryValue::base64(Data::unowned(*asset)));
  } else {
    if (exceeds(*video, limits::kFeedVideo)) {
      return tooLarge("videoData", *video, limits::kFeedVideo, "param error: video data is too big");
    }
    query.set(keys::kObjectLocation, "pasteboard");
  }
  setCallbackName(query, conversion);
  if (Check refusal = setExtMap(query, object.extMap())) return *refusal;
  setTitles(query, object, conversion);
  if (!isEmpty(video)) {
    stage({.fileData = &video}, conversion);
  } else {
    setLocationWithoutBytes(query, conversion);
  }
  return route(destinations::kShareToFriend, query, conversion, object.shareDestType());
}

}  // namespace lumo::converters

// urlWithImageArrayForNimboObject:type:
std::optional<lumo::URL> LumoApiMessageAndUrlConverter::urlWithImageArrayForNimboObject(
    LumoApiImageArrayForNimboObject& object, std::int32_t type) noexcept {
  return lumo::convertedObject<lumo::converters::urlWithImageArrayForNimboObject>(object, type);
}

// urlWithVideoForNimboObject:type:
std::optional<lumo::URL> LumoApiMessageAndUrlConverter::urlWithVideoForNimboObject(
    const LumoApiVideoForNimboObject& object, std::int32_t type) noexcept {
  return lumo::convertedObject<lumo::converters::urlWithVideoForNimboObject>(object, type);
}
