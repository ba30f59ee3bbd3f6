#include "platform/values/JSON.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

namespace lumo {
namespace {

std::string nested(std::size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); }

TEST(JSONTest, WhatIsReadIsWrittenBack) {
  const std::pair<std::string, std::string> kCases[] = {{" null ", "null"}, {"[true, false]", "[true,false]"},
      {R"({ "bc" : 1 , "a" : [ ] , "b\u0063" : { } })", R"({"bc":{},"a":[]})"},
      {R"("\u00e4\ud83d\ude00 \/ \u0041")", R"("ä😀 \/ A")"},
      {R"("\b\f\n\r\t\"\\\u0000\u001F")", R"("\b\f\n\r\t\"\\\u0000\u001f")"},
      {"[18446744073709551615,18446744073709551616]", "[18446744073709551615,18446744073709551616]"},
      {"[-9223372036854775808, -0, -0.0]", "[-9223372036854775808,0,-0]"},
      {"[5.0,1e2,1e20,1E21,-1.5,0.1,1e-7]", "[5,100,100000000000000000000,1e+21,-1.5,0.1,1e-7]"},
      {"[1e-400,-1e-99999,0e999]", "[0,-0,0]"},
      {"[0.001,-0.25,999999999999.999,1e12,1000000000000.5]",
          "[0.001,-0.25,999999999999.999,1000000000000,1000000000000.5]"},
      {"[0.0005,0.0125,1.0005,5e-5]", "[5e-4,0.0125,1.0005,5e-5]"}, {nested(512), nested(512)}};
  for (const auto& [text, expected] : kCases) {
    SCOPED_TRACE(text);
    EXPECT_EQ(writeJSON(parseJSON(text).value()), expected);
  }
}

TEST(JSONTest, EscapesStandAnywhereInATextOfAnyLength) {
  const std::pair<std::string, const char*> kCases[] = {{"\x1F", "\\u001f"}, {"\n", "\\n"}, {"\"", "\\\""},
      {"\\", "\\\\"}, {"/", "\\/"}, {"\x7F !#[]\u00A2\u4E22", "\x7F !#[]\u00A2\u4E22"}};
  for (const std::size_t around : {0u, 1u, 2u, 3u, 4u, 5u, 6u, 7u, 8u, 9u, 15u, 670u, 10'000u}) {
    SCOPED_TRACE(around);
    const std::string pad(around, 'x');
    for (const auto& [text, written] : kCases) {
      EXPECT_EQ(writeJSON(pad + text + text + pad), '"' + pad + written + written + pad + '"');
    }
    EXPECT_EQ(writeJSON(pad + '\xA2' + pad), std::nullopt);
  }
}

TEST(JSONTest, NumbersKeepEveryBitAndTheirKind) {
  EXPECT_EQ(parseJSON("7"), Value(7));
  EXPECT_EQ(parseJSON("7.0"), Value(7.0));
  EXPECT_EQ(parseJSON("18446744073709551615"), Value(~std::uint64_t{0}));
  EXPECT_TRUE(std::signbit(*parseJSON("-0.0")->asDouble()));
  // Just above the middle between two doubles, where a conversion with one rounding too many goes wrong.
  EXPECT_EQ(parseJSON("9007199254740993.0000000000000000000000001"), Value(9007199254740994.0));
  for (const double number : {0.1, 1e-7, 1e21, 5e-324, 1.7976931348623157e308, 2.2250738585072011e-308}) {
    EXPECT_EQ(parseJSON(writeJSON(number).value()), Value(number));
  }
}

TEST(JSONTest, RefusesWhatIsNotJSON) {
  const std::pair<std::string, std::size_t> kCases[] = {{"", 0}, {"[1,]", 3}, {"[1", 2}, {"1 2", 2},
      {"{\"a\" 1}", 5}, {"\xEF\xBB\xBF{}", 0}, {"/**/1", 0}, {"01", 1}, {"NaN", 0}, {"[Infinity]", 1},
      {"[1e999]", 6}, {"-" + std::string(400, '9'), 401}, {R"("\ud83d")", 7}, {R"("\u00g0")", 5},
      {R"("\ude00")", 7}, {"\"\xC3(\"", 1}, {"\"\xED\xA0\x80\"", 1}, {"\"\n\"", 1}, {nested(513), 512},
      {std::string(100'000, '['), 512}};
  for (const auto& [text, offset] : kCases) {
    SCOPED_TRACE(text.substr(0, 40));
    JSONError error;
    EXPECT_EQ(parseJSON(text, &error), std::nullopt);
    EXPECT_EQ(error.offset, offset) << error.message;
  }
}

TEST(JSONTest, RefusesToWriteWhatJSONCannotHold) {
  Value deep;
  for (int level = 0; level < 513; ++level) deep = Value(Value::Array{deep});
  for (const Value& value : {Value(Data()), Value(std::nan("")), Value(HUGE_VAL), Value("\xFF"),
           Value(Value::Dictionary{{"\xC0", 1}}), deep}) {
    EXPECT_EQ(writeJSON(Value::Array{value}), std::nullopt);
  }
  EXPECT_NE(writeJSON(deep.asArray()->front()), std::nullopt);
}

TEST(JSONTest, Styles) {
  const Value value = parseJSON(R"({"a/":[1,{}],"b":[]})").value();
  EXPECT_EQ(writeJSON(value, {.escapeSolidus = false}), R"({"a/":[1,{}],"b":[]})");
  EXPECT_EQ(writeJSON(value, {.indent = 2}), "{\n  \"a\\/\": [\n    1,\n    {}\n  ],\n  \"b\": []\n}");
}

}  // namespace
}  // namespace lumo
