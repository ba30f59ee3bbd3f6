#pragma once

#include "cli/CommandLine.h"

namespace lumo::cli {

/// Lists what would be refused, and what looks wrong, in documents and URLs; gives the exit status.
int lint(const Choices& choices);

}  // namespace lumo::cli
