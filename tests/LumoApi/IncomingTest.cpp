// URLs that opened the app, and what they become.

#include "model/LumoWebViewKit.h"
#include "platform/KeyedArchiver.h"
#include "tests/LumoApi/ConverterTest.h"

namespace {

class Incoming : public ConverterTest {
 protected:
  ~Incoming() override {
    LumoWebViewKit::removeHandler();
    store().setApiMessage(std::nullopt);
  }

  std::optional<LumoApiMessage> open(const std::string& url) {
    log.clear();
    return Converter::messageWithUrl(URL::parse(url), &refusal);
  }
  /// The object of a request to show content.
  std::shared_ptr<LumoApiObject> view(const std::string& query) {
    const auto message = open("demo://request_from_lumo/view?" + query);
    EXPECT_TRUE(message && message->type() == 1 && log.empty()) << query;
    return message ? message->object() : nullptr;
  }
};

const std::string kHi = base64("Hi"), kText = base64("中文");

TEST_F(Incoming, HostAndPathDecide) {
  struct Case {
    const char* url;
    std::optional<std::int32_t> type;
    LumoApiRefusal::Code code;
    const char* field;
  };
  using Code = LumoApiRefusal::Code;
  const Case cases[] = {{"demo://request_from_lumo/pick?a=", 3, Code::None, ""},
      {"other://request_from_lumo/pick?file_type=text&file_data=aGk=", 3, Code::None, ""},
      {"demo://request_from_lumo/view?a=b", 1, Code::None, ""},
      {"demo://request_from_lumo/view?file_type=Text", 1, Code::None, ""},
      {"demo://response_from_lumo?error=0", 6, Code::None, ""}, {"demo://maLaunchApp?x=", 1, Code::None, ""},
      {"demo://request_from_lumo/pick/?a=b", {}, Code::UnknownPath, "path"},
      {"demo://request_from_lumo/Pick?a=b", {}, Code::UnknownPath, "path"},
      {"demo://request_from_lumo?a=b", {}, Code::UnknownPath, "path"},
      {"demo://request_from_lumo/pick", {}, Code::Missing, "query"},
      {"demo://request_from_lumo/pick?", {}, Code::Missing, "query"},
      {"demo://request_from_lumo/pick?a&b", {}, Code::Missing, "query"},
      {"demo:///pick?a=b", {}, Code::Missing, "host"}, {"pick?a=b", {}, Code::Missing, "host"},
      {"demo://Request_From_Lumo/pick?a=b", {}, Code::UnknownHost, "host"},
      {"demo://malaunchapp?a=b", {}, Code::UnknownHost, "host"},
      {"demo://elsewhere?NeedToGetData=true", {}, Code::UnknownHost, "host"}};
  store().setApiMessage(LumoApiMessage());
  for (const Case& c : cases) {
    SCOPED_TRACE(c.url);
    const auto message = open(c.url);
    EXPECT_EQ(message ? std::optional(message->type()) : std::nullopt, c.type);
    EXPECT_EQ(refusal.code, c.code);
    EXPECT_EQ(refusal.field, c.field);
    EXPECT_EQ(
        log, c.code == Code::UnknownHost ? Log{"LumoApiMessageAndUrlCoverter,LumoApiMessage = nil"} : Log{});
    if (message && message->type() != 6 && !std::string_view(c.url).starts_with("demo://maLaunchApp")) {
      EXPECT_FALSE(message->object());
    }
  }
  EXPECT_FALSE(Converter::messageWithUrl(std::nullopt, &refusal));
  EXPECT_EQ(refusal.field, "url");
}

TEST_F(Incoming, WebViewKitComesFirst) {
  std::optional<LumoApiMessage> made = LumoApiMessage::messageWithObject(nullptr, 9);
  LumoWebViewKit::setHandler(
      {[](const URL& url) { return url.scheme() == "https"; }, [&](const URL&) { return made; }});
  EXPECT_EQ(open("https://request_from_lumo/pick?a=b")->type(), 9);
  EXPECT_EQ(log, Log{"YES == [LumoWebViewKit canHanleOpenUrlFromSafari:url]"});
  EXPECT_EQ(open("demo://request_from_lumo/pick?a=b")->type(), 3);
  log.clear();
  EXPECT_EQ(Converter::messageWithUrlUsedClipboard(URL::parse("https://a"))->type(), 9);
  made.reset();
  EXPECT_FALSE(Converter::messageWithUrlUsedClipboard(URL::parse("https://a"), &refusal));
  EXPECT_EQ(log, Log{});
  EXPECT_FALSE(open("https://request_from_lumo/pick?a=b"));
  EXPECT_EQ(refusal.code, LumoApiRefusal::Code::NotBuilt);
}

TEST_F(Incoming, StoredMessageNeedsItsAnnouncement) {
  const auto used = [this](const char* url) {
    const auto message = Converter::messageWithUrlUsedClipboard(URL::parse(url), &refusal);
    return message ? std::to_string(message->type()) : refusal.description();
  };
  const char* announced = "x://any/where?a=b&NeedToGetData=true";
  EXPECT_EQ(used(announced), "apiMessage: missing or empty");
  store().setApiMessage(LumoApiMessage::messageWithObject(LumoApiTextObject::objectWithText("t"), 7));
  for (const char* url : {announced, "s:?NeedToGetData=true"}) EXPECT_EQ(used(url), "7");
  for (const char* url :
      {"s:?NeedToGetData=TRUE", "s:?NeedToGetData=1", "s:?NeedToGetData=%74rue", "s:?NeedToGetData",
          "s:?needtogetdata=true", "s:?NeedToGetData=true&NeedToGetData=false", "s://h"}) {
    EXPECT_EQ(used(url), "NeedToGetData: no stored message is announced") << url;
  }
  EXPECT_FALSE(Converter::messageWithUrlUsedClipboard(std::nullopt));
  EXPECT_EQ(log, Log{});
}

TEST_F(Incoming, LaunchFromMiniApp) {
  const std::pair<const char*, std::optional<std::string>> cases[] = {{"appParameter=a%3Db", "a=b"},
      {"x=1", ""}, {"appParameter=", ""}, {"appParameter=1+2", "1+2"}, {"appParameter=%e4%b8%ad", "中"},
      {"appParameter=%FF", std::nullopt}};
  for (const auto& [query, expected] : cases) {
    const auto message = open("demo://maLaunchApp?" + std::string(query));
    EXPECT_EQ(message->type(), 1);
    EXPECT_EQ(*message->object(), *LumoApiMiniProgramLaunchObject::newWithAppParameter(expected)) << query;
  }
}

TEST_F(Incoming, Responses) {
  const auto respond = [this](const std::string& query) {
    const auto message = open("demo://response_from_lumo/any?" + query);
    EXPECT_EQ(message->type(), 6);
    return *std::dynamic_pointer_cast<LumoApiResultObject>(message->object());
  };
  LumoApiResultObject expected;
  expected.setError("0");
  expected.setOtherInfo(lumo::StringDictionary{{"error", "0"}});
  EXPECT_EQ(static_cast<const LumoApiObject&>(respond("error=0")), expected);
  expected.setError("%37");
  expected.setErrorDescription("hello");
  expected.setExtendInfo(std::nullopt);
  expected.setOtherInfo(lumo::StringDictionary{
      {"error", "%37"}, {"error_description", "aGVsbG8="}, {"error_extend_info", "!"}, {"k", "a%20b"}});
  EXPECT_EQ(static_cast<const LumoApiObject&>(
                respond("error=%37&error_description=aGVsbG8=&error_extend_info=!&k=a%20b")),
      expected);
  EXPECT_EQ(static_cast<const LumoApiObject&>(
                *Converter::messageWithResponseFromLumo(LumoApiURLDecoder())->object()),
      LumoApiResultObject());
}

TEST_F(Incoming, KindsFromQueryAndRecord) {
  const Data preview = bytes(2, 'p'), main = bytes(3, 'm');
  const std::vector<Data> images{bytes(1), Data()};
  const auto link = URL::parse("https://a.example/?b=c");
  const std::string fields =
      "&title=" + kHi + "&description=" + kText + "&url=" + base64("https://a.example/?b=c");
  const std::optional<std::string> title = "Hi", description = "中文";
  auto text = LumoApiTextObject::objectWithText("中文");
  text->setTitle(title);
  text->setDescription(description);
  const LumoApiLargeData common{{"file_data", *lumo::base64DecodedData(base64("no archive"))}};

  store().setApiLargeData(
      std::make_shared<const LumoApiLargeData>(LumoApiLargeData{{"previewimagedata", preview},
          {"file_data", main}, {"image_data_list", Value::Array{images[0], images[1]}}}));
  const Value map(Value::Dictionary{{"k", 1}});
  const std::string extMap = "&extMap=" + base64(R"({"k":1})");
  const std::pair<std::string, std::shared_ptr<LumoApiObject>> cases[] = {{"text&file_data=" + kText, text},
      {"text",
          [&] {
            auto o = std::make_shared<LumoApiTextObject>(*text);
            o->setText({});
            return o;
          }()},
      {"img", LumoApiImageObject::objectWithData(main, preview, title, description)},
      {"image", LumoApiImageObject::objectWithData(main, preview, title, description)},
      {"file", LumoApiExtendObject::objectWithData(main, preview, title, description)},
      {"audio", LumoApiAudioObject::objectWithURL(link, title, description, preview)},
      {"video", LumoApiVideoObject::objectWithURL(link, title, description, preview)},
      {"news", LumoApiNewsObject::objectWithURL(link, title, description, preview)},
      {"url", LumoApiURLObject::objectWithURL(link, title, description, preview, 0)},
      {"nimbo&video_assetURL=" + base64("asset://1") + extMap,
          LumoApiVideoForNimboObject::objectWithAssetURL("asset://1", title, map)},
      {"nimbo&extMap=" + base64("{no json"),
          LumoApiVideoForNimboObject::objectWithVideoData(main, title, {})},
      {"common", std::make_shared<LumoApiCommonContentObject>()}, {"localFile", nullptr}, {"IMG", nullptr},
      {"", nullptr}};
  for (const auto& [query, expected] : cases) {
    SCOPED_TRACE(query);
    const auto object = view("file_type=" + query + fields);
    ASSERT_EQ(object != nullptr, expected != nullptr);
    if (object) {
      EXPECT_EQ(*object, *expected);
    }
  }
  // Without a record, with foreign types in it, and with fields that do not decode.
  for (const LumoApiLargeDataPtr& odd :
      {LumoApiLargeDataPtr(), std::make_shared<const LumoApiLargeData>(LumoApiLargeData{{"file_data", "text"},
                                  {"image_data_list", Value::Array{main, 1}}, {"previewimagedata", 1}})}) {
    store().setApiLargeData(odd);
    EXPECT_EQ(*view("file_type=nimbo" + extMap),
        *LumoApiImageArrayForNimboObject::objectWithimageDataArray({}, {}, map));
    EXPECT_EQ(*view("file_type=img&title=!&description=/w=="), LumoApiImageObject());
    EXPECT_EQ(*view("file_type=url&url=" + base64("no url")), LumoApiURLObject());
    EXPECT_EQ(*view("file_type=common&title=" + kHi), LumoApiCommonContentObject());
  }
}

/// The URL with which the messenger would hand a share on to another app.
std::string asViewRequest(const std::optional<URL>& url) {
  const std::string text(url->absoluteString());
  return "demo://request_from_lumo/view" + text.substr(text.find('?'));
}

TEST_F(Incoming, WhatIsSentIsReadBack) {
  const auto link = URL::parse("https://a.example/中?b=c#d");
  const Value map(
      Value::Dictionary{{"big", ~std::uint64_t{0}}, {"list", Value::Array{0.1, nullptr, true, "é"}}});
  auto text = LumoApiTextObject::objectWithText("a&b=c %\"😀");
  text->setTitle("=");
  auto common = std::make_shared<LumoApiCommonContentObject>();
  common->setPreviewImageData(bytes(9));
  common->setPictureDataArray(std::vector{bytes(5'000'000)});
  common->setTitle("T");
  const std::shared_ptr<LumoApiObject> objects[] = {text,
      LumoApiImageObject::objectWithData(bytes(5'000'000), bytes(9), "T", "D"),
      LumoApiExtendObject::objectWithData(bytes(1), {}, "", {}),
      LumoApiAudioObject::objectWithURL(link, "T", "D", bytes(9)),
      LumoApiVideoObject::objectWithURL(link, "T", {}, bytes(9)),
      LumoApiNewsObject::objectWithURL(link, "T", "D", bytes(9)),
      LumoApiURLObject::objectWithURL(link, "T", "D", bytes(9), 0),
      LumoApiVideoForNimboObject::objectWithAssetURL("asset://a&b", "T", map),
      LumoApiVideoForNimboObject::objectWithVideoData(bytes(9), "T", map),
      LumoApiImageArrayForNimboObject::objectWithimageDataArray(std::vector{bytes(1), bytes(2)}, {}, map),
      common};
  for (const auto& object : objects) {
    const auto url = send(object);
    ASSERT_TRUE(url);
    const auto back = open(asViewRequest(url))->object();
    ASSERT_TRUE(back);
    EXPECT_EQ(*back, *object) << url->absoluteString().substr(0, 200);
  }
}

}  // namespace
