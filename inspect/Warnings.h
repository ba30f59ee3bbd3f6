#pragma once

#include "LumoApi/Dictionary.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lumo::inspection {

/// What looks wrong. The codes are for programs and never change; the words may.
struct Warning {
  std::string_view code;
  std::string key;  ///< of the query or of the large-data record; empty where it concerns no single one
  std::string message;
};

namespace codes {

// The URL.
inline constexpr std::string_view kNotAURL = "not-a-url";
inline constexpr std::string_view kUnknownDestination = "unknown-destination";
inline constexpr std::string_view kUnknownRequest = "unknown-request";
inline constexpr std::string_view kNoQuery = "no-query";
inline constexpr std::string_view kFragment = "fragment";
inline constexpr std::string_view kStoredMessage = "stored-message";
// Its content.
inline constexpr std::string_view kUnknownKind = "unknown-kind";
inline constexpr std::string_view kMissingKey = "missing-key";
// A pair, or what should have been one.
inline constexpr std::string_view kUnknownKey = "unknown-key";
inline constexpr std::string_view kDuplicateKey = "duplicate-key";
inline constexpr std::string_view kUnsortedKey = "unsorted-key";
inline constexpr std::string_view kInjectedKey = "injected-key";
inline constexpr std::string_view kCutValue = "cut-value";
inline constexpr std::string_view kEmptyPiece = "empty-piece";
// A value.
inline constexpr std::string_view kUnexpectedWord = "unexpected-word";
inline constexpr std::string_view kDoubleEscape = "double-escape";
inline constexpr std::string_view kBadBase64 = "bad-base64";
inline constexpr std::string_view kNotUTF8 = "not-utf8";
inline constexpr std::string_view kBadNumber = "bad-number";
inline constexpr std::string_view kBadLink = "bad-link";
inline constexpr std::string_view kBadJSON = "bad-json";
inline constexpr std::string_view kBadRecord = "bad-record";
inline constexpr std::string_view kLimitExceeded = "limit-exceeded";
// The large-data record.
inline constexpr std::string_view kRecordInStore = "record-in-store";
inline constexpr std::string_view kRecordMissing = "record-missing";
inline constexpr std::string_view kRecordIncomplete = "record-incomplete";

}  // namespace codes

/// Collects warnings, of each code a few: a hostile URL could give a million.
class Warnings {
 public:
  /// `message()` gives the words, where the warning is kept.
  template <class Message>
  void add(std::string_view code, std::string_view key, const Message& message) {
    std::size_t* times = times_.find(code);
    if (!times) {
      times_.set(code, 0);
      times = times_.find(code);
    }
    if (++*times > kMostOfACode) {
      ++leftOut_;
    } else {
      all_.push_back({code, std::string(key), message()});
    }
  }

  const std::vector<Warning>& all() const noexcept { return all_; }
  std::size_t leftOut() const noexcept { return leftOut_; }

 private:
  static constexpr std::size_t kMostOfACode = 10;

  std::vector<Warning> all_;
  std::size_t leftOut_ = 0;
  Dictionary<std::size_t, std::string_view> times_;
};

}  // namespace lumo::inspection
