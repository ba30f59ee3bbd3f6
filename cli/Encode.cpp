#include "cli/Encode.h"

#include "cli/Conversions.h"
#include "cli/StoreFile.h"
#include "documents/Conversion.h"
#include "documents/ResultWriter.h"

#include <utility>

namespace lumo::cli {

using namespace documents;

int encode(const Choices& choices) {
  StoreFile store(choices.store);
  const JSONStyle style{.escapeSolidus = false, .indent = choices.lines ? -1 : 2};
  const Convert convert = [&](const Place& document, std::string& output) {
    EncodeRequest request = readEncodeRequest(document);
    store.prepare(request.surroundings.apiLargeData);
    const Encoded encoded = documents::encode(std::move(request), store.pasteboard());
    store.check();
    if (!choices.urlAlone) {
      appendResult(output, documentOf(encoded), style);
    } else if (encoded.url) {
      output += encoded.url->absoluteString();
    }
    return encoded.url ? "" : "refused: " + encoded.refusal.description();
  };
  if (!choices.lines) return convertDocument(choices.operand(), convert);
  return convertLines(choices.operand(), choices.urlAlone ? Reasons::OnStandardError : Reasons::InResults,
                      convert);
}

}  // namespace lumo::cli
