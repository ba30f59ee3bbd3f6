#pragma once

#include <string>
#include <vector>

namespace lumo::cli {

/// Runs the command that the arguments (without the program's own name) ask for; gives the exit status.
int runTool(const std::vector<std::string>& arguments);

}  // namespace lumo::cli
