#pragma once

#include "documents/Answer.h"

#include <string>

namespace lumo::cli {

/// The exit status of a command that came to this.
int exitStatusOf(documents::Answer::Status status) noexcept;

/// Where it is said why a line has no result.
enum class Reasons {
  InResults,       ///< the log of a refusal, and {"error": "..."} in place of the result of a line in error
  OnStandardError  ///< standard error, with an empty line in place of the result
};

/// Converts the one request in the file ("-": standard input), with the result on standard output; gives the
/// exit status.
int convertDocument(const std::string& file, const documents::Convert& convert);

/// The same for a request that the command line gave; `name` is what it is called in messages.
int convertRequest(const Value& request, const std::string& name, const documents::Convert& convert);

/// The same for a request on each line, with one result a line.
int convertLines(const std::string& file, Reasons reasons, const documents::Convert& convert);

}  // namespace lumo::cli
