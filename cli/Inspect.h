#pragma once

#include "cli/CommandLine.h"

namespace lumo::cli {

/// Explains a launch URL; gives the exit status.
int inspect(const Choices& choices);

}  // namespace lumo::cli
