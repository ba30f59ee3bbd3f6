#pragma once

#include "inspect/URL.h"

#include <optional>
#include <string>
#include <vector>

namespace lumo::cli {

/// Writes the bytes of the record, and those that stand in the URL, as files into a folder, which is made
/// where there is none. Gives their names, the folder in front. Nothing is written outside the folder or over
/// another file; throws a FileError.
std::vector<std::string> save(const inspection::Findings& findings, const std::string& folder);

}  // namespace lumo::cli
