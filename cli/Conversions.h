#pragma once

#include "documents/Document.h"

#include <functional>
#include <string>

namespace lumo::cli {

/// Converts one request: appends the text of its result to the output and says why nothing came out of it
/// ("refused: title: …"), with an empty text where something did. Throws a DocumentError where the request is
/// in error, and then has appended nothing.
using Convert = std::function<std::string(const documents::Place& request, std::string& output)>;

/// Where it is said why a line has no result.
enum class Reasons {
  InResults,       ///< the log of a refusal, and {"error": "..."} in place of the result of a line in error
  OnStandardError  ///< standard error, with an empty line in place of the result
};

/// Converts the one request in the file ("-": standard input), with the result on standard output; gives the
/// exit status.
int convertDocument(const std::string& file, const Convert& convert);

/// The same for a request that the command line gave; `name` is what it is called in messages.
int convertRequest(const Value& request, const std::string& name, const Convert& convert);

/// The same for a request on each line, with one result a line.
int convertLines(const std::string& file, Reasons reasons, const Convert& convert);

}  // namespace lumo::cli
