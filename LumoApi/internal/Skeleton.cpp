#include "LumoApi/internal/Skeleton.h"

#include "LumoApi/internal/Keys.h"
#include "platform/text/Text.h"
#include "platform/values/JSON.h"

namespace lumo {

Check checkedPreview(const std::optional<Data>& preview) {
  if (!preview || !exceeds(*preview, limits::kPreviewImage)) return std::nullopt;
  return tooLarge("previewImageData", *preview, limits::kPreviewImage,
                  "param error: preview image data is too big");
}

Check checkedData(const std::optional<Data>& data, const std::optional<Data>& preview, std::string_view isNil,
                  std::string_view isTooBig) {
  if (isEmpty(data)) return missing("data", isNil);
  if (exceeds(*data, limits::kData)) return tooLarge("data", *data, limits::kData, isTooBig);
  return checkedPreview(preview);
}

LumoApiQueryDictionary fixedEntries(FixedWord kindWord) {
  LumoApiQueryDictionary query;
  query.reserve(14);
  query.set(keys::kSourceType, "app");
  query.set(keys::kVersion, "1");
  query.set(keys::kFileType, kindWord);
  query.set(keys::kCallbackType, "scheme");
  return query;
}

LumoApiQueryDictionary fixedEntriesWithPasteboard(FixedWord kindWord) {
  LumoApiQueryDictionary query = fixedEntries(kindWord);
  query.set(keys::kObjectLocation, "pasteboard");
  return query;
}

void setStoreText(LumoApiQueryDictionary& query, FixedWord key, const StoreValues& store,
                  const std::optional<std::string>& text) {
  if (!text) return;
  const auto* characters = reinterpret_cast<const std::uint8_t*>(text->data());
  query.set(key, QueryValue::text(Data(store, characters, text->size())));
}

void setIdentifiers(LumoApiQueryDictionary& query, const Conversion& conversion) {
  setStoreText(query, keys::kOpenId, conversion.store, conversion.store->openId);
  setStoreText(query, keys::kAppId, conversion.store, conversion.store->appId);
}

void setCallbackName(LumoApiQueryDictionary& query, const Conversion& conversion) {
  setStoreText(query, keys::kCallbackName, conversion.store, conversion.store->scheme);
}

Check setTagNameAndMessageExt(LumoApiQueryDictionary& query, const TaggedObject& object) {
  if (const auto& tagName = object.tagName()) {
    if (exceeds(*tagName, limits::kTagName)) {
      return tooLarge("tagName", *tagName, limits::kTagName, "param error: tag name data is too big");
    }
    setUnownedBase64(query, keys::kTagName, tagName);
  }
  if (const auto& messageExt = object.messageExt()) {
    if (exceeds(*messageExt, limits::kMessageExt)) {
      return tooLarge("messageExt", *messageExt, limits::kMessageExt,
                      "param error: message ext data is too big");
    }
    setUnownedBase64(query, keys::kMessageExt, messageExt);
  }
  return std::nullopt;
}

void setTitles(LumoApiQueryDictionary& query, const LumoApiObject& object, const Conversion& conversion) {
  setUnownedBase64(query, keys::kTitle, object.title());
  setUnownedBase64(query, keys::kDescription, object.description());
  setUnownedBase64(query, keys::kThirdAppDisplayName, conversion.store->appName);
}

void setUnownedBase64(LumoApiQueryDictionary& query, FixedWord key, const std::optional<std::string>& text) {
  if (text && isValidUTF8(*text)) query.set(key, QueryValue::base64(Data::unowned(*text)));
}

void setURL(LumoApiQueryDictionary& query, QueryKey key, const std::optional<URL>& url) {
  if (url) setBase64(query, std::move(key), Data::unowned(url->absoluteString()));
}

Check setJSON(LumoApiQueryDictionary& query, FixedWord key, const Value& value, std::string_view field) {
  const bool isDocument = value.asDictionary() || value.asArray();
  std::optional<std::string> json = isDocument ? writeJSON(value) : std::nullopt;
  if (!json) return refused(LumoApiRefusal::Code::NotSerialisable, field, kSilent);
  query.set(key, QueryValue::base64(*std::move(json)));
  return std::nullopt;
}

const std::optional<std::string>* kivaDataOf(const Conversion& conversion) noexcept {
  return conversion.kiva ? &conversion.kiva->kivaData() : nullptr;
}

}  // namespace lumo
