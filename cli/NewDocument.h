#pragma once

#include "cli/CommandLine.h"

#include <string>
#include <string_view>
#include <vector>

namespace lumo::cli {

/// What a class of content is called in short: "text" for LumoApiTextObject.
std::string kindOf(std::string_view className);

/// The kinds of content that can be sent.
std::vector<std::string> contentKinds();

/// Writes a document of a kind, filled and ready to be encoded; gives the exit status.
int newDocument(const Choices& choices);

}  // namespace lumo::cli
