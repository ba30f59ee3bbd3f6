#pragma once

#include "LumoApi/internal/Destinations.h"
#include "inspect/Query.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// What is known of launch URLs, as tables: keys, words, destinations, kinds of content.

namespace lumo::inspection {

/// How a value stands in a URL.
enum class Encoding : std::uint8_t {
  Plain,    ///< as the app gave it: an identifier, a name
  Escaped,  ///< percent-encoded in either direction
  Word,     ///< one of the words that glossOf() knows
  Kind,     ///< the word of a kind of content
  Number,   ///< decimal digits
  Text,     ///< base64 of text
  Link,     ///< base64 of a URL's text
  JSON,     ///< base64 of JSON text
  Bytes,    ///< base64 of bytes
  Record,   ///< base64 of the archived large-data record
};

struct KeyInfo {
  std::string_view key;
  std::string_view meaning;
  Encoding encoding;
  std::uint64_t limit = 0;  ///< the longest accepted text in UTF-16 code units; 0: any
};

/// Null for an unknown key.
const KeyInfo* keyInfo(std::string_view key) noexcept;
std::span<const std::string_view> knownKeys() noexcept;

/// What a word or a number says under its key, perhaps nothing beyond itself; null for an unexpected one.
std::optional<std::string_view> glossOf(std::string_view key, std::string_view word) noexcept;

/// The words that are expected under the key: "“pasteboard” or “url”".
std::string expectedWords(std::string_view key);

/// Large data as it is announced and limited, by what is asked or by the kind of content.
struct RecordInfo {
  std::string_view needed{};    ///< the entry without which the record makes no sense; empty: none
  std::uint64_t mainBytes = 0;  ///< the most that the main bytes may be; 0: any
  std::uint64_t preview = 0;    ///< the same for the preview picture
  std::uint64_t pictures = 0;   ///< the most pictures in the list
  std::uint64_t picture = 0;    ///< the most bytes of one of them
  std::uint64_t together = 0;   ///< and of all
};

enum class Direction : std::uint8_t { ToMessenger, ToApp };

struct DestinationInfo {
  std::string_view name;  ///< for programs
  Direction direction;
  /// What is asked, to follow "An app asks the messenger to"; a sentence of its own for a URL to the app.
  /// "{}" stands for the content, which is of any kind.
  std::string_view asks;
  const Destination* messenger;  ///< null for a URL to the app
  std::string_view host;         ///< of a URL to the app, whose scheme is the app's own; empty: any
  std::string_view path;         ///< likewise
  std::array<std::string_view, 4> required{};
  std::string_view kindWord{};  ///< the one "file_type" that is sent there
  RecordInfo record{};

  bool isSentToMessenger() const noexcept { return direction == Direction::ToMessenger; }
  bool hasContent() const noexcept { return asks.find("{}") != std::string_view::npos; }
  bool isSigned() const noexcept { return required[0] == "sig"; }
  /// What keys are that are unknown here but have a reader all the same; empty: they have none.
  std::string_view otherKeys() const noexcept {
    return isSigned() ? "the app's own" : host == "response_from_lumo" ? "passed on" : "";
  }
  bool hasRecord() const noexcept { return hasContent() || !record.needed.empty(); }
};

/// Null for a destination that nobody reads. The hosts of URLs to the app decide alone.
const DestinationInfo* destinationInfo(std::string_view scheme, std::string_view host,
                                       std::string_view path) noexcept;
/// The destination of a URL that only announces a message in the store.
const DestinationInfo& storedMessage() noexcept;
/// "scheme://host/path" of every destination in the messenger.
std::vector<std::string> knownDestinations();
/// Whether two schemes are the same: their case does not count.
bool isSameScheme(std::string_view a, std::string_view b) noexcept;

struct KindInfo {
  std::string_view word;
  std::string_view with;     ///< the key that tells kinds of the same word apart; empty: none
  std::string_view inWords;  ///< "a picture"
  bool isSent;               ///< whether apps send it to the messenger
  bool isRead;               ///< whether apps read it when the messenger sends it
  std::string_view needs{};  ///< the key that holds it
  RecordInfo record{};

  bool isLink() const noexcept { return needs == "url"; }
};

/// The kind of the query's content; null for an unknown word.
const KindInfo* kindInfo(std::string_view word, const Query& query) noexcept;
std::span<const std::string_view> knownKinds() noexcept;

/// The meaning of an entry of the large-data record, or of the archived common content; perhaps empty.
std::string_view recordMeaning(std::string_view key) noexcept;

}  // namespace lumo::inspection
