#include "cli/Decode.h"

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "cli/Conversions.h"
#include "cli/RequestReader.h"
#include "cli/ResultWriter.h"
#include "cli/Surroundings.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace lumo::cli {

namespace {

std::optional<LumoApiMessage> messageOf(const DecodeRequest& request, LumoApiRefusal& refusal) {
  switch (request.entry) {
    case Entry::MessageWithUrlUsedClipboard:
      return LumoApiMessageAndUrlConverter::messageWithUrlUsedClipboard(request.url, &refusal);
    case Entry::MessageWithUrl:
    case Entry::MessageWithUrlNoClipboard:  // the same under another name, which gives no reason
      break;
  }
  return LumoApiMessageAndUrlConverter::messageWithUrl(request.url, &refusal);
}

Value resultOf(const std::optional<LumoApiMessage>& message, const Stage& stage) {
  Value::Dictionary result;
  result.reserve(2);
  result.set("message", documentOf(message));
  result.set("log", documentOf(stage.log()));
  return result;
}

/// A URL in place of a file name. A file wins: its name may hold a ":" too.
bool isURL(const std::string& argument) {
  std::error_code error;
  return argument.find(':') != std::string::npos && !std::filesystem::exists(argument, error);
}

}  // namespace

int decode(const DecodeOptions& options) {
  Stage stage(options.store);
  const JSONStyle style{.escapeSolidus = false, .indent = options.lines ? -1 : 2};
  const Convert convert = [&](const Place& document, std::string& output) {
    DecodeRequest request = readDecodeRequest(document);
    stage.set(std::move(request.surroundings));
    LumoApiRefusal refusal;
    const std::optional<LumoApiMessage> message = messageOf(request, refusal);
    stage.checkStore();
    appendResult(output, resultOf(message, stage), style);
    return refusal ? "no message: " + refusal.description() : "";
  };
  if (options.lines) return convertLines(options.file, Reasons::InResults, convert);
  if (!isURL(options.file)) return convertDocument(options.file, convert);
  return convertRequest(Value::Dictionary{{"url", options.file}}, options.file, convert);
}

}  // namespace lumo::cli
