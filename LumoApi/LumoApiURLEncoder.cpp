#include "LumoApi/LumoApiURLEncoder.h"

#include "LumoApi/CopyText.h"
#include "LumoApi/internal/LaunchURL.h"
#include "platform/text/PercentEncoding.h"

namespace {

using lumo::CharacterSet;
using lumo::Data;
using lumo::QueryValue;
using lumo::URL;
using Entry = LumoApiQueryDictionary::Entries::Entry;

constexpr std::string_view kAfterScheme = "://";

std::string_view keyOf(const Entry& entry) noexcept { return std::string_view(entry.key); }

/// Whether the entry reads as several pairs, or as one of another key, where the URL is split again.
inline bool splits(const Entry& entry) noexcept {
  return (!entry.key.isFixed() && keyOf(entry).find_first_of("&=") != std::string_view::npos) ||
         entry.value.hasAmpersand();
}

// A size stays a plain number on this path: the compiler passes an optional one through memory, for every
// entry.
constexpr std::size_t kNotUTF8 = QueryValue::kNotUTF8;

std::size_t encodedSize(std::string_view text) noexcept {
  return lumo::percentEncodedSize(text, CharacterSet::QueryAllowed).value_or(kNotUTF8);
}

/// What stands before the query, as the caller gave it.
struct EscapedParts {
  std::string_view scheme, host, path;

  std::size_t size() const noexcept {
    std::size_t total = kAfterScheme.size();
    for (const std::string_view part : {scheme, host, path}) {
      const std::size_t size = encodedSize(part);
      if (size == kNotUTF8) return kNotUTF8;
      total += size;
    }
    return total;
  }
  char* write(char* out) const noexcept {
    out = lumo::copyText(kAfterScheme, lumo::percentEncode(scheme, CharacterSet::QueryAllowed, out));
    out = lumo::percentEncode(host, CharacterSet::QueryAllowed, out);
    return lumo::percentEncode(path, CharacterSet::QueryAllowed, out);
  }
};

/// What stands before the query, in the program's own words.
struct FixedParts {
  std::string_view scheme, host, path;

  std::size_t size() const noexcept {
    return scheme.size() + kAfterScheme.size() + host.size() + path.size();
  }
  char* write(char* out) const noexcept {
    return lumo::copyText(path,
                          lumo::copyText(host, lumo::copyText(kAfterScheme, lumo::copyText(scheme, out))));
  }
};

/// The length of a key and a value that may need escapes. Tells on the way whether the entry splits.
[[gnu::noinline]] std::size_t escapedSize(const Entry& entry, bool& anySplits) noexcept {
  const std::size_t key = entry.key.isFixed() ? keyOf(entry).size() : encodedSize(keyOf(entry));
  const std::size_t value = entry.value.encodedSize();
  anySplits = anySplits || splits(entry);
  return key == kNotUTF8 || value == kNotUTF8 ? kNotUTF8 : key + value;
}

/// The length of the query with its "?". Tells on the way whether any entry splits.
std::size_t encodedSize(const LumoApiQueryDictionary& query, bool& anySplits) noexcept {
  std::size_t total = query.size() * 2;  // the "?" or "&" before each pair and the "=" in it
  for (const Entry& entry : query) {
    if (entry.key.isFixed() && entry.value.isPlain()) {
      total += keyOf(entry).size() + entry.value.encodedSize();
    } else {
      const std::size_t size = escapedSize(entry, anySplits);
      if (size == kNotUTF8) return kNotUTF8;
      total += size;
    }
  }
  return total;
}

char* write(const Entry& entry, char* out) noexcept {
  *out++ = '&';
  const std::string_view key = keyOf(entry);
  out = entry.key.isFixed() ? lumo::copyText(key, out)
                            : lumo::percentEncode(key, CharacterSet::QueryAllowed, out);
  *out++ = '=';
  return entry.value.encode(out);
}

enum class Which { All, Splitting, Others };

char* write(Which which, const LumoApiQueryDictionary& query, char* out) noexcept {
  for (const Entry& entry : query) {
    if (which != Which::All && splits(entry) != (which == Which::Splitting)) continue;
    out = write(entry, out);
  }
  return out;
}

/// Sizes the whole text and writes it once into its one allocation; null where some text is not UTF-8.
template <class Parts>
std::optional<Data> written(const Parts& parts, const LumoApiQueryDictionary& query) {
  bool anySplits = false;
  const std::size_t size = parts.size(), querySize = encodedSize(query, anySplits);
  if (size == kNotUTF8 || querySize == kNotUTF8) return std::nullopt;
  lumo::DataBuffer text = Data::uninitialized(size + querySize);
  char* const begin = parts.write(reinterpret_cast<char*>(text.bytes));
  if (anySplits) {
    write(Which::Others, query, write(Which::Splitting, query, begin));
  } else {
    write(Which::All, query, begin);
  }
  if (!query.empty()) *begin = '?';
  return std::move(text.data);
}

}  // namespace

std::optional<URL> lumo::launchURL(const Destination& destination, std::uint64_t shareDestType,
                                   const LumoApiQueryDictionary& query) {
  const FixedParts parts{destination.schemeFor(shareDestType), destination.host, destination.path};
  std::optional<Data> text = written(parts, query);
  if (!text) return std::nullopt;
  return URL::composed(*std::move(text), parts.scheme.size(), parts.host.size(), parts.path.size());
}

// urlWithScheme:host:path:queryItem:
std::optional<URL> LumoApiURLEncoder::urlWithScheme(std::optional<std::string_view> scheme,
                                                    std::optional<std::string_view> host,
                                                    std::optional<std::string_view> path,
                                                    const LumoApiQueryDictionary* queryItem) noexcept {
  if (!scheme) return std::nullopt;
  const EscapedParts parts{*scheme, host.value_or(""), path.value_or("")};
  try {
    if (!queryItem || queryItem->empty()) {
      std::string text(parts.scheme);
      text.append(kAfterScheme).append(parts.host).append(parts.path);
      return URL::parse(Data(std::move(text)));
    }
    std::optional<Data> text = written(parts, *queryItem);
    return text ? URL::parse(*std::move(text)) : std::nullopt;
  } catch (...) {  // memory is exhausted
    return std::nullopt;
  }
}
