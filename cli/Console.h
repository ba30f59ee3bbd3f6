#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lumo::cli {

/// Exit statuses of the tool.
enum Status : int {
  kDone = 0,           ///< a URL or a message came out
  kRefused = 1,        ///< the request was refused, or the URL yields no message
  kWrongUsage = 2,     ///< the command line was wrong
  kDocumentError = 3,  ///< a document is in error
  kFileError = 4,      ///< a file named on the command line, or the output, could not be read or written
};

/// Whether the output is coloured: "always", "never" or, where nothing was chosen, on a terminal unless the
/// user wants no colours anywhere.
bool isColoured(const std::optional<std::string>& when);

/// Writes "lumoapi: " and the text as one line to standard error.
void complain(std::string_view text);

}  // namespace lumo::cli
