#pragma once

#include "LumoApi/LumoApiDatastore.h"
#include "LumoApi/LumoApiRefusal.h"
#include "documents/RequestReader.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumo::documents {

/// What came of a message that was to be turned into its launch URL.
struct Encoded {
  std::optional<URL> url;  ///< null where the message was refused
  LumoApiRefusal refusal;  ///< why
  std::vector<std::string> log;
  LumoApiLargeDataPtr apiLargeData;       ///< the record that the store holds afterwards
  std::shared_ptr<LumoApiObject> object;  ///< as the conversion left it
};

/// What came of a URL that opened the app.
struct Decoded {
  std::optional<LumoApiMessage> message;  ///< null where the URL yields none
  LumoApiRefusal refusal;                 ///< why
  std::vector<std::string> log;
};

// Each conversion has the surroundings that its request describes; the process's own are neither read nor
// changed, so any number of threads may convert at once. With a pasteboard the large-data record lives there
// instead of in the request.

Encoded encode(EncodeRequest request, LumoApiPasteboard* pasteboard = nullptr);
Decoded decode(DecodeRequest request, LumoApiPasteboard* pasteboard = nullptr);

}  // namespace lumo::documents
