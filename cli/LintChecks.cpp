#include "cli/LintChecks.h"

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "cli/Decode.h"
#include "cli/Stage.h"
#include "documents/RequestReader.h"
#include "documents/Words.h"
#include "inspect/URL.h"

#include <utility>

namespace lumo::cli {

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

  void add(const inspection::Warnings& warnings) {
    using namespace inspection;
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
  inspection::NoURL reason{};
  if (const std::optional<URL> url = inspection::launchURLOf(text, reason)) {
    report.add(inspection::findingsOf(*url, {}, true).warnings);
  } else {
    report.add(inspection::codes::kNotAURL, "",
               "byte " + std::to_string(reason.offset + 1) + ": " + reason.reason);
  }
}

void checkOutgoing(const Place& document, Report& report) {
  EncodeRequest request = readEncodeRequest(document);
  Stage stage;
  stage.set(std::move(request.surroundings));
  LumoApiRefusal refusal;
  const std::optional<URL> url = LumoApiMessageAndUrlConverter::urlWithMessage(request.message, &refusal);
  if (refusal) report.add(refusal);
  if (url) report.add(inspection::findingsOf(*url, {true, stage.record()}, true).warnings);
}

void checkIncoming(const Place& document, Report& report) {
  DecodeRequest request = readDecodeRequest(document);
  Stage stage;
  stage.set(std::move(request.surroundings));
  if (request.url) report.add(inspection::findingsOf(*request.url, {true, stage.record()}, true).warnings);
  LumoApiRefusal refusal;
  messageOf(request, refusal);
  if (refusal) report.add(refusal);
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

}  // namespace lumo::cli
