// A link of whatever kind: web page, audio, video, news.

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "LumoApi/converters/Converters.h"
#include "LumoApi/internal/Keys.h"

#include <algorithm>
#include <array>

namespace lumo::converters {

namespace {

FixedWord kindWord(std::uint64_t targetContentType) noexcept {
  constexpr std::array<FixedWord, 5> kWords{"url", "audio", "video", "news", "unknown"};
  return kWords[std::min<std::uint64_t>(targetContentType, kWords.size() - 1)];
}

/// The title is required unless the flags say, with exactly this value, that the link goes without.
constexpr std::uint64_t kNoTitleFlag = 8;

Check checked(const LumoApiURLObject& object) {
  if (Check refusal = checkedPreview(object.previewImageData())) return refusal;
  if (isEmpty(object.title()) && object.cflag() != kNoTitleFlag)
    return missing("title", "param error: title is nil");
  if (!object.url() || object.url()->absoluteString().empty())
    return missing("url", "param error: url is nil");
  if (exceeds(object.url()->absoluteString(), limits::kURL)) {
    return tooLarge("url", object.url()->absoluteString(), limits::kURL, "param error: url is too long");
  }
  return std::nullopt;
}

}  // namespace

Result<URL> urlWithURLObject(const LumoApiURLObject& object, Conversion& conversion) {
  if (Check refusal = checked(object)) return *refusal;

  LumoApiQueryDictionary query = fixedEntries(kindWord(object.targetContentType()));
  setURL(query, keys::kURL, object.url());
  const bool inURL = conversion.store->isLumoSupportUrlInsteadPastedboard;
  query.set(keys::kObjectLocation, inURL ? FixedWord("url") : FixedWord("pasteboard"));
  setCallbackName(query, conversion);
  if (Check refusal = setTagNameAndMessageExt(query, object)) return *refusal;
  setTitles(query, object, conversion);
  setURL(query, keys::kPreviewImageURL, object.previewImageURL());
  if (const auto* flash = dynamic_cast<const OffersFlashURL*>(&object)) {
    setURL(query, keys::kFlashURL, flash->flashURL());
  }
  stageByLocation({.previewImage = &object.previewImageData(), .kivaData = kivaDataOf(conversion)}, query,
                  conversion);
  return route(destinations::kShareToFriend, query, conversion, object.shareDestType());
}

}  // namespace lumo::converters

// urlWithURLObject:type:kivaObj:
std::optional<lumo::URL> LumoApiMessageAndUrlConverter::urlWithURLObject(
    const LumoApiURLObject& object, std::int32_t type, const LumoApiKivaObject* kivaObj) noexcept {
  return lumo::convertedObject<lumo::converters::urlWithURLObject>(object, type, kivaObj);
}
