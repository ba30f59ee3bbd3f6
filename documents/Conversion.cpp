#include "documents/Conversion.h"

#include "LumoApi/internal/Entries.h"
#include "documents/OwnCollaborators.h"

#include <utility>

namespace lumo::documents {

Encoded encode(EncodeRequest request, LumoApiPasteboard* pasteboard) {
  OwnCollaborators own(std::move(request.surroundings), pasteboard);
  Encoded encoded;
  encoded.url = entries::urlWithMessage(request.message, own, &encoded.refusal);
  encoded.log = std::move(own.log());
  encoded.apiLargeData = own.record();
  if (request.message) encoded.object = request.message->object();
  return encoded;
}

Decoded decode(DecodeRequest request, LumoApiPasteboard* pasteboard) {
  OwnCollaborators own(std::move(request.surroundings), pasteboard);
  Decoded decoded;
  decoded.message = request.entry == Entry::MessageWithUrlUsedClipboard
                        ? entries::messageWithUrlUsedClipboard(request.url, own, &decoded.refusal)
                        : entries::messageWithUrl(request.url, own, &decoded.refusal);
  decoded.log = std::move(own.log());
  return decoded;
}

}  // namespace lumo::documents
