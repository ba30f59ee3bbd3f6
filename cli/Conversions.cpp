#include "cli/Conversions.h"

#include "cli/Console.h"
#include "cli/Files.h"
#include "cli/Lines.h"
#include "platform/values/JSON.h"

namespace lumo::cli {

using namespace documents;

namespace {

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

/// Runs `convertInto(output)` for the one request of that name.
template <class ConvertInto>
int converted(const std::string& name, const ConvertInto& convertInto) {
  Output output;
  std::string reason;
  try {
    reason = convertInto(output.buffer());
  } catch (const DocumentError& error) {
    complain(name + ": " + error.what());
    return kDocumentError;
  }
  if (!output.buffer().empty()) output.buffer() += '\n';
  output.flush();
  if (reason.empty()) return kDone;
  complain(reason);
  return kRefused;
}

}  // namespace

int convertDocument(const std::string& file, const Convert& convert) {
  return withFiles([&] {
    Input input(file);
    const std::string text = input.readAll();
    return converted(input.name(), [&](std::string& output) {
      const Value document = parseDocument(text);
      return convert(Place(document, input.files()), output);
    });
  });
}

int convertRequest(const Value& request, const std::string& name, const Convert& convert) {
  return withFiles([&] {
    const FilesBeside files;
    return converted(name, [&](std::string& output) { return convert(Place(request, files), output); });
  });
}

int convertLines(const std::string& file, Reasons reasons, const Convert& convert) {
  return withFiles([&] {
    constexpr std::size_t kFlushedFrom = std::size_t{1} << 20;
    Input input(file);
    LineReader lines(input);
    Output output;
    int status = kDone;
    std::size_t number = 0;
    const auto report = [&](const std::string& reason) {
      input.hideProgress();
      complain(input.name() + ":" + std::to_string(number) + ": " + reason);
    };
    while (const std::optional<std::string_view> line = lines.next(output)) {
      ++number;
      if (isBlank(*line)) continue;
      try {
        const Value document = parsedLine(*line);
        const std::string reason = convert(Place(document, input.files()), output.buffer());
        if (!reason.empty() && reasons == Reasons::OnStandardError) report(reason);
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
