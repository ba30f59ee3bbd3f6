#pragma once

#include "LumoApi/LumoApiRefusal.h"
#include "cli/Document.h"

#include <functional>
#include <string>

namespace lumo::cli {

/// Converts one request: appends the text of its result to the output and gives the reason where it was
/// refused. Throws a DocumentError where the request is in error, and then has appended nothing.
using Convert = std::function<LumoApiRefusal(const Place& request, std::string& output)>;

/// Where it is said why a line has no result.
enum class Reasons {
  InResults,       ///< the log of a refusal, and {"error": "..."} in place of the result of a line in error
  OnStandardError  ///< standard error, with an empty line in place of the result
};

/// Converts the one request in the file ("-": standard input), with the result on standard output; gives the
/// exit status.
int convertDocument(const std::string& file, const Convert& convert);

/// The same for a request on each line, with one result a line.
int convertLines(const std::string& file, Reasons reasons, const Convert& convert);

}  // namespace lumo::cli
