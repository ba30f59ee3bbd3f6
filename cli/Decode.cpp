#include "cli/Decode.h"

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "cli/Conversions.h"
#include "cli/Files.h"
#include "cli/Stage.h"
#include "documents/ResultWriter.h"

#include <utility>

namespace lumo::cli {

using namespace documents;

std::optional<LumoApiMessage> messageOf(const documents::DecodeRequest& request, LumoApiRefusal& refusal) {
  switch (request.entry) {
    case Entry::MessageWithUrlUsedClipboard:
      return LumoApiMessageAndUrlConverter::messageWithUrlUsedClipboard(request.url, &refusal);
    case Entry::MessageWithUrl:
    case Entry::MessageWithUrlNoClipboard:  // the same under another name, which gives no reason
      break;
  }
  return LumoApiMessageAndUrlConverter::messageWithUrl(request.url, &refusal);
}

namespace {

Value resultOf(const std::optional<LumoApiMessage>& message, const Stage& stage) {
  Value::Dictionary result;
  result.reserve(2);
  result.set("message", documentOf(message));
  result.set("log", documentOf(stage.log()));
  return result;
}

}  // namespace

int decode(const Choices& choices) {
  Stage stage(choices.store);
  const JSONStyle style{.escapeSolidus = false, .indent = choices.lines ? -1 : 2};
  const Convert convert = [&](const Place& document, std::string& output) {
    DecodeRequest request = readDecodeRequest(document);
    stage.set(std::move(request.surroundings));
    LumoApiRefusal refusal;
    const std::optional<LumoApiMessage> message = messageOf(request, refusal);
    stage.checkStore();
    appendResult(output, resultOf(message, stage), style);
    return refusal ? "no message: " + refusal.description() : "";
  };
  if (choices.lines) return convertLines(choices.operand(), Reasons::InResults, convert);
  if (!isURL(choices.operand())) return convertDocument(choices.operand(), convert);
  return convertRequest(Value::Dictionary{{"url", choices.operand()}}, choices.operand(), convert);
}

}  // namespace lumo::cli
