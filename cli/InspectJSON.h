#pragma once

#include "cli/InspectSave.h"
#include "cli/InspectURL.h"

#include <string>
#include <string_view>

namespace lumo::cli::inspection {

/// The findings for programs, a JSON document; `saved` are the files that were written, if that was asked
/// for.
std::string jsonOf(const Findings& findings, const Saved& saved);

/// The same for a text that is no URL.
std::string jsonOf(std::string_view text, const NoURL& reason);

}  // namespace lumo::cli::inspection
