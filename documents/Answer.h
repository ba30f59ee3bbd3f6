#pragma once

#include "documents/Document.h"

#include <functional>
#include <string>
#include <string_view>

namespace lumo::documents {

/// Converts one request: appends the text of its result to the output and says why nothing came out of it
/// ("refused: title: …"), with an empty text where something did. Throws a DocumentError where the request is
/// in error, and then has appended nothing.
using Convert = std::function<std::string(const Place& request, std::string& output)>;

/// What came of the text of a request.
struct Answer {
  enum class Status { Done, Refused, InError };
  Status status;
  std::string reason;  ///< why nothing came out of it, or what is wrong with it
};

/// Converts the request that a text holds; one that is in error appends nothing.
Answer answerTo(std::string_view text, const NamedBytes& named, const Convert& convert, std::string& output);
/// The same for the text of one line, whose errors name the column alone.
Answer answerToLine(std::string_view line, const NamedBytes& named, const Convert& convert,
                    std::string& output);
/// The same for a request that is no text any more.
Answer answerToRequest(const Value& request, const NamedBytes& named, const Convert& convert,
                       std::string& output);

/// Appends the result of a request in error: {"error": "message.type: …"}.
void appendErrorResult(std::string& output, const std::string& error);

}  // namespace lumo::documents
