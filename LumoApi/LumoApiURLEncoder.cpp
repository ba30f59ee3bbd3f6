#include "LumoApi/LumoApiURLEncoder.h"

#include "platform/PercentEncoding.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

using lumo::CharacterSet;
using lumo::Data;
using lumo::QueryValue;
using lumo::URL;
using Entry = LumoApiQueryDictionary::Entries::Entry;
using Parts = std::array<std::string_view, 4>;

std::string_view keyOf(const Entry& entry) noexcept { return std::string_view(entry.key); }

/// Whether the entry reads as several pairs where the URL is split again.
bool splits(const Entry& entry) noexcept {
  return keyOf(entry).find('&') != std::string_view::npos || entry.value.hasAmpersand();
}

/// The length of the whole URL; null where some text is not UTF-8.
std::optional<std::size_t> encodedSize(const Parts& parts, const LumoApiQueryDictionary& query) {
  std::size_t total = query.size() * 2;  // the "?" or "&" before each pair and the "=" in it
  const auto add = [&total](std::optional<std::size_t> size) {
    if (size) total += *size;
    return size.has_value();
  };
  for (const std::string_view part : parts) {
    if (!add(lumo::percentEncodedSize(part, CharacterSet::QueryAllowed))) return std::nullopt;
  }
  for (const Entry& entry : query) {
    if (!add(lumo::percentEncodedSize(keyOf(entry), CharacterSet::QueryAllowed))) return std::nullopt;
    if (!add(entry.value.encodedSize())) return std::nullopt;
  }
  return total;
}

char* encode(std::string_view text, char* out) noexcept {
  return lumo::percentEncode(text, CharacterSet::QueryAllowed, out);
}

char* encode(const Entry& entry, char separator, char* out) {
  *out++ = separator;
  out = encode(keyOf(entry), out);
  *out++ = '=';
  return entry.value.encode(out);
}

/// Sizes the text, writes it once into its one allocation and has it parsed there.
std::optional<URL> encoded(const Parts& parts, const LumoApiQueryDictionary& query) {
  const std::optional<std::size_t> size = encodedSize(parts, query);
  if (!size) return std::nullopt;
  lumo::DataBuffer text = Data::uninitialized(*size);
  char* out = reinterpret_cast<char*>(text.bytes);
  for (const std::string_view part : parts) out = encode(part, out);
  char separator = '?';
  const auto write = [&](const Entry& entry) {
    out = encode(entry, separator, out);
    separator = '&';
  };
  if (std::none_of(query.begin(), query.end(), splits)) {
    std::for_each(query.begin(), query.end(), write);
  } else {
    for (const bool first : {true, false}) {
      std::for_each(query.begin(), query.end(), [&](const Entry& entry) {
        if (splits(entry) == first) write(entry);
      });
    }
  }
  return URL::parse(std::move(text.data));
}

}  // namespace

// urlWithScheme:host:path:queryItem:
std::optional<URL> LumoApiURLEncoder::urlWithScheme(std::optional<std::string_view> scheme,
                                                    std::optional<std::string_view> host,
                                                    std::optional<std::string_view> path,
                                                    const LumoApiQueryDictionary* queryItem) noexcept {
  if (!scheme) return std::nullopt;
  const Parts parts{*scheme, "://", host.value_or(""), path.value_or("")};
  try {
    if (queryItem && !queryItem->empty()) return encoded(parts, *queryItem);
    std::string text;
    for (const std::string_view part : parts) text += part;
    return URL::parse(Data(std::move(text)));
  } catch (...) {  // memory is exhausted
    return std::nullopt;
  }
}
