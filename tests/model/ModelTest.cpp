#include "LumoApi/LumoApiDatastore.h"
#include "LumoApi/LumoApiLog.h"
#include "LumoApi/LumoApiQueryDictionary.h"
#include "LumoApi/LumoOpenApiUtility.h"
#include "LumoApi/LumoWebViewKit.h"
#include "model/ContentClasses.h"
#include "platform/archive/KeyedArchiver.h"
#include "platform/text/ClassName.h"

#include <gtest/gtest.h>

#include <thread>

using lumo::Data;
using lumo::URL;
using lumo::Value;

namespace {

// A value for every type of field.
void fill(std::uint64_t& field) { field = ~std::uint64_t{0}; }
void fill(std::optional<std::string>& field) { field = "中"; }
void fill(std::optional<Data>& field) { field = Data(std::string("\0\1", 2)); }
void fill(std::optional<URL>& field) { field = URL::parse("https://a.example/?b"); }
void fill(std::optional<Value>& field) {
  field = Value(Value::Dictionary{{"k", Value::Array{1, "a", nullptr}}});
}
void fill(std::optional<std::vector<Data>>& field) { field = {Data(), Data(std::string("x"))}; }
void fill(std::optional<std::vector<std::string>>& field) { field = {"", "b"}; }
void fill(std::optional<lumo::StringDictionary>& field) { field = lumo::StringDictionary{{"k", "v"}}; }

TEST(Model, EveryFieldCountsInEquality) {
  int classes = 0;
  lumo::anyContentClass([&](auto contentClass) {
    using Class = typename decltype(contentClass)::Type;
    SCOPED_TRACE(contentClass.name);
    EXPECT_EQ(lumo::className(typeid(Class)), contentClass.name);
    const auto made = lumo::newContentObject(contentClass.name);
    EXPECT_TRUE(made && *made == Class());
    const std::size_t count = std::tuple_size_v<decltype(Class::fields(std::declval<Class&>()))>;
    for (std::size_t changed = 0; changed < count; ++changed) {
      Class a, b;
      std::size_t place = 0;
      lumo::forEachField(a, [&](const char* name, auto& field) {
        if (place++ != changed) return;
        SCOPED_TRACE(name);
        EXPECT_EQ(static_cast<const LumoApiObject&>(a), b);
        fill(field);
        EXPECT_FALSE(static_cast<const LumoApiObject&>(a) == b);
      });
    }
    ++classes;
    return false;
  });
  EXPECT_EQ(classes, 26);
  EXPECT_FALSE(lumo::newContentObject("LumoApiNothing"));
}

TEST(Model, LinkKinds) {
  EXPECT_EQ(LumoApiNewsObject().targetContentType(), 3u);
  EXPECT_EQ(LumoApiAudioObject().targetContentType(), 1u);
  EXPECT_EQ(LumoApiVideoObject().targetContentType(), 2u);
  const std::unique_ptr<LumoApiObject> news(new LumoApiNewsObject), audio(new LumoApiAudioObject);
  EXPECT_FALSE(dynamic_cast<lumo::OffersFlashURL*>(news.get()));
  EXPECT_TRUE(dynamic_cast<lumo::OffersFlashURL*>(audio.get()));
  const LumoApiJoinLumoGroupProObject join;
  EXPECT_FALSE(static_cast<const LumoApiObject&>(LumoApiCreateLumoGroupProObject()) == join);
}

TEST(Model, CommonContentSurvivesItsArchive) {
  LumoApiCommonContentObject full;
  lumo::forEachField(full, [](const char*, auto& field) { fill(field); });
  const auto reread = [](const LumoApiCommonContentObject& object) {
    const LumoApiLargeData record{{"file_data", lumo::archivedData(Value(object.toDictionary()))->joined()}};
    return LumoApiCommonContentObject::objectWithDictionary(&record);
  };
  EXPECT_EQ(static_cast<LumoApiObject&>(*reread(full)), full);
  EXPECT_EQ(static_cast<LumoApiObject&>(*reread({})), LumoApiCommonContentObject());

  const LumoApiLargeData wrong{{"file_data", "text"}};
  const LumoApiLargeData damaged{{"file_data", Data(std::string("bplist00"))}};
  const LumoApiLargeData oddTypes{
      {"file_data", lumo::archivedData(Value(Value::Dictionary{{"title", 1}, {"textArray", Value::Array{1}},
                                           {"cflag", -1}, {"shareDestType", 7}, {"tagName", "kept"}}))
                        ->joined()}};
  for (const LumoApiLargeData* record : {static_cast<const LumoApiLargeData*>(nullptr), &wrong, &damaged}) {
    EXPECT_EQ(static_cast<LumoApiObject&>(*LumoApiCommonContentObject::objectWithDictionary(record)),
        LumoApiCommonContentObject());
  }
  LumoApiCommonContentObject kept;
  kept.setTagName("kept");
  kept.setShareDestType(7);
  EXPECT_EQ(static_cast<LumoApiObject&>(*LumoApiCommonContentObject::objectWithDictionary(&oddTypes)), kept);
}

TEST(QueryDictionary, KeepsPlaceAndOrder) {
  LumoApiQueryDictionary query{{"a", "1"}, {"b", "2"}};
  query.set("a", lumo::FixedWord("3"));
  query.set(lumo::FixedWord("c"), lumo::QueryValue::base64(std::string("x")));
  std::string order;
  for (const auto& entry : query) order += std::string(std::string_view(entry.key)) + entry.value.asText();
  EXPECT_EQ(order, "a3b2ceA==");
  const std::pair<Value, std::string> kNumbers[] = {{-1, "-1"}, {UINT64_MAX, "18446744073709551615"},
      {true, "1"}, {false, "0"}, {2.5, "2.5"}, {"5&", "5&"}, {Value::Array{1}, "[1]"}, {Data(), ""}};
  for (const auto& [number, text] : kNumbers) EXPECT_EQ(lumo::QueryValue::number(number).asText(), text);
  EXPECT_FALSE(query.text("A"));
}

TEST(Utility, Base64OfTexts) {
  using U = LumoOpenApiUtility;
  EXPECT_EQ(U::base64EncodedStringWithUTF8String(std::nullopt), std::nullopt);
  EXPECT_EQ(U::base64EncodedStringWithUTF8String("\xED\xA0\x80"), std::nullopt);
  EXPECT_EQ(U::base64EncodedStringWithUTF8String(""), "");
  EXPECT_EQ(U::base64EncodedStringWithData(Data(std::string("\xFF"))), "/w==");
  EXPECT_EQ(U::UTF8StringWithBase64String("aGVsbG8="), "hello");
  EXPECT_EQ(U::UTF8StringWithBase64String(""), "");
  for (const std::optional<std::string_view> bad :
      {std::optional<std::string_view>(), {"aGVsbG8"}, {"/w=="}, {"a b="}}) {
    EXPECT_EQ(U::UTF8StringWithBase64String(bad), std::nullopt);
  }
  EXPECT_EQ(URLDecodedString("a%3Db+%e4%b8%ad"), "a=b+中");
  EXPECT_EQ(URLDecodedString("%4"), std::nullopt);
  EXPECT_EQ(URLDecodedString("%FF"), std::nullopt);
}

TEST(WebViewKit, DoesWhatTheAppRegistered) {
  const URL url = *URL::parse("https://a.example/");
  EXPECT_FALSE(LumoWebViewKit::canHanleOpenUrlFromSafari(url));
  EXPECT_FALSE(LumoWebViewKit::messageWithSafariUrl(url));
  LumoWebViewKit::setHandler({[](const URL& u) { return u.scheme() == "https"; },
      [](const URL&) { return LumoApiMessage::messageWithObject(nullptr, 9); }});
  EXPECT_TRUE(LumoWebViewKit::canHanleOpenUrlFromSafari(url));
  EXPECT_EQ(LumoWebViewKit::messageWithSafariUrl(url)->type(), 9);
  LumoWebViewKit::setHandler(
      {[](const URL&) -> bool { throw 1; }, [](const URL&) -> std::optional<LumoApiMessage> { throw 1; }});
  EXPECT_FALSE(LumoWebViewKit::canHanleOpenUrlFromSafari(url));
  EXPECT_FALSE(LumoWebViewKit::messageWithSafariUrl(url));
  LumoWebViewKit::removeHandler();
}

TEST(Log, FillsPlacesAndNeverReadsArgumentsAsFormats) {
  std::vector<std::string> lines;
  LumoApiLog::setHandler([&](const LumoApiLog::Line& line) {
    EXPECT_EQ(line.file, "LumoApi/LumoApiMessageAndUrlConverter");
    EXPECT_GT(line.line, 0);
    lines.emplace_back(line.message);
  });
  LumoApiLog::log("%@ %s %d %lu %%|%s", {"%@%n", "%s%s", std::int64_t{-1}, ~std::uint64_t{0}});
  LumoApiLog::log("(%s)", {"a\r\n\x1B[2J\x7F \u0085\u2028\u202E\u2069 \x9B\xFF\xE4\xB8 中é😀"});
  LumoApiLog::log("%");
  LumoApiLog::log("%d%l%", {std::int64_t{1}, std::int64_t{2}, "3"});
  LumoApiLog::silence();
  EXPECT_FALSE(LumoApiLog::isListening());
  LumoApiLog::log("unheard");
  LumoApiLog::setHandler([](const LumoApiLog::Line&) { throw 1; });
  LumoApiLog::log("dropped");
  testing::internal::CaptureStderr();
  LumoApiLog::removeHandler();
  LumoApiLog::log("to standard error");
  EXPECT_NE(testing::internal::GetCapturedStderr().find(": to standard error\n"), std::string::npos);
  EXPECT_EQ(lines,
      (std::vector<std::string>{"%@%n %s%s -1 18446744073709551615 %|",
          R"((a\u000d\u000a\u001b[2J\u007f \u0085\u2028\u202e\u2069 \x9b\xff\xe4\xb8 中é😀))", "", "123"}));
}

TEST(Datastore, SettersKeepTheOtherValues) {
  LumoApiDatastore& store = LumoApiDatastore::instance();
  store.setScheme("s");
  store.setAppName("n");
  store.setAppId("a");
  store.setOpenId("o");
  store.setUin(Value("u"));
  EXPECT_EQ(*store.scheme() + *store.appName() + *store.appId() + *store.openId(), "snao");
  EXPECT_EQ(store.uin(), Value("u"));
  const auto flags = [&] {
    return store.isLumoSupportUrlForShareText() + 2 * store.isLumoSupportUrlInsteadPastedboard() +
           4 * store.isLumoSupportApiGeneralPastboard();
  };
  store.setIsLumoSupportUrlForShareText(true);
  EXPECT_EQ(flags(), 1);
  store.setIsLumoSupportUrlInsteadPastedboard(true);
  EXPECT_EQ(flags(), 3);
  store.setIsLumoSupportApiGeneralPastboard(true);
  EXPECT_EQ(flags(), 7);
  store.setValues({});
}

TEST(Datastore, SeveralThreadsSeeWholeValues) {
  LumoApiDatastore& store = LumoApiDatastore::instance();
  const auto write = [&](const std::string& text) {
    for (int i = 0; i < 2000; ++i) {
      LumoApiDatastore::Values values;
      values.scheme = values.appName = text;
      store.setValues(std::move(values));
      store.setApiLargeData(std::make_shared<const LumoApiLargeData>(LumoApiLargeData{{text, text}}));
      store.setApiMessage(LumoApiMessage::messageWithObject(LumoApiTextObject::objectWithText(text), 1));
    }
  };
  write("a");
  std::thread first(write, std::string(40, 'a')), second(write, std::string(50, 'b'));
  for (int i = 0; i < 2000; ++i) {
    const auto values = store.values();
    EXPECT_EQ(values->scheme, values->appName);
    const auto entry = *store.getApiLargeData()->begin();
    EXPECT_EQ(entry.key, *entry.value.asString());
    EXPECT_TRUE(store.getApiMessageWithClass<LumoApiMessage>());
  }
  first.join();
  second.join();
  store.setValues({});
  store.setApiLargeData(nullptr);
  store.setApiMessage(std::nullopt);
  EXPECT_FALSE(store.getApiLargeData() || store.getApiMessageWithClass<LumoApiMessage>());
}

}  // namespace
