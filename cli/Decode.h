#pragma once

#include "cli/CommandLine.h"

namespace lumo::cli {

/// Turns URLs that opened the app into their messages; gives the exit status.
int decode(const Choices& choices);

}  // namespace lumo::cli
