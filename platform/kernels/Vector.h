#pragma once

#include "platform/kernels/Kernels.h"

#include <algorithm>
#include <bit>

// The text kernels, written once for every vector unit. A unit U has Bytes, kSize bytes that are worked on at
// once, and Bits, an integer with kBits equal bits for each of these bytes, the first byte lowest. It pays
// for texts of kLeast bytes and more. It can
// - load(), loadPart() with zeros after the part, store(), fill() with one byte, repeat a table();
// - lookUp() indexes below 16 in a table, and by row() the lower nibbles of ASCII characters;
// - take the low() and high() nibbles, and the differences of minus(), which stop at 0;
// - say where bytes meet() in a bit, are equal(), atLeast() as large, beyondASCII() or UTF-8 continuations();
// - escapeAll() bytes, and load the Edge of a text as BufferedEdge does.
//
// Each source includes this header after telling its compiler which instructions to use. Hence all here are
// templates over the source's own unit: a function that two sources shared might be compiled for one machine
// and run on another.

namespace lumo::kernels {

using Table = std::array<std::uint8_t, 16>;

inline constexpr Table kPowersOfTwo = {1, 2, 4, 8, 16, 32, 64, 128};
inline constexpr Table kUpperDigits = {'0', '1', '2', '3', '4', '5', '6', '7',
                                       '8', '9', 'A', 'B', 'C', 'D', 'E', 'F'};

// Two bytes in a row that cannot stand in UTF-8: those whose three nibbles (the second nibble of the second
// byte does not matter) are all in their sets.
struct BadPair {
  unsigned high, low, nextHigh;
};

constexpr unsigned nibbles(unsigned first, unsigned last) noexcept { return (2U << last) - (1U << first); }

// Two continuation bytes, the last of them, are no error where a character of three bytes or four began
// before.
inline constexpr BadPair kBadPairs[8] = {
    {nibbles(0x0, 0x7), nibbles(0, 15), nibbles(0x8, 0xB)},                      // nothing to continue
    {nibbles(0xC, 0xF), nibbles(0, 15), nibbles(0x0, 0x7) | nibbles(0xC, 0xF)},  // cut off
    {nibbles(0xC, 0xC), nibbles(0, 1), nibbles(0x8, 0xB)},                       // overlong, two bytes
    {nibbles(0xE, 0xE), nibbles(0, 0), nibbles(0x8, 0x9)},                       // overlong, three bytes
    {nibbles(0xE, 0xE), nibbles(13, 13), nibbles(0xA, 0xB)},                     // surrogates
    {nibbles(0xF, 0xF), nibbles(0, 0) | nibbles(5, 15), nibbles(0x8, 0x8)},      // overlong, or past U+10FFFF
    {nibbles(0xF, 0xF), nibbles(4, 15), nibbles(0x9, 0xB)},                      // past U+10FFFF
    {nibbles(0x8, 0xB), nibbles(0, 15), nibbles(0x8, 0xB)},                      // two continuation bytes
};

// For each value of one of the nibbles, the bad pairs that it may belong to, a bit for each.
constexpr Table badPairs(unsigned BadPair::*nibble) noexcept {
  Table table{};
  for (std::size_t value = 0; value < table.size(); ++value) {
    for (std::size_t pair = 0; pair < std::size(kBadPairs); ++pair) {
      if (kBadPairs[pair].*nibble >> value & 1) {
        table[value] = static_cast<std::uint8_t>(table[value] | 1U << pair);
      }
    }
  }
  return table;
}

inline constexpr Table kBadHigh = badPairs(&BadPair::high);
inline constexpr Table kBadLow = badPairs(&BadPair::low);
inline constexpr Table kBadNextHigh = badPairs(&BadPair::nextHigh);

template <class U>
constexpr int kWidth = static_cast<int>(U::kSize) * U::kBits;

template <class U>
constexpr typename U::Bits allOnes() noexcept {
  return static_cast<typename U::Bits>(~typename U::Bits{0});
}

template <class U>
std::size_t countOf(typename U::Bits bits) noexcept {
  return static_cast<std::size_t>(std::popcount(bits)) / U::kBits;
}

// How many bytes come before the first whose bits are set.
template <class U>
std::size_t firstOf(typename U::Bits bits) noexcept {
  return static_cast<std::size_t>(std::countr_zero(bits)) / U::kBits;
}

template <class U>
typename U::Bits inSet(typename U::Bytes block, typename U::Bytes rows) noexcept {
  return U::meet(U::row(rows, block), U::lookUp(U::table(kPowersOfTwo), U::high(block)));
}

template <class U>
typename U::Bytes loadUpTo(std::string_view text) noexcept {
  return text.size() >= U::kSize ? U::load(text.data()) : U::loadPart(text.data(), text.size());
}

template <class U>
bool isASCII(typename U::Bytes bytes) noexcept {
  return U::beyondASCII(bytes) == 0;
}

// The block at a place of a text, and those up to three bytes before it, with NUL characters around the text.
template <class U>
class BufferedEdge {
 public:
  BufferedEdge(std::string_view text, std::size_t at) noexcept {
    const std::size_t before = std::min<std::size_t>(at, 3);
    const std::size_t size = std::min(text.size() - at, U::kSize);
    std::copy_n(text.data() + at - before, before + size, block_ + 3 - before);
  }

  typename U::Bytes load(std::size_t back) const noexcept { return U::load(block_ + 3 - back); }

 private:
  char block_[3 + U::kSize] = {};
};

// Checks a text and measures it, block after block.
template <class U>
class UTF8Scan {
 public:
  // Spelled out, for what the compiler makes by itself it makes for any machine.
  explicit UTF8Scan(std::size_t unitsBefore) noexcept : errors_(U::fill(0)), units_(unitsBefore) {}

  // The three bytes before the block are read too.
  void scan(const char* block) noexcept {
    const auto bytes = U::load(block);
    const bool nothingToCheck = afterASCII_ && isASCII<U>(bytes);
    if (nothingToCheck) {
      units_ += U::kSize;
      return;
    }
    afterASCII_ = isASCII<U>(bytes);
    check(bytes, U::load(block - 1), U::load(block - 2), U::load(block - 3));
  }

  // The same for the block that begins there, or a part of it. NUL characters end a character that is cut
  // off, and they cannot be continued.
  void scanEdge(std::string_view text, std::size_t at) noexcept {
    const typename U::Edge edge(text, at);
    afterASCII_ = false;
    check(edge.load(0), edge.load(1), edge.load(2), edge.load(3));
    units_ -= U::kSize - std::min(text.size() - at, U::kSize);
  }

  std::size_t result() const noexcept { return U::meet(errors_, errors_) == 0 ? units_ : kNotUTF8; }

 private:
  using Bytes = typename U::Bytes;

  void check(Bytes bytes, Bytes before1, Bytes before2, Bytes before3) noexcept {
    units_ += U::kSize - countOf<U>(U::continuations(bytes)) + countOf<U>(U::atLeast(bytes, 0xF0));
    const Bytes bad = U::lookUp(U::table(kBadHigh), U::high(before1)) &
                      U::lookUp(U::table(kBadLow), U::low(before1)) &
                      U::lookUp(U::table(kBadNextHigh), U::high(bytes));
    // The topmost bit, that of the last bad pair, is set two bytes after E0 or more and three after F0 or
    // more: there, and only there, two continuation bytes must be.
    const Bytes third = U::minus(before2, U::fill(0xE0 - 0x80)) | U::minus(before3, U::fill(0xF0 - 0x80));
    errors_ = errors_ | (bad ^ (third & U::fill(0x80)));
  }

  Bytes errors_;
  std::size_t units_;
  bool afterASCII_ = true;
};

template <class U>
std::size_t utf16Length(std::string_view text) noexcept {
  if (text.size() < U::kLeast) return kPlain.utf16Length(text);
  std::size_t at = 0;
  while (text.size() - at >= U::kSize && isASCII<U>(U::load(text.data() + at))) at += U::kSize;
  const std::size_t rest = text.size() - at;
  if (rest < U::kSize && isASCII<U>(loadUpTo<U>(text.substr(at)))) return text.size();

  UTF8Scan<U> scan(at);
  if (at == 0 && rest >= U::kSize) {
    scan.scanEdge(text, at);
    at += U::kSize;
  }
  for (; text.size() - at >= U::kSize; at += U::kSize) scan.scan(text.data() + at);
  scan.scanEdge(text, at);
  return scan.result();
}

template <class U>
std::size_t escapedRun(std::string_view text, const ASCIISet& set) noexcept {
  if (text.size() < U::kLeast) return kPlain.escapedRun(text, set);
  using Bits = typename U::Bits;
  const auto rows = U::table(set.rows), hexadecimalRows = U::table(kHexadecimal.rows);
  Bits begun = 0;  // the digits that an escape of the block before still needs
  std::size_t end = text.size();
  for (std::size_t at = 0; at < text.size(); at += U::kSize) {
    const auto block = loadUpTo<U>(text.substr(at));
    const Bits percents = U::equal(block, '%');
    Bits good = inSet<U>(block, rows) | percents;
    if ((percents | begun) != 0) {
      const Bits digits = begun | percents << U::kBits | percents << 2 * U::kBits;
      good = (good & ~digits) | (digits & inSet<U>(block, hexadecimalRows));
      begun = percents >> (kWidth<U> - U::kBits) | percents >> (kWidth<U> - 2 * U::kBits);
    }
    if (good != allOnes<U>()) {
      end = at + firstOf<U>(~good);  // no further than the end, past which nothing is good or all is
      break;
    }
  }
  // All up to here is good, but the last escape may lack digits.
  for (std::size_t back = 1; back <= 2 && back <= end; ++back) {
    if (text[end - back] == '%') return end - back;
  }
  return end;
}

template <class U>
std::size_t count(std::string_view text, const ASCIISet& set) noexcept {
  if (text.size() < U::kLeast) return kPlain.count(text, set);
  const auto rows = U::table(set.rows);
  std::size_t found = 0, at = 0;
  for (; text.size() - at >= U::kSize; at += U::kSize) {
    found += countOf<U>(inSet<U>(U::load(text.data() + at), rows));
  }
  if (at == text.size()) return found;
  found += countOf<U>(inSet<U>(U::loadPart(text.data() + at, text.size() - at), rows));
  return set.contains('\0') ? found - (at + U::kSize - text.size()) : found;
}

// Escapes the blocks that the text begins with, as long as they have no ASCII character; gives their size.
template <class U>
std::size_t escapeBeyondASCII(std::string_view text, char* out) noexcept {
  std::size_t at = 0;
  for (; text.size() - at >= U::kSize; at += U::kSize) {
    const auto bytes = U::load(text.data() + at);
    if (U::beyondASCII(bytes) != allOnes<U>()) break;
    U::escapeAll(bytes, out + 3 * at);
  }
  return at;
}

template <class U>
char* escape(std::string_view text, const ASCIISet& kept, char* out) noexcept {
  const auto rows = U::table(kept.rows);
  while (text.size() >= U::kSize + 3) {
    const auto bytes = U::load(text.data());
    const typename U::Bits found = inSet<U>(bytes, rows);
    std::size_t size = U::kSize;
    if (found == allOnes<U>()) {
      U::store(bytes, out);
      out += size;
    } else if (found != 0) {
      out = escapeFollowed(text.substr(0, size), kept, out);
    } else {
      U::escapeAll(bytes, out);
      size += escapeBeyondASCII<U>(text.substr(size), out + 3 * size);
      out += 3 * size;
    }
    text.remove_prefix(size);
  }
  return kPlain.escape(text, kept, out);
}

template <class U>
std::size_t places(char character, std::string_view text, std::span<std::size_t> out) noexcept {
  using Bits = typename U::Bits;
  constexpr Bits kFirstByte = (Bits{1} << U::kBits) - 1;
  std::size_t found = 0;
  for (std::size_t at = 0; at < text.size(); at += U::kSize) {
    Bits bits = U::equal(loadUpTo<U>(text.substr(at)), static_cast<std::uint8_t>(character));
    for (; bits != 0; bits &= ~(kFirstByte << firstOf<U>(bits) * U::kBits)) {
      if (found == out.size()) return found;
      out[found++] = at + firstOf<U>(bits);
    }
  }
  return found;
}

}  // namespace lumo::kernels
