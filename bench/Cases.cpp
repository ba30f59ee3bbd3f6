#include "bench/Cases.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <limits>

namespace bench {

namespace {

constexpr std::string_view kMemcpy = "x memcpy";
constexpr std::string_view kFaster = "x faster";

// clang-format off
constexpr Case kCases[] = {
    {"base64 encode, 64 KiB", "base64 encode/64 KiB/lumo", "memcpy/64 KiB", kMemcpy, Bound::AtMost, 1.4, 3},
    {"base64 encode, 1 MiB", "base64 encode/1 MiB/lumo", "memcpy/1 MiB", kMemcpy, Bound::AtMost, 1.4, 3},
    {"base64 encode, 5 MiB", "base64 encode/5 MiB/lumo", "memcpy/5 MiB", kMemcpy, Bound::AtMost, 1.4, 3},
    {"base64 encode, 1 MiB, than OpenSSL", "base64 encode/1 MiB/openssl", "base64 encode/1 MiB/lumo", kFaster, Bound::Shown, 0},
    {"base64 decode, 64 KiB", "base64 decode/64 KiB/lumo", "memcpy/64 KiB", kMemcpy, Bound::AtMost, 1.6, 3.5},
    {"base64 decode, 1 MiB", "base64 decode/1 MiB/lumo", "memcpy/1 MiB", kMemcpy, Bound::AtMost, 1.6, 3.5},
    {"base64 decode, 5 MiB", "base64 decode/5 MiB/lumo", "memcpy/5 MiB", kMemcpy, Bound::AtMost, 1.6, 3.5},
    {"base64 decode, 1 MiB, than OpenSSL", "base64 decode/1 MiB/openssl", "base64 decode/1 MiB/lumo", kFaster, Bound::Shown, 0},
    {"percent-encode, 1 KiB of ideographs, than Boost.URL", "percent-encode/1 KiB of ideographs/boost", "percent-encode/1 KiB of ideographs/lumo", kFaster, Bound::AtLeast, 8},
    {"percent-encode, 64 KiB of ideographs, than Boost.URL", "percent-encode/64 KiB of ideographs/boost", "percent-encode/64 KiB of ideographs/lumo", kFaster, Bound::AtLeast, 8},
    {"text share, 5 letters, than plain", "text share/5 letters/plain", "text share/5 letters/lumo", kFaster, Bound::AtLeast, 10},
    {"text share, 5 letters, allocations", "text share/5 letters/allocations", "", "", Bound::AtMost, 3},
    {"text share, 5 letters, instructions", "text share/5 letters/instructions", "", "", Bound::AtMost, 3000},
    {"text share, 1536 letters, than plain", "text share/1536 letters/plain", "text share/1536 letters/lumo", kFaster, Bound::AtLeast, 40},
    {"text share, 1536 ideographs, than plain", "text share/1536 ideographs/plain", "text share/1536 ideographs/lumo", kFaster, Bound::AtLeast, 40},
    {"link share, 1 MiB preview", "link share/1 MiB preview/lumo", "link share/1 MiB preview/base64", "x its base64", Bound::AtMost, 1.15},
    {"link share, 1 MiB preview, than plain", "link share/1 MiB preview/plain", "link share/1 MiB preview/lumo", kFaster, Bound::Shown, 0},
    {"link share, 1 MiB preview, large allocations", "link share/1 MiB preview/large allocations", "", "", Bound::AtMost, 1},
    {"link share, 1 MiB preview, memory beyond the URL", "link share/1 MiB preview/peak beyond the URL", "", "bytes", Bound::AtMost, 65536},
    {"staging, 1 MiB", "staging/1 MiB/lumo", "staging/1 KiB/lumo", "x 1 KiB", Bound::AtMost, 1.2},
    {"staging, 50 MiB", "staging/50 MiB/lumo", "staging/1 KiB/lumo", "x 1 KiB", Bound::AtMost, 1.2},
    {"keyed archive, 1 KiB", "keyed archive/1 KiB/lumo", "", "ns", Bound::AtMost, 500},
    {"keyed archive, 1 MiB", "keyed archive/1 MiB/lumo", "", "ns", Bound::AtMost, 500},
    {"keyed archive, 50 MiB", "keyed archive/50 MiB/lumo", "", "ns", Bound::AtMost, 500},
    {"keyed archive, 1 MiB, than libplist", "keyed archive/1 MiB/libplist", "keyed archive/1 MiB/lumo", kFaster, Bound::Shown, 0},
    {"incoming, 300 bytes, split", "incoming/300 bytes, split/lumo", "incoming/300 bytes/boost", "x Boost.URL", Bound::AtMost, 0.35},
    {"incoming, 300 bytes, split, than plain", "incoming/300 bytes/plain", "incoming/300 bytes, split/lumo", kFaster, Bound::Shown, 0},
    {"incoming, 300 bytes, whole message", "incoming/300 bytes, message/lumo", "incoming/300 bytes/boost", "x Boost.URL", Bound::AtMost, 0.8},
    {"incoming, 300 bytes, instructions", "incoming/300 bytes/instructions", "", "", Bound::Shown, 0},
    {"incoming, 1.4 MB, whole message", "incoming/1.4 MB/lumo", "incoming/1.4 MB/memcpy", kMemcpy, Bound::AtMost, 2},
    {"incoming, 1.4 MB, than Boost.URL", "incoming/1.4 MB/boost", "incoming/1.4 MB/lumo", kFaster, Bound::Shown, 0},
    {"JSON writing, 150 bytes", "JSON writing/150 bytes/lumo", "JSON writing/150 bytes/rapidjson", "x RapidJSON", Bound::AtMost, 0.6},
    {"JSON writing, 100 KB", "JSON writing/100 KB/lumo", "JSON writing/100 KB/rapidjson", "x RapidJSON", Bound::AtMost, 0.6},
    {"JSON writing, 100 KB, than RapidJSON checking UTF-8", "JSON writing/100 KB/rapidjson, UTF-8 checked", "JSON writing/100 KB/lumo", kFaster, Bound::Shown, 0},
    {"avatar, 12 megapixels, than plain", "avatar/12 megapixels/plain", "avatar/12 megapixels/lumo", kFaster, Bound::AtLeast, 1.3},
    {"avatar, 48 megapixels, than plain", "avatar/48 megapixels/plain", "avatar/48 megapixels/lumo", kFaster, Bound::AtLeast, 1.5},
    {"avatar, 12 megapixels, memory beyond both", "avatar/12 megapixels/peak beyond input and output", "", "bytes", Bound::AtMost, 8 << 20},
    {"avatar, 48 megapixels, memory beyond both", "avatar/48 megapixels/peak beyond input and output", "", "bytes", Bound::AtMost, 8 << 20},
    {"encode --lines, text shares", "lines/a second", "", "a second", Bound::AtLeast, 150000},
};
// clang-format on

double figureOf(const Figures& figures, std::string_view name) {
  const auto found = figures.find(name);
  return found == figures.end() ? std::numeric_limits<double>::quiet_NaN() : found->second;
}

std::string text(double number, std::string_view unit) {
  std::array<char, 32> digits{};
  const bool whole = number >= 100 || number == std::floor(number);
  std::snprintf(digits.data(), digits.size(), "%.*f", whole ? 0 : number < 10 ? 3 : 1, number);
  std::string result = digits.data();
  for (std::size_t place = result.size(); whole && place > 3; place -= 3) result.insert(place - 3, ",");
  return unit.empty() ? result : result.append(" ").append(unit);
}

}  // namespace

bool Outcome::reached() const {
  return of->bound == Bound::AtLeast ? measured >= target : of->bound == Bound::Shown || measured <= target;
}

double Outcome::margin() const { return of->bound == Bound::AtLeast ? measured / target : target / measured; }

std::string Outcome::measuredText() const { return std::isnan(measured) ? "none" : text(measured, of->unit); }

std::string Outcome::targetText() const {
  if (of->bound == Bound::Shown) return "";
  return (of->bound == Bound::AtLeast ? ">= " : "<= ") + text(target, "");
}

std::string_view Outcome::verdict() const {
  return of->bound == Bound::Shown ? "" : reached() ? "reached" : "missed";
}

std::vector<Outcome> outcomes(const Figures& figures, bool hasVBMI) {
  std::vector<Outcome> rows;
  for (const Case& row : kCases) {
    const double per = row.per.empty() ? 1 : figureOf(figures, row.per);
    rows.push_back({&row, figureOf(figures, row.figure) / per, hasVBMI ? row.target : row.targetAVX2});
  }
  return rows;
}

}  // namespace bench
