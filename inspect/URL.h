#pragma once

#include "LumoApi/LumoApiLargeData.h"
#include "LumoApi/URL.h"
#include "inspect/Keys.h"
#include "inspect/Record.h"
#include "inspect/Value.h"
#include "inspect/Warnings.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumo::inspection {

/// A pair of the query.
struct Entry {
  std::string_view key;
  std::string_view raw;
  const KeyInfo* info = nullptr;  ///< null for an unknown key
  bool counts = true;             ///< whether no later pair of the same key takes its place
  Encoding encoding = Encoding::Plain;
  Decoded value{};
};

/// What a launch URL says.
struct Findings {
  URL url;
  const DestinationInfo* destination = nullptr;  ///< null where nobody reads the URL
  bool isForSibling = false;                     ///< whether the scheme is one of the sibling messenger
  bool isForMainAlone = false;                   ///< whether the sibling messenger has a scheme of its own
  std::optional<std::string_view> kindWord{};    ///< the raw "file_type"
  const KindInfo* kind = nullptr;                ///< where the destination is one for any kind
  std::vector<Entry> entries{};
  std::size_t entriesLeftOut = 0;
  std::optional<Record> record{};
  Warnings warnings{};

  /// The destination's `asks` with the kind of content in it.
  std::string asks() const;
  /// The text of the pair that counts; null where there is none.
  const std::string* text(std::string_view key) const noexcept;
};

/// The large-data record beside the URL.
struct Store {
  bool isKnown = false;        ///< whether somebody looked
  LumoApiLargeDataPtr record;  ///< null: there is none
};

/// Reads a URL. Of very many pairs the first are taken, and those known keys that count, unless `all`.
Findings findingsOf(const URL& url, const Store& store, bool all);

/// Where a text stops being a URL, in bytes, and why.
struct NoURL {
  std::size_t offset;
  std::string reason;
};

/// The URL, or why the text is none. A text without scheme and host, which could be any word, is none either.
std::optional<URL> launchURLOf(std::string_view text, NoURL& reason);

}  // namespace lumo::inspection
