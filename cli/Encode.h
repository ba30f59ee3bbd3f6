#pragma once

#include <string>

namespace lumo::cli {

struct EncodeOptions {
  /// The request; "-" is standard input.
  std::string file = "-";
  /// Only the URL's text instead of the whole result.
  bool urlAlone = false;
  /// One request a line.
  bool lines = false;
};

/// Turns messages into launch URLs; gives the exit status.
int encode(const EncodeOptions& options);

}  // namespace lumo::cli
