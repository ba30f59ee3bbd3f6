#include "cli/Decode.h"

#include "cli/Conversions.h"
#include "cli/Files.h"
#include "cli/StoreFile.h"
#include "documents/Conversion.h"
#include "documents/ResultWriter.h"

#include <utility>

namespace lumo::cli {

using namespace documents;

int decode(const Choices& choices) {
  StoreFile store(choices.store);
  const JSONStyle style{.escapeSolidus = false, .indent = choices.lines ? -1 : 2};
  const Convert convert = [&](const Place& document, std::string& output) {
    DecodeRequest request = readDecodeRequest(document);
    store.prepare(request.surroundings.apiLargeData);
    const Decoded decoded = documents::decode(std::move(request), store.pasteboard());
    store.check();
    appendResult(output, documentOf(decoded), style);
    return decoded.message ? "" : "no message: " + decoded.refusal.description();
  };
  if (choices.lines) return convertLines(choices.operand(), Reasons::InResults, convert);
  if (!isURL(choices.operand())) return convertDocument(choices.operand(), convert);
  return convertRequest(Value::Dictionary{{"url", choices.operand()}}, choices.operand(), convert);
}

}  // namespace lumo::cli
