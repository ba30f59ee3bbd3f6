#pragma once

#include "LumoApi/Data.h"
#include "LumoApi/Export.h"
#include "LumoApi/RawQuery.h"
#include "LumoApi/URL.h"

#include <optional>
#include <string_view>

/// A URL split into scheme, host, path and the pairs of its query.
///
/// Nothing is decoded, trimmed or changed in case: each reader decodes its own keys. A decoder is used by the
/// thread that made it; it shares the URL's text instead of copying it.
class LUMOAPI_EXPORT LumoApiURLDecoder {
 public:
  /// Null for a null URL; every other URL can be split.
  static std::optional<LumoApiURLDecoder> decoderWithUrl(const std::optional<lumo::URL>& url) noexcept;

  // The setters copy their text; where memory does not suffice they throw std::bad_alloc and change nothing.

  /// Null scheme, host and path, and an empty query.
  LumoApiURLDecoder() noexcept = default;

  /// Without "://".
  std::optional<std::string_view> scheme() const noexcept { return textOf(scheme_); }
  void setScheme(std::optional<std::string_view> scheme) { scheme_ = copyOf(scheme); }

  /// With its letter case kept; null for an empty host too.
  std::optional<std::string_view> host() const noexcept { return textOf(host_); }
  void setHost(std::optional<std::string_view> host) { host_ = copyOf(host); }

  /// With its leading "/"; empty for a URL without a path.
  std::optional<std::string_view> path() const noexcept { return textOf(path_); }
  void setPath(std::optional<std::string_view> path) { path_ = copyOf(path); }

  /// The pairs of the query, not decoded.
  const lumo::RawQuery& queryItem() const noexcept { return queryItem_; }

 private:
  using Text = std::optional<lumo::Data>;
  static std::optional<std::string_view> textOf(const Text& text) noexcept;
  static Text copyOf(std::optional<std::string_view> text);

  Text scheme_;
  Text host_;
  Text path_;
  lumo::RawQuery queryItem_;
};
