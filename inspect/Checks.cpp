#include "inspect/Checks.h"

#include "LumoApi/internal/Keys.h"
#include "documents/NearestName.h"

#include <algorithm>

namespace lumo::inspection {

using documents::suggestion;

namespace {

std::string quoted(std::string_view text) {
  constexpr std::size_t kLongest = 60;  // the URL holds it whole
  if (text.size() > kLongest) return "“" + std::string(text.substr(0, kLongest)) + "…”";
  return "“" + std::string(text) + "”";
}

void checkDestination(Findings& findings) {
  const URL& url = findings.url;
  if (!findings.destination) {
    const std::string_view text = url.absoluteString();
    const std::string_view destination = text.substr(0, text.find_first_of("?#"));
    findings.warnings.add(codes::kUnknownDestination, "", [&] {
      const std::vector<std::string> known = knownDestinations();
      const std::vector<std::string_view> names(known.begin(), known.end());
      return quoted(destination) + " leads nowhere" + suggestion(destination, names);
    });
  } else if (findings.destination->name == "unknown-request") {
    findings.warnings.add(codes::kUnknownRequest, "", [&] {
      const std::string_view kPaths[] = {"/pick", "/view"};
      return "the app reads no path " + quoted(url.path()) + suggestion(url.path(), kPaths);
    });
  }
}

void checkShape(Findings& findings, const Query& query) {
  Warnings& warnings = findings.warnings;
  if (findings.url.fragment()) {
    warnings.add(codes::kFragment, "", [&] {
      return "the query ends at a “#”; " + quoted(*findings.url.fragment()) + " after it is lost";
    });
  }
  if (!findings.destination) return;
  if (query.empty()) {
    warnings.add(codes::kNoQuery, "", [] { return "no pair “key=value”, so nobody makes anything of it"; });
  }
  if (query.is(keys::kNeedToGetData, "true") && findings.destination != &storedMessage()) {
    warnings.add(codes::kStoredMessage, keys::kNeedToGetData.text(), [] {
      return "messageWithUrlUsedClipboard takes the message in the store, and nothing of this URL";
    });
  }
}

void checkKind(Findings& findings) {
  if (!findings.kindWord || !findings.destination) return;
  const DestinationInfo& destination = *findings.destination;
  const std::string_view word = *findings.kindWord;
  const auto warn = [&](std::string_view code, const std::string& message) {
    findings.warnings.add(code, keys::kFileType.text(), [&] { return message; });
  };
  if (!destination.hasContent()) {
    if (!destination.kindWord.empty() && destination.kindWord != word) {
      warn(codes::kUnexpectedWord, quoted(word) + ", where " + quoted(destination.kindWord) + " is expected");
    }
  } else if (!findings.kind) {
    warn(codes::kUnknownKind, quoted(word) + " is no kind of content" + suggestion(word, knownKinds()));
  } else if (destination.isSentToMessenger() ? !findings.kind->isSent : !findings.kind->isRead) {
    warn(codes::kUnknownKind,
         quoted(word) + (destination.isSentToMessenger() ? " is a kind that only the messenger sends"
                                                         : " is a kind of which an app makes nothing"));
  }
}

enum class May { BeEmpty, NotBeEmpty };

void require(std::string_view key, May may, Findings& findings, const Query& query) {
  const std::string_view* value = key.empty() ? nullptr : query.find(key);
  if (key.empty() || (value && (may == May::BeEmpty || !value->empty()))) return;
  findings.warnings.add(codes::kMissingKey, key, [&] {
    const KeyInfo* info = keyInfo(key);
    const std::string meaning = info ? " (" + std::string(info->meaning) + ")" : "";
    return (value ? "must not be empty" : "must be there") + meaning;
  });
}

void checkKeys(Findings& findings, const Query& query) {
  if (!findings.destination) return;
  const DestinationInfo& destination = *findings.destination;
  for (const std::string_view key : destination.required) {
    const bool mayBeEmpty = key == keys::kServiceId.text();
    require(key, mayBeEmpty ? May::BeEmpty : May::NotBeEmpty, findings, query);
  }
  const KindInfo* kind = findings.kind;
  if (kind) {
    const bool mayBeEmpty = kind->needs == keys::kFileName.text();
    require(kind->needs, mayBeEmpty ? May::BeEmpty : May::NotBeEmpty, findings, query);
  }
  if (!destination.isSentToMessenger()) return;
  // Only this value of the flags lets a link go without a title.
  if (kind && kind->isLink() && !query.is(keys::kCflag, "8")) {
    require(keys::kTitle, May::NotBeEmpty, findings, query);
  }
  const RecordInfo& record = kind ? kind->record : destination.record;
  if (!record.needed.empty()) require(keys::kObjectLocation, May::NotBeEmpty, findings, query);
}

}  // namespace

void checkWhole(Findings& findings, const Query& query) {
  checkDestination(findings);
  checkShape(findings, query);
  checkKind(findings);
  if (!query.empty()) checkKeys(findings, query);
}

void checkLargeData(Findings& findings, const Query& query, const Store& store) {
  if (!findings.destination) return;
  const DestinationInfo& destination = *findings.destination;
  RecordInfo info = findings.kind ? findings.kind->record : destination.record;
  if (!destination.isSentToMessenger()) info = {.needed = info.needed};  // an app accepts any size
  const bool isBeside = destination.isSentToMessenger() ? query.is(keys::kObjectLocation, "pasteboard")
                                                        : findings.kind != nullptr;
  const bool isMissing = isBeside && !info.needed.empty() && !findings.record && !store.record;
  if (!findings.record && store.record && destination.hasRecord()) {
    findings.record = recordOf(*store.record);
    findings.record->isInStore = true;
    findings.record->isAnnounced = isBeside;
    if (!isBeside) info = {};
  }
  if (findings.record) checkRecord(*findings.record, info, findings.warnings);
  if (isMissing && store.isKnown) {
    findings.warnings.add(codes::kRecordMissing, info.needed,
                          [] { return "should lie in the store, which holds no record"; });
  } else if (isMissing) {
    findings.warnings.add(codes::kRecordInStore, info.needed,
                          [] { return "lies in the store, if anywhere; --store FILE looks there"; });
  }
}

}  // namespace lumo::inspection
