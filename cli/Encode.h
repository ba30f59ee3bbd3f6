#pragma once

#include <optional>
#include <string>

namespace lumo::cli {

struct EncodeOptions {
  /// The request; "-" is standard input.
  std::string file = "-";
  /// The file that keeps the large-data record; null: memory. Not for many requests.
  std::optional<std::string> store;
  /// Only the URL's text instead of the whole result.
  bool urlAlone = false;
  /// One request a line.
  bool lines = false;
};

/// Turns messages into launch URLs; gives the exit status.
int encode(const EncodeOptions& options);

}  // namespace lumo::cli
