// Responses of the messenger to earlier requests.

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "LumoApi/internal/Incoming.h"
#include "LumoApi/internal/Keys.h"

namespace lumo::incoming {

Result<LumoApiMessage> messageWithResponseFromLumo(const LumoApiURLDecoder& decoder) {
  const RawQuery& query = decoder.queryItem();
  auto result = std::make_shared<LumoApiResultObject>();
  // The error value is kept as the messenger wrote it, neither decoded nor made a number.
  if (const auto error = query.find(keys::kError)) result->setError(std::string(*error));
  result->setErrorDescription(decodedText(decoder, keys::kErrorDescription));
  result->setExtendInfo(decodedText(decoder, keys::kErrorExtendInfo));
  if (!query.empty()) result->setOtherInfo(query.dictionary());
  return LumoApiMessage::messageWithObject(std::move(result), 6);
}

}  // namespace lumo::incoming

// messageWithResponseFromLumo:
std::optional<LumoApiMessage> LumoApiMessageAndUrlConverter::messageWithResponseFromLumo(
    const LumoApiURLDecoder& decoder) noexcept {
  return lumo::concluded(
      lumo::guarded([&decoder] { return lumo::incoming::messageWithResponseFromLumo(decoder); }),
      lumo::processCollaborators());
}
