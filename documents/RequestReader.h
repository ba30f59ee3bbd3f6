#pragma once

#include "LumoApi/LumoApiMessage.h"
#include "LumoApi/URL.h"
#include "documents/FieldReader.h"
#include "documents/Surroundings.h"

#include <memory>
#include <optional>

namespace lumo::documents {

void read(const Place& place, std::shared_ptr<LumoApiObject>& object);
void read(const Place& place, std::shared_ptr<LumoApiKivaObject>& card);
void read(const Place& place, LumoApiMessage& message);
void read(const Place& place, LumoApiLargeDataPtr& record);
void read(const Place& place, Surroundings::WebView& webView);

/// Takes the members of a request that describe what surrounds its conversion.
void takeSurroundings(Members& request, Surroundings& surroundings);

/// A message that is to be turned into its launch URL.
struct EncodeRequest {
  std::optional<LumoApiMessage> message;
  Surroundings surroundings;
};

/// The operation that an app hands such a URL to.
enum class Entry { MessageWithUrl, MessageWithUrlNoClipboard, MessageWithUrlUsedClipboard };
void read(const Place& place, Entry& entry);

/// A URL that opened the app and is to be turned into its message.
struct DecodeRequest {
  std::optional<URL> url;
  Entry entry = Entry::MessageWithUrl;
  Surroundings surroundings;
};

// Both throw a DocumentError where the document is no such request.
EncodeRequest readEncodeRequest(const Place& document);
DecodeRequest readDecodeRequest(const Place& document);

}  // namespace lumo::documents
