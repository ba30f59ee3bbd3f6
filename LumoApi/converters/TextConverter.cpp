// A plain text, which travels inside the URL.

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "LumoApi/converters/Converters.h"
#include "LumoApi/internal/Keys.h"
#include "platform/text/Text.h"

namespace lumo::converters {

Result<URL> urlWithTextObject(const LumoApiTextObject& object, Conversion& conversion) {
  const std::optional<std::string>& text = object.text();
  if (isEmpty(text)) return missing("text", "param error: text is nil");
  if (exceeds(*text, limits::kText)) {
    return tooLarge("text", *text, limits::kText, "param error: text is too long");
  }
  if (!isValidUTF8(*text)) return refused(LumoApiRefusal::Code::NotUTF8, "text", kSilent);

  LumoApiQueryDictionary query = fixedEntries("text");
  query.set(keys::kFileData, QueryValue::base64(Data::unowned(*text)));
  // The messenger takes the text from the URL in any case; a newer one is told so.
  if (conversion.store->isLumoSupportUrlForShareText) query.set(keys::kObjectLocation, "url");
  setCallbackName(query, conversion);
  if (Check refusal = setTagNameAndMessageExt(query, object)) return *refusal;
  setTitles(query, object, conversion);
  stage({.kivaData = kivaDataOf(conversion)}, conversion);
  return route(destinations::kShareToFriend, query, conversion, object.shareDestType());
}

}  // namespace lumo::converters

// urlWithTextObject:type:kivaObj:
std::optional<lumo::URL> LumoApiMessageAndUrlConverter::urlWithTextObject(
    const LumoApiTextObject& object, std::int32_t type, const LumoApiKivaObject* kivaObj) noexcept {
  return lumo::convertedObject<lumo::converters::urlWithTextObject>(object, type, kivaObj);
}
