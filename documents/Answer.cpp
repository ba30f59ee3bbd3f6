#include "documents/Answer.h"

#include "platform/values/JSON.h"

namespace lumo::documents {

namespace {

Value parsedLine(std::string_view line) {
  JSONError error;
  std::optional<Value> document = parseJSON(line, &error);
  if (document) return *std::move(document);
  throw DocumentError("column " + std::to_string(positionIn(line, error.offset).column) + ": " +
                      error.message);
}

/// Runs `convert()`, which gives why nothing came out.
template <class Convert>
Answer answered(const Convert& convert) {
  try {
    std::string reason = convert();
    return {reason.empty() ? Answer::Status::Done : Answer::Status::Refused, std::move(reason)};
  } catch (const DocumentError& error) {
    return {Answer::Status::InError, error.what()};
  }
}

}  // namespace

Answer answerTo(std::string_view text, const NamedBytes& named, const Convert& convert, std::string& output) {
  return answered([&] {
    const Value request = parseDocument(text);
    return convert(Place(request, named), output);
  });
}

Answer answerToLine(std::string_view line, const NamedBytes& named, const Convert& convert,
                    std::string& output) {
  return answered([&] {
    const Value request = parsedLine(line);
    return convert(Place(request, named), output);
  });
}

Answer answerToRequest(const Value& request, const NamedBytes& named, const Convert& convert,
                       std::string& output) {
  return answered([&] { return convert(Place(request, named), output); });
}

void appendErrorResult(std::string& output, const std::string& error) {
  output += *writeJSON(Value::Dictionary{{"error", error}}, {.escapeSolidus = false});
}

}  // namespace lumo::documents
