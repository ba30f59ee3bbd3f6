#pragma once

#include "cli/CommandLine.h"

namespace lumo::cli {

/// lumoapi decode: gives the exit status.
int decode(const Choices& choices);

}  // namespace lumo::cli
