#pragma once

#include <optional>
#include <string>

namespace lumo::cli {

struct DecodeOptions {
  /// The request, or the URL itself; "-" is standard input.
  std::string file = "-";
  /// The file that keeps the large-data record; null: memory. Not for many requests.
  std::optional<std::string> store;
  /// One request a line.
  bool lines = false;
};

/// Turns URLs that opened the app into their messages; gives the exit status.
int decode(const DecodeOptions& options);

}  // namespace lumo::cli
