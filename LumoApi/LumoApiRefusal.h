#pragma once

#include "LumoApi/Export.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Why an operation gave null: what the converter's log says in a few words, and what it leaves unsaid, for
/// the silent refusals too. A plain value: one thread at a time may change it.
struct LUMOAPI_EXPORT LumoApiRefusal {
  /// What was wrong.
  enum class Code : std::uint8_t {
    None,              ///< nothing was refused
    Missing,           ///< what `field` names is absent or empty
    TooLong,           ///< a text is longer than `limit`
    TooBig,            ///< bytes are more than `limit`
    TooMany,           ///< a list has more entries than `limit`
    NotUTF8,           ///< a text is not valid UTF-8
    NotSerialisable,   ///< a free-form value cannot be written as JSON or archived
    UnknownKind,       ///< no converter takes objects of this class
    InvalidURL,        ///< the parts do not make a valid URL
    PasteboardFailed,  ///< the large-data record could not be handed over
    OutOfMemory,       ///< memory was exhausted
    UnknownHost,       ///< a URL that opened the app has a host that is not the messenger's
    UnknownPath,       ///< a request has a path that is none of the messenger's
    Unannounced,       ///< the URL does not announce a stored message
    NotBuilt,          ///< the web-view kit claimed the URL and built no message
  };

  /// What `actual` and `limit` count.
  enum class Unit : std::uint8_t { None, CodeUnits, Bytes, Entries };

  /// What was wrong; None where nothing was.
  Code code = Code::None;
  /// The field, part of the URL or entry of the record that was refused, by its own name.
  std::string_view field;
  /// The size that was found, and the largest one that is accepted.
  std::optional<std::uint64_t> actual;
  /// The largest size that is accepted.
  std::optional<std::uint64_t> limit;
  /// What both sizes count.
  Unit unit = Unit::None;
  /// The log line that the refusal wrote; null where it is silent.
  std::optional<std::string_view> logText;
  /// The source line of the check.
  int line = 0;

  /// Whether anything was refused.
  explicit operator bool() const noexcept { return code != Code::None; }

  /// One line for people: "title: 129 UTF-16 code units, at most 128".
  std::string description() const;

  /// The code's name as it stands above.
  static std::string_view nameOf(Code code) noexcept;
};
