#pragma once

#include "inspect/Lint.h"
#include "inspect/URL.h"

#include <string>
#include <string_view>
#include <vector>

namespace lumo::inspection {

struct TextStyle {
  bool isColoured = false;
  bool isFull = false;  ///< whether long values are shown whole
};

/// What a caller has to say of its own, between the findings and the warnings.
struct Section {
  std::string_view heading;
  std::vector<std::string> lines;
};

/// The findings for people.
std::string textOf(const Findings& findings, TextStyle style, const std::vector<Section>& more = {});

/// What lint found, a line each.
std::string textOf(const std::vector<LintFinding>& findings);

/// Where and why a text is no URL, in three lines.
std::string textOf(std::string_view text, const NoURL& reason);

}  // namespace lumo::inspection
