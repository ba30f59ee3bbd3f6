#pragma once

#include "cli/CommandLine.h"

#include <span>

namespace lumo::cli {

/// Every command of the tool. The help, the manual and the completions are made of this table.
std::span<const Command> commands();

}  // namespace lumo::cli
