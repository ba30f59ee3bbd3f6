#pragma once

#include <string>

// What is installed beside the tool and says the same as its help: all of it is made of the table of commands
// when the tool is built, so that none can fall behind.

namespace lumo::cli {

/// lumoapi(1).
std::string manualPage(const std::string& version, const std::string& date);

std::string bashCompletion();
std::string zshCompletion();
std::string fishCompletion();

}  // namespace lumo::cli
