#pragma once

#include "cli/CommandLine.h"

namespace lumo::cli {

/// Turns messages into launch URLs; gives the exit status.
int encode(const Choices& choices);

}  // namespace lumo::cli
