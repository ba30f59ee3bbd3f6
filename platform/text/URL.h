#pragma once

#include "LumoApi/Data.h"
#include "LumoApi/Export.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace lumo {

/// A parsed URL: an immutable text with the places of its components.
///
/// Only the parser makes one. It takes every URI reference of RFC 3986, the empty text included (an empty
/// URL). Components are exactly as written: the host keeps its letter case and nothing is decoded, trimmed or
/// normalised. Copying a URL copies no text; distinct URL objects may be used from several threads at once.
class LUMOAPI_EXPORT URL {
 public:
  /// Parses a copy of the text. Characters beyond ASCII (valid UTF-8) in path, query and fragment are
  /// percent-escaped first. Every other character outside the grammar (a blank, `"`, `<`, `\`, `^`, a `%`
  /// without two hexadecimal digits, anything beyond ASCII before the path, …) is refused: null.
  static std::optional<URL> parse(std::string_view text);

  /// The same without a copy where nothing needs escaping.
  static std::optional<URL> parse(Data text);

  /// The URL of a text that is known to be one: a scheme, a host and a path of these lengths with "://" after
  /// the first, and nothing more than a query after them. The text is not looked at.
  static URL composed(Data text, std::size_t schemeSize, std::size_t hostSize, std::size_t pathSize) noexcept;

  /// The whole text, as parsed and escaped: scheme, host, path, query and fragment with no decoding.
  std::string_view absoluteString() const noexcept { return text_.view(); }

  /// Null for a relative reference; without the ":".
  std::optional<std::string_view> scheme() const noexcept;

  /// The host, an IP literal with its brackets; without user information and port. An empty host counts as
  /// none.
  std::optional<std::string_view> host() const noexcept;

  /// With its leading "/", if any; empty where the URL has none.
  std::string_view path() const noexcept;

  /// The raw text after "?" and before "#"; null without a "?".
  std::optional<std::string_view> query() const noexcept;

  /// A part of absoluteString() as a Data that shares this URL's text.
  Data shared(std::string_view part) const noexcept;

  /// The raw text after "#"; null without one.
  std::optional<std::string_view> fragment() const noexcept;

  /// Equal texts.
  friend bool operator==(const URL& a, const URL& b) noexcept { return a.text_ == b.text_; }

 private:
  /// Where a component stands in the text; `begin` past `end` means that there is none.
  struct Span {
    std::size_t begin = 1;
    std::size_t end = 0;
  };

  class Parser;

  URL() noexcept = default;
  std::optional<std::string_view> component(Span span) const noexcept;

  Data text_;
  Span scheme_, host_, path_, query_, fragment_;
};

}  // namespace lumo
