// Fields of a query in their transport encoding.

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "LumoApi/internal/Keys.h"
#include "LumoApi/internal/Skeleton.h"
#include "platform/text/Text.h"

#include <string>

namespace lumo {

void setBase64(LumoApiQueryDictionary& query, QueryKey key, Text text) {
  if (text && isValidUTF8(text->view())) query.set(std::move(key), QueryValue::base64(*std::move(text)));
}

namespace {

/// Runs a change that memory may not suffice for; the entries made so far then stay.
template <class Change>
void changed(const Change& change) noexcept {
  try {
    change();
  } catch (...) {  // memory is exhausted: the field is left out
  }
}

/// A copy, which the caller's dictionary keeps.
Text owned(std::optional<std::string_view> text) {
  if (!text) return std::nullopt;
  return Data::copy(*text);
}

}  // namespace
}  // namespace lumo

using Text = std::optional<std::string_view>;

// setTitle:description:appName:toQueryItem:
void LumoApiMessageAndUrlConverter::setTitle(Text title, Text description, Text appName,
                                             LumoApiQueryDictionary& queryItem) noexcept {
  lumo::changed([&] {
    lumo::StoreValues store;
    if (lumo::isEmpty(appName)) {
      store = lumo::processCollaborators().values();
      appName = store->appName;
    }
    lumo::setBase64(queryItem, lumo::keys::kTitle, lumo::owned(title));
    lumo::setBase64(queryItem, lumo::keys::kDescription, lumo::owned(description));
    lumo::setBase64(queryItem, lumo::keys::kThirdAppDisplayName, lumo::owned(appName));
  });
}

// setTitle:description:toQueryItem:
void LumoApiMessageAndUrlConverter::setTitle(Text title, Text description,
                                             LumoApiQueryDictionary& queryItem) noexcept {
  setTitle(title, description, std::nullopt, queryItem);
}

// setPreviewImageData:toQueryItem:
void LumoApiMessageAndUrlConverter::setPreviewImageData(const std::optional<lumo::Data>& previewImageData,
                                                        LumoApiQueryDictionary& queryItem) noexcept {
  if (!previewImageData) return;
  lumo::changed(
      [&] { queryItem.set(lumo::keys::kPreviewImageData, lumo::QueryValue::base64(*previewImageData)); });
}

// setString:forKey:toQueryItem:
void LumoApiMessageAndUrlConverter::setString(Text string, Text key,
                                              LumoApiQueryDictionary& queryItem) noexcept {
  if (!key) return;
  lumo::changed([&] { lumo::setBase64(queryItem, std::string(*key), lumo::owned(string)); });
}

// setURL:forKey:toQueryItem:
void LumoApiMessageAndUrlConverter::setURL(const std::optional<lumo::URL>& url, Text key,
                                           LumoApiQueryDictionary& queryItem) noexcept {
  if (url) setString(url->absoluteString(), key, queryItem);
}

// smartURLString:
std::optional<std::string> LumoApiMessageAndUrlConverter::smartURLString(
    const std::optional<lumo::URL>& url) noexcept try {
  if (!url) return std::nullopt;
  return std::string(url->absoluteString());
} catch (...) {  // memory is exhausted
  return std::nullopt;
}
