#pragma once

#include "LumoApi/LumoApiMessage.h"
#include "LumoApi/LumoApiURLDecoder.h"
#include "LumoApi/internal/Collaborators.h"
#include "LumoApi/internal/Refusal.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

// The readers of the incoming side, under the names of the public operations that run them.

namespace lumo::incoming {

Result<LumoApiMessage> messageWithRequestFromLumo(const LumoApiURLDecoder& decoder,
                                                  const Collaborators& collaborators);
Result<LumoApiMessage> messageWithResponseFromLumo(const LumoApiURLDecoder& decoder);
std::shared_ptr<LumoApiObject> getObjectByUrl(const LumoApiURLDecoder& decoder,
                                              const Collaborators& collaborators);

/// The text whose base64 stands under the key, null where there is none.
std::optional<std::string> decodedText(const LumoApiURLDecoder& decoder, std::string_view key);

}  // namespace lumo::incoming
