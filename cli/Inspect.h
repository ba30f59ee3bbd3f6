#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lumo::cli {

extern const std::string_view kInspectHelp;

struct InspectOptions {
  /// The URL; "-" is the first line of standard input.
  std::string url = "-";
  /// The file that keeps the large-data record.
  std::optional<std::string> store;
  /// The folder that the bytes are written to.
  std::optional<std::string> folder;
  /// "auto": where the output is a terminal; "always" or "never".
  std::string colour = "auto";
  bool json = false;
  /// Nothing is cut.
  bool full = false;
};

/// Explains a launch URL; gives the exit status.
int inspect(const InspectOptions& options);

}  // namespace lumo::cli
