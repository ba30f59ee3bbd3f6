#pragma once

#include "LumoApi/Value.h"
#include "inspect/Lint.h"
#include "inspect/URL.h"

#include <string>
#include <string_view>

namespace lumo::inspection {

/// The findings for programs. Its "saved", the names of files that a caller made of the bytes, is null.
Value::Dictionary documentOf(const Findings& findings);

/// The same for a text that is no URL.
Value::Dictionary documentOf(std::string_view text, const NoURL& reason);

/// What lint found, a list.
Value documentOf(const std::vector<LintFinding>& findings);

/// Texts in a list, each as a document holds it where it is not UTF-8.
Value textArray(const std::vector<std::string>& texts);

/// A document's text, with nothing in it that a terminal would obey.
std::string jsonOf(const Value& document);

}  // namespace lumo::inspection
