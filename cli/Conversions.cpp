#include "cli/Conversions.h"

#include "cli/Console.h"
#include "cli/Files.h"
#include "cli/Lines.h"

namespace lumo::cli {

using namespace documents;

namespace {

bool isBlank(std::string_view line) { return line.find_first_not_of(" \t\r") == std::string_view::npos; }

/// Says what `ask(output)` came to for the one request of that name.
template <class Ask>
int converted(const std::string& name, const Ask& ask) {
  Output output;
  const Answer answer = ask(output.buffer());
  if (!output.buffer().empty()) output.buffer() += '\n';
  output.flush();
  if (answer.status == Answer::Status::Refused) complain(answer.reason);
  if (answer.status == Answer::Status::InError) complain(name + ": " + answer.reason);
  return exitStatusOf(answer.status);
}

}  // namespace

int exitStatusOf(Answer::Status status) noexcept {
  switch (status) {
    case Answer::Status::Done:
      return kDone;
    case Answer::Status::Refused:
      return kRefused;
    case Answer::Status::InError:
      break;
  }
  return kDocumentError;
}

int convertDocument(const std::string& file, const Convert& convert) {
  return withFiles([&] {
    Input input(file);
    const std::string text = input.readAll();
    return converted(input.name(),
                     [&](std::string& output) { return answerTo(text, input.files(), convert, output); });
  });
}

int convertRequest(const Value& request, const std::string& name, const Convert& convert) {
  return withFiles([&] {
    const FilesBeside files;
    return converted(name,
                     [&](std::string& output) { return answerToRequest(request, files, convert, output); });
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
      const Answer answer = answerToLine(*line, input.files(), convert, output.buffer());
      const bool isInError = answer.status == Answer::Status::InError;
      if (isInError) status = kDocumentError;
      if (reasons == Reasons::OnStandardError) {
        if (!answer.reason.empty()) report(answer.reason);
      } else if (isInError) {
        appendErrorResult(output.buffer(), answer.reason);
      }
      output.buffer() += '\n';
      if (output.buffer().size() >= kFlushedFrom) output.flush();
    }
    output.flush();
    return status;
  });
}

}  // namespace lumo::cli
