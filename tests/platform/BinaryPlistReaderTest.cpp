#include "platform/archive/BinaryPlistReader.h"

#include <gtest/gtest.h>

namespace lumo {
namespace {

using namespace std::string_literals;
using enum PlistKind;

// A list of the given objects and table of offsets; the first object is the top.
std::optional<PlistReader> open(const std::string& objects, const std::string& table,
    std::size_t offsetWidth = 1, std::size_t referenceWidth = 1) {
  std::string list = "bplist00" + objects + table + std::string(6, '\0');
  list += {static_cast<char>(offsetWidth), static_cast<char>(referenceWidth)};
  const std::size_t count = offsetWidth == 0 ? 1 : table.size() / offsetWidth;
  for (const std::size_t number : {count, std::size_t{0}, 8 + objects.size()}) {
    for (int shift = 56; shift >= 0; shift -= 8) list += static_cast<char>(number >> shift);
  }
  return PlistReader::open(lumo::Data(std::move(list)));
}

TEST(BinaryPlistReader, OffsetsAndWidthsMustFit) {
  const std::string yes = "\x09", many(300, '\x09'), table(255, '\x08');
  EXPECT_TRUE(open(yes, "\x08") && open(yes, "\0\x08"s, 2) && open(yes, "\0\0\0\x08"s, 4, 8));
  EXPECT_TRUE(open(many, "\x01\x33"s, 2) && open(yes, table) && open(yes, table + '\x08', 1, 2));
  EXPECT_FALSE(open(yes, "\x07") || open(yes, "\x09") || open(yes, "\x08\0"s) || open(yes, ""));
  EXPECT_FALSE(open(yes, "\x08", 0) || open(yes, "\x08", 1, 0) || open(yes, "\0\0\x08"s, 3));
  EXPECT_FALSE(open(yes, "\x08", 1, 3) || open(yes, std::string(15, '\0') + '\x08', 16));
  EXPECT_FALSE(open(many, "\x33") || open(yes, table + '\x08'));
}

TEST(BinaryPlistReader, ReadsObjectsWithinTheirBounds) {
  const std::string ones(8, '\xFF'), zeros(8, '\0'), seven = zeros.substr(1) + '\7';
  const struct {
    std::string bytes;
    std::optional<PlistKind> kind;
    std::uint64_t number = 0;
  } cases[] = {{"\x08", Boolean, 0}, {"\x09", Boolean, 1}, {"\x0F", {}}, {"\x10\xFF", Integer, 255},
      {"\x13" + ones, Integer, UINT64_MAX}, {"\x13" + ones.substr(1), {}},
      {"\x14" + zeros + seven, Integer, 7}, {"\x14" + zeros + ones, UnsignedInteger, UINT64_MAX},
      {"\x14" + ones + ones, Integer, UINT64_MAX}, {"\x14" + ones + seven, {}}, {"\x14" + seven + zeros, {}},
      {"\x14" + zeros + zeros.substr(1), {}}, {"\x15" + ones + ones + ones + ones, {}},
      {"\x22\x40\x20\0\0"s, Real, 0x4004000000000000}, {"\x22\x40\x20\0"s, {}},
      {"\x23\x40\x04" + zeros.substr(2), Real, 0x4004000000000000},
      {"\x33\x40\x04" + zeros.substr(2), Date, 0x4004000000000000}, {"\x33" + ones.substr(1), {}},
      {"\x80\7", UID, 7}, {"\x82\1\0\7"s, UID, 0x10007}, {"\x87\0\0\0\0"s + ones.substr(4), UID, 0xFFFFFFFF},
      {"\x87\0\0\0\1\0\0\0\0"s, {}}, {"\x81\7", {}}, {"\x88\0"s + zeros, {}}, {"\x41x", PlistKind::Data},
      {"\x42x", {}}, {"\x61\0x"s, UTF16}, {"\x62\0xx"s, {}}, {"\x4F\x10\1x", PlistKind::Data}, {"\x4F", {}},
      {"\x4F\x10\2x", {}}, {"\x4F\x13" + ones, {}}, {"\x6F\x13\x7F" + ones.substr(1), {}},
      {"\x4F\x20\1x", {}}, {"\xA1\0"s, Array}, {"\xA1", {}}, {"\xD1\0\0"s, Dictionary}, {"\xD1\0"s, {}},
      {"\xC1\0"s, {}}, {"\x70", {}}};
  for (const auto& [bytes, kind, number] : cases) {
    SCOPED_TRACE(testing::PrintToString(bytes));
    const auto object = open(bytes, "\x08").value().top();
    ASSERT_EQ(object.has_value(), kind.has_value());
    EXPECT_TRUE(!object || (object->kind == kind && object->number == number));
  }
}

TEST(BinaryPlistReader, TextsAndReferences) {
  const auto text = [](const std::string& bytes) {
    return PlistReader::text(open(bytes, "\x08")->top().value());
  };
  EXPECT_EQ(text("\x64\xD8\x3D\xDE\x00\xD8\x3D\x00\x41"s), "😀\xED\xA0\xBD\x41");
  EXPECT_EQ(text("\x52\xC3\xA9"), std::nullopt);
  EXPECT_EQ(text("\x42xx"), std::nullopt);

  // As many entries "k": true as said.
  const auto dictionary = [](char entries) {
    const std::string keys(static_cast<std::size_t>(entries), '\1'), values(keys.size(), '\2');
    const std::size_t end = 11 + 2 * keys.size();
    const std::string table{'\x08', static_cast<char>(end), static_cast<char>(end + 2)};
    return open("\xDF\x10"s + entries + keys + values + "\x51k\x09", table);
  };
  const auto small = dictionary(16), large = dictionary(17);
  EXPECT_TRUE(small->find(*small->top(), "k") && !small->find(*small->top(), "K"));
  EXPECT_FALSE(large->find(*large->top(), "k"));
  const auto dangling = open("\xA2\1\0"s, "\x08");
  EXPECT_TRUE(!dangling->element(*dangling->top(), 0) && dangling->element(*dangling->top(), 1));
}

}  // namespace
}  // namespace lumo
