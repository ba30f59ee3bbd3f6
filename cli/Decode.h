#pragma once

#include "LumoApi/LumoApiMessage.h"
#include "LumoApi/LumoApiRefusal.h"
#include "cli/CommandLine.h"
#include "documents/RequestReader.h"

#include <optional>

namespace lumo::cli {

/// Turns URLs that opened the app into their messages; gives the exit status.
int decode(const Choices& choices);

/// The message of the request's URL by the entry that it names, or null and the reason.
std::optional<LumoApiMessage> messageOf(const documents::DecodeRequest& request, LumoApiRefusal& refusal);

}  // namespace lumo::cli
