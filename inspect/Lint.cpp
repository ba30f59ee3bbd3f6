#include "inspect/Lint.h"

#include "documents/Conversion.h"
#include "documents/RequestReader.h"
#include "documents/Words.h"
#include "inspect/URL.h"

#include <utility>

namespace lumo::inspection {

using namespace documents;

namespace {

/// The code of a refusal as programs read it: "too-long", "not-utf8".
std::string codeOf(const LumoApiRefusal& refusal) { return hyphenated(LumoApiRefusal::nameOf(refusal.code)); }

/// What is said of one text.
class Report {
 public:
  Report(const TextPlace& place, std::vector<LintFinding>& findings) : place_(place), findings_(findings) {}

  void add(std::string_view code, std::string_view key, std::string message) {
    findings_.push_back({place_, std::string(code), std::string(key), std::move(message)});
  }

  void add(const LumoApiRefusal& refusal) { add(codeOf(refusal), refusal.field, refusal.description()); }

  void add(const Warnings& warnings) {
    for (const Warning& warning : warnings.all()) {
      if (warning.code == codes::kRecordInStore) continue;  // where bytes belong is no fault
      add(warning.code, warning.key, (warning.key.empty() ? "" : warning.key + ": ") + warning.message);
    }
    if (warnings.leftOut() > 0) add("more", "", std::to_string(warnings.leftOut()) + " more of these");
  }

 private:
  const TextPlace& place_;
  std::vector<LintFinding>& findings_;
};

void checkURL(std::string_view text, Report& report) {
  NoURL reason{};
  if (const std::optional<URL> url = launchURLOf(text, reason)) {
    report.add(findingsOf(*url, {}, true).warnings);
  } else {
    report.add(codes::kNotAURL, "", "byte " + std::to_string(reason.offset + 1) + ": " + reason.reason);
  }
}

void checkOutgoing(const Place& document, Report& report) {
  const Encoded encoded = encode(readEncodeRequest(document));
  if (encoded.refusal) report.add(encoded.refusal);
  if (encoded.url) report.add(findingsOf(*encoded.url, {true, encoded.apiLargeData}, true).warnings);
}

void checkIncoming(const Place& document, Report& report) {
  DecodeRequest request = readDecodeRequest(document);
  if (request.url) {
    report.add(findingsOf(*request.url, {true, request.surroundings.apiLargeData}, true).warnings);
  }
  const documents::Decoded decoded = documents::decode(std::move(request));
  if (decoded.refusal) report.add(decoded.refusal);
}

}  // namespace

void check(std::string_view text, const TextPlace& place, const NamedBytes& named,
           std::vector<LintFinding>& findings) {
  Report report(place, findings);
  if (!trimmed(text).starts_with('{')) return checkURL(trimmed(text), report);
  try {
    const Value document = parseDocument(text);
    const bool isIncoming = !document.asDictionary()->find("message") && document.asDictionary()->find("url");
    const Place whole(document, named);
    isIncoming ? checkIncoming(whole, report) : checkOutgoing(whole, report);
  } catch (const DocumentError& error) {
    report.add("bad-document", "", error.what());
  }
}

}  // namespace lumo::inspection
