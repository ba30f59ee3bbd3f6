#pragma once

#include "cli/InspectSave.h"
#include "cli/InspectURL.h"

#include <string>
#include <string_view>

namespace lumo::cli::inspection {

struct TextStyle {
  bool isColoured = false;
  bool isFull = false;  ///< whether long values are shown whole
};

/// The findings for people; `saved` are the files that were written, if that was asked for.
std::string textOf(const Findings& findings, const Saved& saved, TextStyle style);

/// Where and why a text is no URL, in three lines.
std::string textOf(std::string_view text, const NoURL& reason);

}  // namespace lumo::cli::inspection
