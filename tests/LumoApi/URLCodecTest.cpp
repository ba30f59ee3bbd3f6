#include "tests/LumoApi/ConverterTest.h"

namespace {

using Text = std::optional<std::string_view>;

std::string encoded(Text scheme, Text host, Text path, const LumoApiQueryDictionary* query) {
  const auto url = LumoApiURLEncoder::urlWithScheme(scheme, host, path, query);
  return url ? std::string(url->absoluteString()) : "(null)";
}

std::string encoded(const LumoApiQueryDictionary& query) { return encoded("s", "h", "/p", &query); }

TEST(URLEncoder, PutsThePartsTogether) {
  const LumoApiQueryDictionary none;
  const LumoApiQueryDictionary app{{"src_type", "app"}, {"version", "1"}};
  EXPECT_EQ(encoded("mlumoapi", "share", "/to_fri", &app), "mlumoapi://share/to_fri?src_type=app&version=1");
  for (const LumoApiQueryDictionary* empty : {&none, static_cast<const LumoApiQueryDictionary*>(nullptr)}) {
    EXPECT_EQ(encoded("mlumoapi", "share", "/to_fri", empty), "mlumoapi://share/to_fri");
    EXPECT_EQ(encoded("scheme", std::nullopt, "/x", empty), "scheme:///x");
    EXPECT_EQ(encoded("scheme", "host", std::nullopt, empty), "scheme://host");
    EXPECT_EQ(encoded(std::nullopt, "host", "/x", empty), "(null)");
    EXPECT_EQ(encoded("scheme", "host", "/a b", empty), "(null)") << "nothing is escaped without a query";
  }
  EXPECT_EQ(encoded("scheme", "host", "/a b", &app), "scheme://host/a%20b?src_type=app&version=1");
  EXPECT_EQ(encoded("scheme", "h ö%", "/", &app), "scheme://h%20%C3%B6%25/?src_type=app&version=1");
  EXPECT_EQ(encoded("sch eme", "host", "/", &app), "(null)");
}

TEST(URLEncoder, EscapesTheWholeTextOnce) {
  const std::pair<const char*, const char*> cases[] = {{"a b", "a%20b"}, {"a=c/d+e?f", "a=c/d+e?f"},
      {"50%", "50%25"}, {"%20", "%2520"}, {"#\"<>[]", "%23%22%3C%3E%5B%5D"}, {"中", "%E4%B8%AD"},
      {"a+b/c=", "a+b/c="}, {"-._~!$'()*,;:@", "-._~!$'()*,;:@"}, {"", ""}, {"\xED\xA0\x80", nullptr},
      {"\xFF", nullptr}};
  for (const auto& [value, expected] : cases) {
    EXPECT_EQ(encoded({{"k", value}}), expected ? "s://h/p?k=" + std::string(expected) : "(null)") << value;
    EXPECT_EQ(encoded({{value, "v"}}), expected ? "s://h/p?" + std::string(expected) + "=v" : "(null)")
        << value;
  }
}

TEST(URLEncoder, WritesEveryKindOfValue) {
  LumoApiQueryDictionary query;
  query.set(std::string("n"), lumo::QueryValue::number(Value(std::int64_t{-7})));
  query.set(std::string("u"), lumo::QueryValue::number(Value(~std::uint64_t{0})));
  query.set(std::string("t"), lumo::QueryValue::base64(std::string("hello")));
  query.set(std::string("d"), lumo::QueryValue::base64(Data(std::string("\xFB\xFF"))));
  lumo::DataChain chain;
  chain.append(Data(std::string("a")));
  chain.append(Data(std::string("bcd")));
  query.set(std::string("c"), lumo::QueryValue::base64(chain));
  EXPECT_EQ(encoded(query), "s://h/p?n=-7&u=18446744073709551615&t=aGVsbG8=&d=+/8=&c=YWJjZA==");
  for (const auto& entry : query) {  // what a value says it is, is what stands in the URL
    const std::string pair = std::string(std::string_view(entry.key)) + "=" + entry.value.asText();
    EXPECT_NE(encoded(query).find(pair), std::string::npos) << pair;
  }
}

TEST(URLEncoder, PutsEntriesThatCouldForgeOthersFirst) {
  const LumoApiQueryDictionary query{
      {"type", "1"}, {"name", "x&type=2"}, {"a&b", "c"}, {"type=3", ""}, {"z", "9"}};
  EXPECT_EQ(encoded(query), "s://h/p?name=x&type=2&a&b=c&type=3=&type=1&z=9");
  EXPECT_EQ(LumoApiURLDecoder::decoderWithUrl(URL::parse(encoded(query)))->queryItem().find("type"), "1");
}

TEST(URLDecoder, SplitsAtAmpersandAndFirstEqualsSign) {
  const std::pair<const char*, const char*> cases[] = {{"a=1&b=x=y&c&=z&d=", "a=1&b=x=y&=z&d="},
      {"a=1&a=2", "a=2"}, {"t=a%20b&p=a+b", "t=a%20b&p=a+b"}, {"&&a=1&", "a=1"}, {"A=1&a=2", "A=1&a=2"},
      {"c&d", ""}, {"", ""}};
  for (const auto& [query, expectedPairs] : cases) {
    SCOPED_TRACE(query);
    const Pairs expected = pairs(expectedPairs);
    const auto decoder =
        LumoApiURLDecoder::decoderWithUrl(URL::parse("Demo://Ma.Host:1/p/?" + std::string(query) + "#f=1"));
    EXPECT_EQ(decoder->scheme(), "Demo");
    EXPECT_EQ(decoder->host(), "Ma.Host");
    EXPECT_EQ(decoder->path(), "/p/");
    EXPECT_EQ(decoder->queryItem().empty(), expected.empty());
    Pairs all;
    for (const auto& [key, value] : decoder->queryItem().dictionary()) all[key] = value;
    EXPECT_EQ(all, expected);
    for (const auto& [key, value] : expected) EXPECT_EQ(decoder->queryItem().find(key), value);
    for (const char* absent : {"c", "x", "b=x", "aa", "f"})
      EXPECT_FALSE(decoder->queryItem().find(absent)) << absent;
  }
}

TEST(URLDecoder, TakesAnyURL) {
  EXPECT_FALSE(LumoApiURLDecoder::decoderWithUrl(std::nullopt));
  const auto plain = LumoApiURLDecoder::decoderWithUrl(URL::parse("s:///x"));
  EXPECT_FALSE(plain->host());
  EXPECT_EQ(plain->path(), "/x");
  EXPECT_TRUE(plain->queryItem().empty());
  LumoApiURLDecoder fresh;
  EXPECT_FALSE(fresh.scheme() || fresh.host() || fresh.path());
  fresh.setScheme(std::string("a scheme"));
  fresh.setHost(std::string("a host"));
  fresh.setPath(std::string("a path"));
  EXPECT_EQ(fresh.scheme(), "a scheme");
  EXPECT_EQ(fresh.host(), "a host");
  EXPECT_EQ(fresh.path(), "a path");
}

TEST(URLDecoder, ManyPairsAreNoTrouble) {
  std::string text = "s://h/p?k20=0&";
  for (int i = 0; i < 200'000; ++i) text += "k" + std::to_string(i) + "=1&";
  const auto decoder = LumoApiURLDecoder::decoderWithUrl(URL::parse(text));
  EXPECT_EQ(decoder->queryItem().dictionary().size(), 200'000u);
  for (const char* key : {"k0", "k14", "k15", "k20", "k199999"})
    EXPECT_EQ(decoder->queryItem().find(key), "1") << key;
}

}  // namespace
