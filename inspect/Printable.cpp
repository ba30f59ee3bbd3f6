#include "inspect/Printable.h"

#include <algorithm>
#include <iterator>

namespace lumo::inspection {

namespace {

constexpr char32_t kNone = 0xFFFFFFFF;

struct Character {
  std::size_t length;  ///< in bytes
  char32_t code;       ///< kNone for a byte that is not UTF-8
};

/// The first character of a text that is not empty.
Character firstOf(std::string_view text) noexcept {
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned char lead = byte(0);
  if (lead < 0x80) return {1, lead};
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return {1, kNone};
  char32_t code = lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return {1, kNone};
    code = code << 6 | (byte(i) & 0x3FU);
  }
  const bool isOverlong = code < (length == 4 ? 0x10000U : length == 3 ? 0x800U : 0x80U);
  if (isOverlong || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return {1, kNone};
  return {length, code};
}

struct Range {
  char32_t first, last;
};

template <std::size_t N>
constexpr bool isIn(const Range (&ranges)[N], char32_t code) noexcept {
  const Range* range =
      std::lower_bound(ranges, ranges + N, code, [](const Range& r, char32_t c) { return r.last < c; });
  return range != ranges + N && range->first <= code;
}

/// Controls, marks of direction, separators of lines, invisible characters. Not the joiners, which letters
/// and emoji are made with.
constexpr Range kUnsafe[] = {{0x00, 0x1F},      {0x7F, 0x9F},     {0xAD, 0xAD},     {0x61C, 0x61C},
                             {0x180E, 0x180E},  {0x200B, 0x200B}, {0x200E, 0x200F}, {0x2028, 0x202E},
                             {0x2060, 0x206F},  {0xFEFF, 0xFEFF}, {0xFFF9, 0xFFFB}, {0xFFFE, 0xFFFF},
                             {0xE0000, 0xE007F}};

/// What takes no column, and what takes two: the blocks that matter in messages.
constexpr Range kNoColumn[] = {{0x300, 0x36F},   {0x483, 0x489},    {0x591, 0x5BD},   {0x610, 0x61A},
                               {0x64B, 0x65F},   {0x200C, 0x200D},  {0x20D0, 0x20FF}, {0xFE00, 0xFE0F},
                               {0xFE20, 0xFE2F}, {0x1F3FB, 0x1F3FF}};
constexpr Range kWide[] = {{0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0xA4CF},   {0xAC00, 0xD7A3},
                           {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},   {0xFFE0, 0xFFE6},
                           {0x1F300, 0x1F64F}, {0x1F680, 0x1F6FF}, {0x1F900, 0x1FAFF}, {0x20000, 0x3FFFD}};

std::size_t columnsOf(char32_t code) noexcept {
  if (code < 0x300) return 1;
  if (isIn(kNoColumn, code)) return 0;
  return isIn(kWide, code) ? 2 : 1;
}

void appendHexadecimal(std::string& out, std::uint32_t number, int digits) {
  for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4) out += "0123456789abcdef"[number >> shift & 15];
}

void appendEscape(std::string& out, char32_t code, unsigned char byte) {
  if (code == '\n') {
    out += "\\n";
  } else if (code == '\r') {
    out += "\\r";
  } else if (code == '\t') {
    out += "\\t";
  } else if (code == kNone || code < 0x80) {
    appendHexadecimal(out += "\\x", byte, 2);
  } else {
    appendHexadecimal(out += "\\u{", code, code > 0xFFFF ? 5 : 4);
    out += '}';
  }
}

void appendJSONEscape(std::string& out, char32_t code) {
  if (code > 0xFFFF) {
    appendHexadecimal(out += "\\u", 0xD800 + ((code - 0x10000) >> 10), 4);
    code = 0xDC00 + ((code - 0x10000) & 0x3FF);
  }
  appendHexadecimal(out += "\\u", code, 4);
}

template <class Visitor>
void forEachCharacter(std::string_view text, const Visitor& visit) {
  while (!text.empty()) {
    const Character character = firstOf(text);
    if (!visit(character.code, text.substr(0, character.length))) return;
    text.remove_prefix(character.length);
  }
}

}  // namespace

std::string printable(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  forEachCharacter(text, [&](char32_t code, std::string_view bytes) {
    if (code == kNone || isIn(kUnsafe, code)) {
      appendEscape(out, code, static_cast<unsigned char>(bytes[0]));
    } else {
      out += bytes;
    }
    return true;
  });
  return out;
}

std::string printableJSON(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  forEachCharacter(text, [&](char32_t code, std::string_view bytes) {
    if (code != '\n' && code != kNone && isIn(kUnsafe, code)) {
      appendJSONEscape(out, code);
    } else {
      out += bytes;
    }
    return true;
  });
  return out;
}

std::size_t columnsOf(std::string_view text) noexcept {
  std::size_t columns = 0;
  forEachCharacter(text, [&](char32_t code, std::string_view) {
    columns += columnsOf(code);
    return true;
  });
  return columns;
}

std::size_t charactersOf(std::string_view text) noexcept {
  std::size_t count = 0;
  forEachCharacter(text, [&](char32_t, std::string_view) { return ++count, true; });
  return count;
}

std::vector<std::string> wrapped(std::string_view text, std::size_t columns) {
  std::vector<std::string> lines(1);
  std::size_t used = 0;
  const auto breakLine = [&] {
    std::string& line = lines.back();
    const std::size_t blank = line.rfind(' ');
    std::string rest;
    if (blank != std::string::npos && blank > line.size() / 2) {
      rest = line.substr(blank + 1);
      line.resize(blank);
    }
    used = columnsOf(rest);
    lines.push_back(std::move(rest));
  };
  forEachCharacter(text, [&](char32_t code, std::string_view bytes) {
    const std::size_t width = columnsOf(code);
    if (used + width > columns) breakLine();
    lines.back() += bytes;
    used += width;
    return true;
  });
  return lines;
}

std::string cut(std::string_view text, std::size_t columns) {
  if (columnsOf(text) <= columns) return std::string(text);
  std::string out;
  std::size_t used = 0;
  forEachCharacter(text, [&](char32_t code, std::string_view bytes) {
    used += columnsOf(code);
    if (used >= columns) return false;
    out += bytes;
    return true;
  });
  return out + "…";
}

std::string grouped(std::uint64_t number) {
  std::string digits = std::to_string(number);
  for (std::size_t at = digits.size(); at > 3;) digits.insert(at -= 3, 1, ',');
  return digits;
}

}  // namespace lumo::inspection
