#pragma once

#include "LumoApi/URL.h"

#include <optional>
#include <string>

namespace lumo::cli {

/// A launch URL, or why there is none.
struct LaunchURL {
  std::optional<URL> url{};
  int status = 0;       ///< of the command, where there is none
  std::string fault{};  ///< in words
};

/// The launch URL that an operand gives: the URL itself; a file, or standard input for "-", whose first line
/// is the URL; the result of lumoapi encode; or a request, whose URL is then made. Throws a FileError.
LaunchURL readLaunchURL(const std::string& operand);

}  // namespace lumo::cli
