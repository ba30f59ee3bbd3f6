#include "cli/Conversions.h"

#include "cli/Console.h"
#include "cli/Files.h"
#include "cli/Lines.h"
#include "platform/JSON.h"

namespace lumo::cli {

namespace {

/// Runs a command's work; what it cannot read or write ends it.
template <class Work>
int withFiles(const Work& work) {
  try {
    return work();
  } catch (const FileError& error) {
    if (!error.isBrokenPipe()) complain(error.what());
    return kFileError;
  }
}

/// The parsed document; throws a DocumentError with the position in front.
Value parsed(const std::string& text) {
  JSONError error;
  std::optional<Value> document = parseJSON(text, &error);
  if (document) return *std::move(document);
  const TextPosition position = positionIn(text, error.offset);
  throw DocumentError("line " + std::to_string(position.line) + ", column " +
                      std::to_string(position.column) + ": " + error.message);
}

Value parsedLine(std::string_view line) {
  JSONError error;
  std::optional<Value> document = parseJSON(line, &error);
  if (document) return *std::move(document);
  throw DocumentError("column " + std::to_string(positionIn(line, error.offset).column) + ": " +
                      error.message);
}

bool isBlank(std::string_view line) { return line.find_first_not_of(" \t\r") == std::string_view::npos; }

void appendErrorResult(std::string& output, const std::string& message) {
  output += *writeJSON(Value::Dictionary{{"error", message}}, {.escapeSolidus = false});
}

}  // namespace

int convertDocument(const std::string& file, const Convert& convert) {
  return withFiles([&] {
    const Input input(file);
    const std::string text = input.readAll();
    Output output;
    LumoApiRefusal refusal;
    try {
      const Value document = parsed(text);
      refusal = convert(Place(document, input.folder()), output.buffer());
    } catch (const DocumentError& error) {
      complain(input.name() + ": " + error.what());
      return kDocumentError;
    }
    if (!output.buffer().empty()) output.buffer() += '\n';
    output.flush();
    if (!refusal) return kDone;
    complain("refused: " + refusal.description());
    return kRefused;
  });
}

int convertLines(const std::string& file, Reasons reasons, const Convert& convert) {
  return withFiles([&] {
    constexpr std::size_t kFlushedFrom = std::size_t{1} << 20;
    const Input input(file);
    LineReader lines(input);
    Output output;
    int status = kDone;
    std::size_t number = 0;
    const auto report = [&](const std::string& reason) {
      complain(input.name() + ":" + std::to_string(number) + ": " + reason);
    };
    while (const std::optional<std::string_view> line = lines.next(output)) {
      ++number;
      if (isBlank(*line)) continue;
      try {
        const Value document = parsedLine(*line);
        const LumoApiRefusal refusal = convert(Place(document, input.folder()), output.buffer());
        if (refusal && reasons == Reasons::OnStandardError) report("refused: " + refusal.description());
      } catch (const DocumentError& error) {
        status = kDocumentError;
        if (reasons == Reasons::OnStandardError) {
          report(error.what());
        } else {
          appendErrorResult(output.buffer(), error.what());
        }
      }
      output.buffer() += '\n';
      if (output.buffer().size() >= kFlushedFrom) output.flush();
    }
    output.flush();
    return status;
  });
}

}  // namespace lumo::cli
