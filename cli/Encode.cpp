#include "cli/Encode.h"

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "cli/Conversions.h"
#include "cli/Stage.h"
#include "documents/RequestReader.h"
#include "documents/ResultWriter.h"

#include <utility>

namespace lumo::cli {

using namespace documents;

namespace {

Value resultOf(const std::optional<URL>& url, const LumoApiObject* object, const Stage& stage) {
  Value::Dictionary result;
  result.reserve(4);
  result.set("url", url ? Value(url->absoluteString()) : Value());
  result.set("log", documentOf(stage.log()));
  result.set("apiLargeData", documentOf(stage.record()));
  result.set("object", documentOf(object));
  return result;
}

}  // namespace

int encode(const Choices& choices) {
  Stage stage(choices.store);
  const JSONStyle style{.escapeSolidus = false, .indent = choices.lines ? -1 : 2};
  const Convert convert = [&](const Place& document, std::string& output) {
    EncodeRequest request = readEncodeRequest(document);
    stage.set(std::move(request.surroundings));
    LumoApiRefusal refusal;
    const std::optional<URL> url = LumoApiMessageAndUrlConverter::urlWithMessage(request.message, &refusal);
    stage.checkStore();
    if (choices.urlAlone) {
      if (url) output += url->absoluteString();
    } else {
      const LumoApiObject* object = request.message ? request.message->object().get() : nullptr;
      appendResult(output, resultOf(url, object, stage), style);
    }
    return refusal ? "refused: " + refusal.description() : "";
  };
  if (!choices.lines) return convertDocument(choices.operand(), convert);
  return convertLines(choices.operand(), choices.urlAlone ? Reasons::OnStandardError : Reasons::InResults,
                      convert);
}

}  // namespace lumo::cli
