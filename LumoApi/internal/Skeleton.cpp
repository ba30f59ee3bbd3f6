#include "LumoApi/internal/Skeleton.h"

#include "LumoApi/internal/Keys.h"
#include "platform/Text.h"

namespace lumo {

LumoApiQueryDictionary fixedEntries(FixedWord kindWord) {
  LumoApiQueryDictionary query;
  query.reserve(20);
  query.set(keys::kSourceType, QueryValue::fixed("app"));
  query.set(keys::kVersion, QueryValue::fixed("1"));
  query.set(keys::kFileType, QueryValue::fixed(kindWord));
  query.set(keys::kCallbackType, QueryValue::fixed("scheme"));
  return query;
}

LumoApiQueryDictionary fixedEntriesWithPasteboard(FixedWord kindWord) {
  LumoApiQueryDictionary query = fixedEntries(kindWord);
  query.set(keys::kObjectLocation, QueryValue::fixed("pasteboard"));
  return query;
}

void setCallbackName(LumoApiQueryDictionary& query, const Conversion& conversion) {
  if (const auto& scheme = conversion.store->scheme)
    query.set(keys::kCallbackName, textOf(conversion.store, *scheme));
}

Check setTagNameAndMessageExt(LumoApiQueryDictionary& query, const TaggedObject& object) {
  if (const auto& tagName = object.tagName()) {
    if (exceeds(*tagName, limits::kTagName)) {
      return tooLarge("tagName", *tagName, limits::kTagName, "param error: tag name data is too big");
    }
    setBase64(query, keys::kTagName, unowned(tagName));
  }
  if (const auto& messageExt = object.messageExt()) {
    if (exceeds(*messageExt, limits::kMessageExt)) {
      return tooLarge("messageExt", *messageExt, limits::kMessageExt,
                      "param error: message ext data is too big");
    }
    setBase64(query, keys::kMessageExt, unowned(messageExt));
  }
  return std::nullopt;
}

void setTitles(LumoApiQueryDictionary& query, const LumoApiObject& object, const Conversion& conversion) {
  setTitles(query, unowned(object.title()), unowned(object.description()),
            unowned(conversion.store->appName));
}

const std::optional<std::string>* kivaDataOf(const Conversion& conversion) noexcept {
  return conversion.kiva ? &conversion.kiva->kivaData() : nullptr;
}

}  // namespace lumo
