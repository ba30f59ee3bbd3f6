#include "platform/text/Text.h"

#include <gtest/gtest.h>

#include <string>

namespace lumo {
namespace {

TEST(Text, ValidityAndUTF16Length) {
  // Valid: the borders of each length and of the surrogates. Invalid: surrogates (alone, and a pair that
  // stands for an emoji), stray bytes, overlong forms, characters past the last one, characters cut off.
  const struct {
    std::string text;
    bool valid;
    std::size_t units;
  } cases[] = {{"", true, 0}, {std::string(1, '\0'), true, 1}, {"a\u00E9\u4E2D\U0001F600", true, 5},
      {"\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF", true, 7},
      {"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", true, 4}, {"\xED\xA0\x80", false, 1}, {"\xED\xBF\xBF", false, 1},
      {"\xED\xA0\xBD\xED\xB8\x80", false, 2}, {"\xED\xA0", false, 2}, {"\x80", false, 1},
      {"\xFF\xFE\u4E2D", false, 3}, {"\xC0\x80", false, 2}, {"\xC1\xBF", false, 2},
      {"\xE0\x9F\xBF", false, 3}, {"\xF0\x8F\xBF\xBF", false, 4}, {"\xF4\x90\x80\x80", false, 4},
      {"\xF5\x80\x80\x80", false, 4}, {"\xC3", false, 1}, {"\xE4\xB8", false, 2},
      {"\xE4\xB8\xC3\xA9", false, 3}, {"\xF0\x9F\x98", false, 3}, {"\xF0\x9F\x98\x41", false, 4}};
  for (std::size_t around = 0; around < 20; ++around) {  // at every place within a machine word
    for (const auto& c : cases) {
      const std::string pad(around, 'x');
      SCOPED_TRACE(testing::PrintToString(pad + c.text));
      EXPECT_EQ(isValidUTF8(pad + c.text + pad), c.valid);
      EXPECT_EQ(utf16Length(pad + c.text + pad), c.units + 2 * around);
    }
  }
  std::string emoji;
  for (int i = 0; i < 768; ++i) emoji += "\U0001F600";
  EXPECT_EQ(utf16Length(emoji), 1536U);
}

}  // namespace
}  // namespace lumo
