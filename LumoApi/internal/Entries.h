#pragma once

#include "LumoApi/LumoApiMessage.h"
#include "LumoApi/LumoApiRefusal.h"
#include "LumoApi/URL.h"
#include "LumoApi/internal/Collaborators.h"

#include <optional>

// The three entries of the converter with collaborators of the caller's choice. The public operations of the
// same names run them with the process's own.

namespace lumo::entries {

std::optional<URL> urlWithMessage(const std::optional<LumoApiMessage>& message, Collaborators& collaborators,
                                  LumoApiRefusal* refusal) noexcept;

std::optional<LumoApiMessage> messageWithUrl(const std::optional<URL>& url, Collaborators& collaborators,
                                             LumoApiRefusal* refusal) noexcept;

std::optional<LumoApiMessage> messageWithUrlUsedClipboard(const std::optional<URL>& url,
                                                          Collaborators& collaborators,
                                                          LumoApiRefusal* refusal) noexcept;

}  // namespace lumo::entries
