// URL texts: what is accepted and how it is split, held against another parser.

#include "LumoApi/LumoApiURLDecoder.h"
#include "LumoApi/URL.h"
#include "fuzz/Door.h"
#include "platform/text/PercentEncoding.h"

#include <boost/url/parse.hpp>

#include <algorithm>
#include <optional>
#include <string>

namespace lumo::fuzz {

namespace {

using MaybeText = std::optional<std::string>;

struct Parts {
  MaybeText scheme, host, path, query, fragment;
  friend bool operator==(const Parts&, const Parts&) = default;
};

std::optional<Parts> partsOf(const std::optional<URL>& url) {
  if (!url) return std::nullopt;
  const auto text = [](auto part) { return part ? MaybeText(*part) : std::nullopt; };
  return Parts{text(url->scheme()), text(url->host()), MaybeText(url->path()), text(url->query()),
               text(url->fragment())};
}

std::optional<Parts> otherPartsOf(std::string_view text) {
  const auto url = boost::urls::parse_uri_reference(text);
  if (!url) return std::nullopt;
  const auto part = [](bool present, const auto& value) {
    return present ? MaybeText(std::string(value.data(), value.size())) : std::nullopt;
  };
  return Parts{part(url->has_scheme(), url->scheme()),
               part(!url->encoded_host().empty(), url->encoded_host()), part(true, url->encoded_path()),
               part(url->has_query(), url->encoded_query()),
               part(url->has_fragment(), url->encoded_fragment())};
}

/// The text between "//" and the path; empty where there is none.
std::string_view authorityOf(std::string_view text) {
  const std::size_t begin = text.find("//");
  if (begin == text.npos || text.substr(0, begin).find_first_of("/?#") != text.npos) return {};
  text.remove_prefix(begin + 2);
  return text.substr(0, text.find_first_of("/?#"));
}

std::string_view hostAndPort(std::string_view text) {
  const std::string_view authority = authorityOf(text);
  return authority.substr(authority.find('@') + 1);
}

bool hasOtherCharactersAfterAuthority(std::string_view text) {
  const auto url = boost::urls::parse_uri_reference(text);
  return url && url->has_authority() && !url->encoded_path().empty() && !url->encoded_path().starts_with('/');
}

bool beginsLikeAnIPv4Address(std::string_view text) {
  std::string_view host = hostAndPort(text);
  for (int number = 0; number < 4; ++number) {
    if (number > 0 && !host.starts_with('.')) return false;
    if (number > 0) host.remove_prefix(1);
    const std::size_t digits = std::min(host.find_first_not_of("0123456789"), host.size());
    if (digits == 0) return false;
    host.remove_prefix(digits);
  }
  return true;
}

bool hasUpperCaseVersion(std::string_view text) { return hostAndPort(text).starts_with("[V"); }

/// The one list of where the other parser departs from RFC 3986 and is not followed. A difference that is not
/// explained here is a fault.
struct Difference {
  const char* reason;
  bool (*explains)(std::string_view text);
};
constexpr Difference kKnownDifferences[] = {
    {"takes other characters than a slash after an authority, as a path", hasOtherCharactersAfterAuthority},
    {"ends a registered name that begins like an IPv4 address after the address", beginsLikeAnIPv4Address},
    {"takes a small v alone before the version of an IP literal", hasUpperCaseVersion},
};

void checkAgainstOther(std::string_view text, const std::optional<URL>& url) {
  if (partsOf(url) == otherPartsOf(text)) return;
  const bool isKnown = std::any_of(std::begin(kKnownDifferences), std::end(kKnownDifferences),
                                   [text](const Difference& d) { return d.explains(text); });
  require(isKnown, "both parsers find the same parts");
}

bool isASCII(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](unsigned char c) { return c < 0x80; });
}

void checkURL(std::string_view text, const URL& url) {
  require(isASCII(url.absoluteString()), "a URL is ASCII");
  require(percentEncoded(text, CharacterSet::ASCII) == url.absoluteString(), "only the rest is escaped");
  const auto again = URL::parse(url.absoluteString());
  require(partsOf(again) == partsOf(url) && *again == url, "a URL's text is parsed to the same URL");

  const auto decoder = LumoApiURLDecoder::decoderWithUrl(url);
  require(decoder->scheme() == url.scheme() && decoder->host() == url.host() && decoder->path() == url.path(),
          "the decoder splits like the parser");
  require(url.host() != "", "an empty host is none");
}

}  // namespace

void door(std::string_view input) {
  const std::optional<URL> url = URL::parse(input);
  if (url) checkURL(input, *url);
  if (isASCII(input)) {
    checkAgainstOther(input, url);
  } else if (url) {
    checkAgainstOther(url->absoluteString(), url);
  }
}

}  // namespace lumo::fuzz
