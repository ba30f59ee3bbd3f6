#pragma once

#include "cli/CommandLine.h"

namespace lumo::cli {

/// Shows a launch URL as a QR code, or writes it as a picture; gives the exit status.
int qr(const Choices& choices);

}  // namespace lumo::cli
