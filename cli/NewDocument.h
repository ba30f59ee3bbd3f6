#pragma once

#include "cli/CommandLine.h"

#include <string>
#include <string_view>
#include <vector>

namespace lumo::cli {

/// The kinds of content that can be sent.
std::vector<std::string> contentKinds();

/// Writes a document of a kind, filled and ready to be encoded; gives the exit status.
int newDocument(const Choices& choices);

}  // namespace lumo::cli
