#include "inspect/URL.h"

#include "LumoApi/internal/Keys.h"
#include "documents/NearestName.h"
#include "inspect/Checks.h"
#include "inspect/Printable.h"
#include "inspect/Query.h"
#include "platform/text/Text.h"

#include <algorithm>
#include <utility>

namespace lumo::inspection {

using documents::suggestion;

namespace {

constexpr std::size_t kFirstEntries = 100;

/// Where the URL leads, and what it carries there.
void identify(Findings& findings, const Query& query) {
  const URL& url = findings.url;
  const std::string_view scheme = url.scheme().value_or("");
  findings.destination = destinationInfo(scheme, url.host().value_or(""), url.path());
  if (!findings.destination && query.is(keys::kNeedToGetData, "true"))
    findings.destination = &storedMessage();
  if (const std::string_view* word = query.find(keys::kFileType)) findings.kindWord = *word;
  if (!findings.destination) return;
  if (findings.destination->hasContent() && findings.kindWord) {
    findings.kind = kindInfo(*findings.kindWord, query);
  }
  if (const Destination* messenger = findings.destination->messenger) {
    const bool hasTwo = messenger->scheme.text() != messenger->siblingScheme.text();
    findings.isForSibling = hasTwo && isSameScheme(scheme, messenger->siblingScheme);
    findings.isForMainAlone = hasTwo && !findings.isForSibling;
  }
}

/// Reads the pieces of a query one after the other, and warns of what is wrong with them.
class Pieces {
 public:
  Pieces(Findings& findings, const Query& query, bool all) : findings_(findings), query_(query), all_(all) {}

  void read(const Piece& piece) {
    if (piece.value) return readPair(entryOf(piece));
    if (piece.key.empty()) {
      warn(codes::kEmptyPiece, previous_, [] { return "nothing stands between two “&” after it"; });
      return;
    }
    warn(codes::kCutValue, previous_, [&] {
      return "cut by an “&”, it seems: “" + std::string(piece.key.substr(0, 40)) + "” follows without a “=”";
    });
    isCutBase64_ = false;
  }

 private:
  template <class Message>
  void warn(std::string_view code, std::string_view key, const Message& message) {
    findings_.warnings.add(code, key, message);
  }

  bool isToMessenger() const noexcept {
    return !findings_.destination || findings_.destination->isSentToMessenger();
  }
  bool isSigned() const noexcept { return findings_.destination && findings_.destination->isSigned(); }

  Entry entryOf(const Piece& piece) const {
    Entry entry{.key = piece.key, .raw = *piece.value, .info = keyInfo(piece.key)};
    entry.counts = query_.find(piece.key)->data() == piece.value->data();
    // A signed URL's keys are whatever the app signed, their values plain.
    const bool isKnown = entry.info && (!isSigned() || entry.info->encoding == Encoding::Escaped);
    if (isKnown) entry.encoding = entry.info->encoding;
    return entry;
  }

  void readPair(Entry entry) {
    const std::size_t place = place_++;
    checkPlace(entry);
    if (entry.encoding != Encoding::Escaped && isEscapedTwice(entry.raw)) {
      warn(codes::kDoubleEscape, entry.key,
           [] { return "escaped twice, it seems: “%25” before two digits"; });
    }
    const bool isShown = all_ || place < kFirstEntries || (entry.info && entry.counts);
    if (isShown) {
      entry.value = decoded(entry.raw, entry.encoding, isToMessenger());
      if (entry.counts) checkValue(entry);
    }
    previous_ = entry.key;
    isCutBase64_ = entry.value.fault == codes::kBadBase64 && entry.raw.size() % 4 != 0;
    if (isShown) {
      findings_.entries.push_back(std::move(entry));
    } else {
      ++findings_.entriesLeftOut;
    }
  }

  /// What a pair tells by being where it is.
  void checkPlace(const Entry& entry) {
    const bool isUnknown = !entry.info && findings_.destination && findings_.destination->otherKeys().empty();
    const std::size_t times = query_.timesOf(entry.key);
    const bool isWrong = entry.encoding == Encoding::Word && !glossOf(entry.key, entry.raw);
    if (isUnknown && entry.counts) {
      warn(codes::kUnknownKey, entry.key,
           [&] { return "nobody reads it" + suggestion(entry.key, knownKeys()); });
    }
    if (times > 1 && entry.counts) {
      warn(codes::kDuplicateKey, entry.key,
           [&] { return "given " + grouped(times) + " times; the last one counts"; });
    }
    if (isWrong) {
      warn(codes::kUnexpectedWord, entry.key, [&] {
        return "“" + std::string(entry.raw.substr(0, 40)) + "”, where " + expectedWords(entry.key) +
               " is expected";
      });
    }
    if (isSigned()) return checkOrder(entry);
    if (isUnknown && isCutBase64_) {
      warn(codes::kCutValue, previous_,
           [&] { return "cut by an “&”, it seems: “" + std::string(entry.key.substr(0, 40)) + "” follows"; });
    }
    checkInjection(entry, isUnknown || isWrong || (times > 1 && entry.key != injected_));
  }

  /// The signature is made of the keys in ascending order, and comes last.
  void checkOrder(const Entry& entry) {
    const bool isOrdered = previous_ != "sig" && (entry.key == "sig" || previous_ <= entry.key);
    if (isOrdered) return;
    warn(codes::kUnsortedKey, entry.key,
         [] { return "out of order: the signed keys ascend, then comes “sig”"; });
  }

  /// A plain value is sent as it is, so an "&" in it makes keys of what follows.
  void checkInjection(const Entry& entry, bool isSuspect) {
    const bool isPlain = entry.info && entry.encoding == Encoding::Plain && isToMessenger();
    if (!isSuspect) {
      plain_ = isPlain ? entry.key : std::string_view();
      return;
    }
    if (plain_.empty()) {
      if (isPlain) plain_ = entry.key;
      return;
    }
    injected_ = entry.key;
    warn(codes::kInjectedKey, entry.key,
         [&] { return "may come from an “&” in the plain value of " + std::string(plain_); });
  }

  void checkValue(const Entry& entry) {
    const Decoded& value = entry.value;
    if (!value.fault.empty()) warn(value.fault, entry.key, [&] { return value.reason; });
    const std::uint64_t limit = entry.info && isToMessenger() && !isSigned() ? entry.info->limit : 0;
    if (limit != 0 && value.text) {
      const std::size_t length = utf16Length(*value.text);
      if (length > limit) {
        warn(codes::kLimitExceeded, entry.key,
             [&] { return grouped(length) + " UTF-16 code units; the messenger accepts " + grouped(limit); });
      }
    }
    if (entry.encoding == Encoding::Record && value.bytes && !value.bytes->empty()) readRecord(entry);
  }

  void readRecord(const Entry& entry) {
    findings_.record = archivedRecord(*entry.value.bytes);
    if (findings_.record) return;
    warn(codes::kBadRecord, entry.key, [] { return "its bytes are no archive of a record"; });
  }

  Findings& findings_;
  const Query& query_;
  const bool all_;
  std::size_t place_ = 0;
  std::string_view previous_;  ///< the key of the last pair
  bool isCutBase64_ = false;   ///< whether its value is base64 that ends too early
  std::string_view plain_;     ///< the last plain key, with nothing but suspects after it
  std::string_view injected_;  ///< the last of them
};

}  // namespace

std::string Findings::asks() const {
  if (!destination) return "";
  std::string words(destination->asks);
  if (const std::size_t place = words.find("{}"); place != std::string::npos) {
    words.replace(place, 2, kind ? kind->inWords : "something");
  }
  return words;
}

const std::string* Findings::text(std::string_view key) const noexcept {
  for (const Entry& entry : entries) {
    if (entry.key == key && entry.counts) return entry.value.text ? &*entry.value.text : nullptr;
  }
  return nullptr;
}

Findings findingsOf(const URL& url, const Store& store, bool all) {
  const Query query(url.query().value_or(""));
  Findings findings{.url = url};
  identify(findings, query);
  checkWhole(findings, query);
  Pieces pieces(findings, query, all);
  query.forEachPiece([&](const Piece& piece) { pieces.read(piece); });
  checkLargeData(findings, query, store);
  return findings;
}

}  // namespace lumo::inspection
