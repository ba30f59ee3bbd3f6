#include "LumoApi/URL.h"

#include "platform/kernels/Kernels.h"
#include "platform/text/PercentEncoding.h"

#include <cstdint>
#include <utility>

namespace lumo {

namespace {

using kernels::ASCIISet;
using kernels::kHexadecimal;

// Where a character may stand; a percent escape may stand in every component but the scheme and the port.
constexpr ASCIISet with(ASCIISet set, std::string_view characters) noexcept {
  for (const char c : characters) set.add(c);
  return set;
}

constexpr ASCIISet kDigit("0123456789");
constexpr ASCIISet kLetter("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
constexpr ASCIISet kAlphanumeric = with(kLetter, "0123456789");
constexpr ASCIISet kInScheme = with(kAlphanumeric, "+-.");
constexpr ASCIISet kInHost = with(kAlphanumeric, "-._~!$&'()*+,;=");
constexpr ASCIISet kInUserInfo = with(kInHost, ":");
constexpr ASCIISet kInPath = with(kInUserInfo, "@/");
constexpr ASCIISet kInQuery = with(kInPath, "?");  // and in the fragment

// The length of the longest beginning of the text that has only characters of the set.
std::size_t run(std::string_view text, const ASCIISet& set) noexcept {
  std::size_t at = 0;
  while (at < text.size() && set.contains(text[at])) ++at;
  return at;
}

// The length of the longest beginning that has only characters of the set and percent escapes.
std::size_t escapedRun(std::string_view text, const ASCIISet& set) noexcept {
  return kernels::best().escapedRun(text, set);
}

bool startsBeyondASCII(std::string_view text) noexcept {
  return !text.empty() && static_cast<std::uint8_t>(text.front()) >= 0x80;
}

bool isDecimalByte(std::string_view text) noexcept {
  if (text.empty() || text.size() > 3 || run(text, kDigit) != text.size()) return false;
  if (text.front() == '0') return text.size() == 1;
  return text.size() < 3 || text <= "255";
}

bool isIPv4(std::string_view text) noexcept {
  for (int dots = 0; dots < 3; ++dots) {
    const std::size_t dot = text.find('.');
    if (dot == text.npos || !isDecimalByte(text.substr(0, dot))) return false;
    text.remove_prefix(dot + 1);
  }
  return isDecimalByte(text);
}

// Eight groups of up to four digits, the last two also as an IPv4 address; one "::" may stand for one group
// or more.
bool isIPv6(std::string_view text) noexcept {
  std::size_t groups = 0;
  bool elided = text.starts_with("::");
  if (elided) text.remove_prefix(2);
  while (!text.empty()) {
    const std::size_t digits = run(text, kHexadecimal);
    const std::string_view next = text.substr(digits);
    if (next.starts_with('.')) {
      if (!isIPv4(text)) return false;
      groups += 2;
      break;
    }
    if (digits == 0 || digits > 4) return false;
    ++groups;
    if (next.empty()) break;
    if (next.front() != ':' || next.size() == 1) return false;
    const bool elision = next[1] == ':';
    if (elision && elided) return false;
    elided = elided || elision;
    text = next.substr(elision ? 2 : 1);
  }
  return elided ? groups < 8 : groups == 8;
}

// An address of a version to come: "v", hexadecimal digits, ".", the address.
bool isIPvFuture(std::string_view text) noexcept {
  if (!text.starts_with('v') && !text.starts_with('V')) return false;
  text.remove_prefix(1);
  const std::size_t version = run(text, kHexadecimal);
  if (version == 0 || text.substr(version, 1) != ".") return false;
  text.remove_prefix(version + 1);
  return !text.empty() && run(text, kInUserInfo) == text.size();
}

}  // namespace

// Reads a text from left to right, one component after the other.
class URL::Parser {
 public:
  explicit Parser(Data text) noexcept { url_.text_ = std::move(text); }

  std::optional<URL> parse() {
    parseScheme();
    if (!parseAuthority()) return std::nullopt;
    const std::size_t path = at_;
    parsePathQueryAndFragment();
    if (startsBeyondASCII(rest())) {
      at_ = path;
      if (!escapeRest()) return std::nullopt;
      parsePathQueryAndFragment();
    }
    if (!rest().empty() || !isPathAllowed()) return std::nullopt;
    return std::move(url_);
  }

 private:
  std::string_view rest() const noexcept { return url_.text_.view().substr(at_); }
  bool nextIs(char character) const noexcept { return rest().starts_with(character); }
  Span take(std::size_t length) noexcept { return {std::exchange(at_, at_ + length), at_}; }

  void parseScheme() noexcept;
  bool parseAuthority() noexcept;
  bool parseHost() noexcept;
  bool escapeRest();
  void parsePathQueryAndFragment() noexcept;
  bool isPathAllowed() const noexcept;

  URL url_;
  std::size_t at_ = 0;
};

void URL::Parser::parseScheme() noexcept {
  const std::size_t length = run(rest(), kInScheme);
  const bool isScheme =
      length > 0 && kLetter.contains(rest().front()) && rest().substr(length).starts_with(':');
  if (!isScheme) return;
  url_.scheme_ = take(length);
  ++at_;
}

bool URL::Parser::parseAuthority() noexcept {
  if (!rest().starts_with("//")) return true;
  at_ += 2;
  const std::size_t userInfo = escapedRun(rest(), kInUserInfo);
  if (rest().substr(userInfo).starts_with('@')) at_ += userInfo + 1;
  if (!parseHost()) return false;
  if (nextIs(':')) at_ += 1 + run(rest().substr(1), kDigit);
  return rest().empty() || nextIs('/') || nextIs('?') || nextIs('#');
}

bool URL::Parser::parseHost() noexcept {
  if (nextIs('[')) {
    const std::size_t close = rest().find(']');
    if (close == std::string_view::npos) return false;
    const std::string_view address = rest().substr(1, close - 1);
    if (!isIPv6(address) && !isIPvFuture(address)) return false;
    url_.host_ = take(close + 1);
  } else if (const std::size_t length = escapedRun(rest(), kInHost); length > 0) {
    url_.host_ = take(length);
  }
  return true;
}

// What is already read is ASCII, so that its places hold in the escaped text too.
bool URL::Parser::escapeRest() {
  const auto size = percentEncodedSize(rest(), CharacterSet::ASCII);
  if (!size) return false;
  DataBuffer escaped = Data::uninitialized(at_ + *size);
  percentEncode(url_.text_.view(), CharacterSet::ASCII, reinterpret_cast<char*>(escaped.bytes));
  url_.text_ = std::move(escaped.data);
  return true;
}

void URL::Parser::parsePathQueryAndFragment() noexcept {
  url_.path_ = take(escapedRun(rest(), kInPath));
  if (nextIs('?')) {
    ++at_;
    url_.query_ = take(escapedRun(rest(), kInQuery));
  }
  if (nextIs('#')) {
    ++at_;
    url_.fragment_ = take(escapedRun(rest(), kInQuery));
  }
}

// Without a scheme, a ":" in the first segment would make the text before it one.
bool URL::Parser::isPathAllowed() const noexcept {
  const std::string_view path = url_.path();
  return url_.scheme() || path.find(':') >= path.find('/');
}

std::optional<URL> URL::parse(std::string_view text) { return parse(Data::copy(text)); }

std::optional<URL> URL::parse(Data text) { return Parser(std::move(text)).parse(); }

URL URL::composed(Data text, std::size_t schemeSize, std::size_t hostSize, std::size_t pathSize) noexcept {
  URL url;
  const std::size_t host = schemeSize + 3, path = host + hostSize, query = path + pathSize;
  url.scheme_ = {0, schemeSize};
  url.host_ = {host, path};
  url.path_ = {path, query};
  if (text.size() > query) url.query_ = {query + 1, text.size()};
  url.text_ = std::move(text);
  return url;
}

std::optional<std::string_view> URL::scheme() const noexcept { return component(scheme_); }

std::optional<std::string_view> URL::host() const noexcept { return component(host_); }

std::string_view URL::path() const noexcept { return component(path_).value_or(std::string_view()); }

std::optional<std::string_view> URL::query() const noexcept { return component(query_); }

Data URL::shared(std::string_view part) const noexcept {
  if (part.empty()) return {};
  return text_.slice(static_cast<std::size_t>(part.data() - absoluteString().data()), part.size());
}

std::optional<std::string_view> URL::fragment() const noexcept { return component(fragment_); }

std::optional<std::string_view> URL::component(Span span) const noexcept {
  if (span.begin > span.end) return std::nullopt;
  return absoluteString().substr(span.begin, span.end - span.begin);
}

}  // namespace lumo
