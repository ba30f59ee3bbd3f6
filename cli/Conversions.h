#pragma once

#include "LumoApi/LumoApiRefusal.h"
#include "cli/Document.h"

#include <functional>
#include <string>

namespace lumo::cli {

/// Converts one request: appends the text of its result to the output and gives the reason where it was
/// refused. Throws a DocumentError where the request is in error, and then has appended nothing.
using Convert = std::function<LumoApiRefusal(const Place& request, std::string& output)>;

/// Where the error of a line goes.
enum class LineErrors {
  AsResults,       ///< {"error": "..."} in place of the result
  OnStandardError  ///< to standard error, an empty line in place of the result
};

/// Converts the one request in the file ("-": standard input), with the result on standard output; gives the
/// exit status.
int convertDocument(const std::string& file, const Convert& convert);

/// The same for a request on each line, with one result a line.
int convertLines(const std::string& file, LineErrors errors, const Convert& convert);

}  // namespace lumo::cli
