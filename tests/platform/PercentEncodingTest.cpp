#include "platform/text/PercentEncoding.h"

#include <gtest/gtest.h>

#include <fstream>
#include <vector>

namespace lumo {
namespace {

using enum CharacterSet;

TEST(PercentEncoding, Encodes) {
  const struct {
    std::string_view text;
    std::optional<std::string> query, alphanumeric, ascii;
  } cases[] = {{"", "", "", ""}, {"50% x", "50%25%20x", "50%25%20x", "50% x"},
      {"s+/=&?#", "s+/=&?%23", "s%2B%2F%3D%26%3F%23", "s+/=&?#"},
      {std::string_view("\0\x7F", 2), "%00%7F", "%00%7F", std::string("\0\x7F", 2)},
      {"\u00E9\u4E2D\u3002z", "%C3%A9%E4%B8%AD%E3%80%82z", "\u00E9\u4E2D%E3%80%82z",
          "%C3%A9%E4%B8%AD%E3%80%82z"},
      {"\U0001F600\U00020000", "%F0%9F%98%80%F0%A0%80%80", "%F0%9F%98%80\U00020000",
          "%F0%9F%98%80%F0%A0%80%80"},
      {"a\xED\xA0\x80", {}, {}, {}}, {"a\xE4\xB8", {}, {}, {}}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(percentEncoded(c.text, QueryAllowed), c.query);
    EXPECT_EQ(percentEncoded(c.text, Alphanumeric), c.alphanumeric);
    EXPECT_EQ(percentEncoded(c.text, ASCII), c.ascii);
  }
}

std::string utf8(unsigned c) {
  const auto tail = [c](int shift) { return static_cast<char>(0x80 | (c >> shift & 0x3F)); };
  if (c < 0x80) return {static_cast<char>(c)};
  if (c < 0x800) return {static_cast<char>(0xC0 | c >> 6), tail(0)};
  if (c < 0x10000) return {static_cast<char>(0xE0 | c >> 12), tail(6), tail(0)};
  return {static_cast<char>(0xF0 | c >> 18), tail(12), tail(6), tail(0)};
}

TEST(PercentEncoding, SetsHoldTheRightCharactersOfUnicode) {
  std::vector<bool> alphanumeric(0x110000);
  std::ifstream database("/usr/share/unicode/UnicodeData.txt");
  unsigned previous = 0;
  for (std::string line; std::getline(database, line);) {
    const auto code = static_cast<unsigned>(std::stoul(line, nullptr, 16));
    const std::size_t name = line.find(';') + 1;
    const std::size_t category = line.find(';', name) + 1;
    const bool endsBlock = line.compare(category - 6, 6, "Last>;") == 0;
    for (unsigned c = endsBlock ? previous : code; c <= code; ++c) {
      alphanumeric[c] = std::string_view("LMN").find(line[category]) != std::string_view::npos;
    }
    previous = code;
  }
  ASSERT_TRUE(alphanumeric['a']) << "the package unicode-data is missing";

  constexpr std::string_view kQuery =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~!$&'()*+,;=:@/?";
  for (unsigned c = 0; c < 0x110000; ++c) {
    if (c >= 0xD800 && c < 0xE000) continue;
    const std::string text = utf8(c);
    ASSERT_EQ(percentEncodedSize(text, Alphanumeric), text.size() * (alphanumeric[c] ? 1 : 3)) << c;
    ASSERT_EQ(
        percentEncodedSize(text, QueryAllowed), text.size() * (kQuery.find(text) != kQuery.npos ? 1 : 3))
        << c;
  }
}

TEST(PercentEncoding, Decodes) {
  const struct {
    std::string_view text;
    std::optional<std::string> decoded;
  } cases[] = {{"", ""}, {"a+b", "a+b"}, {"%e4%B8%Ad%2541", "\u4E2D%41"}, {"%00%7E", std::string("\0~", 2)},
      {"%C3\xA9", "\u00E9"}, {"%", {}}, {std::string_view("%41", 2), {}}, {"%%41", {}}, {"%4g", {}},
      {"%/0", {}}, {"%:0", {}}, {"%@0", {}}, {"%+1", {}}, {"%0`", {}}, {"%C3", {}}, {"%ED%A0%80", {}},
      {"\xFF", {}}};
  for (const auto& c : cases) EXPECT_EQ(percentDecoded(c.text), c.decoded) << c.text;
}

}  // namespace
}  // namespace lumo
