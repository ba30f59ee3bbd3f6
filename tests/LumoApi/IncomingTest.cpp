// URLs that opened the app, and what they become.

#include "LumoApi/LumoWebViewKit.h"
#include "platform/archive/KeyedArchiver.h"
#include "tests/LumoApi/ConverterTest.h"

namespace {

using C = Converter;
using Text = std::optional<std::string>;

class Incoming : public ConverterTest {
 protected:
  ~Incoming() override {
    LumoWebViewKit::removeHandler();
    store().setApiMessage(std::nullopt);
  }

  std::optional<LumoApiMessage> open(const std::string& url) {
    log.clear();
    return C::messageWithUrl(URL::parse(url), &refusal);
  }
  /// The message's type, or why there is none.
  std::string outcome(const std::optional<LumoApiMessage>& message) const {
    return message ? std::to_string(message->type()) : refusal.description();
  }
  std::string usedClipboard(const char* url) {
    return outcome(C::messageWithUrlUsedClipboard(URL::parse(url), &refusal));
  }
  /// Checks the message of a URL against what its own reader, called directly, makes of it.
  void expectMessage(const std::string& url, int type, const LumoApiObject* object, auto reader) {
    SCOPED_TRACE(url);
    const auto decoder = LumoApiURLDecoder::decoderWithUrl(URL::parse(url));
    for (const auto& message : {open(url), C::messageWithUrlNoClipboard(URL::parse(url)), reader(*decoder)}) {
      EXPECT_EQ(outcome(message), std::to_string(type));
      EXPECT_TRUE(object ? *message->object() == *object : !message->object());
    }
    EXPECT_EQ(log, Log{});
  }
  void expectView(const std::string& query, const LumoApiObject* object) {
    const std::string url = "demo://request_from_lumo/view?" + query;
    expectMessage(url, 1, object, C::messageWithRequestFromLumo);
    const auto rebuilt = C::getObjectByUrl(*LumoApiURLDecoder::decoderWithUrl(URL::parse(url)));
    EXPECT_TRUE(object ? *rebuilt == *object : !rebuilt) << query;
  }
};

TEST_F(Incoming, HostAndPathDecide) {
  const std::string noHost = "host: missing or empty", noQuery = "query: missing or empty";
  const std::string host = "host: not a host that the messenger opens an app with";
  const std::string path = "path: not a path of a request";
  const std::pair<const char*, std::string> cases[] = {{"demo://request_from_lumo/pick?a=", "3"},
      {"other://request_from_lumo/pick?file_type=text&file_data=aGk=", "3"},
      {"demo://request_from_lumo/view?a=b", "1"}, {"demo://request_from_lumo/view?file_type=Text", "1"},
      {"demo://request_from_lumo/pick/?a=b", path}, {"demo://request_from_lumo/view/?a=b", path},
      {"demo://request_from_lumo/%70ick?a=b", path}, {"demo://request_from_lumo/Pick?a=b", path},
      {"demo://request_from_lumo?a=b", path}, {"demo://request_from_lumo/pick", noQuery},
      {"demo://request_from_lumo/pick?", noQuery}, {"demo://request_from_lumo/pick?a&b", noQuery},
      {"demo:///pick?a=b", noHost}, {"pick?a=b", noHost}, {"demo://Request_From_Lumo/pick?a=b", host},
      {"demo://malaunchapp?a=b", host}, {"demo://elsewhere?NeedToGetData=true", host},
      {" no URL ", "url: missing or empty"}};
  store().setApiMessage(LumoApiMessage());
  for (const auto& [url, expected] : cases) {
    const auto message = open(url);
    EXPECT_EQ(outcome(message), expected) << url;
    EXPECT_FALSE(message && message->object());
    EXPECT_EQ(log, expected == host ? Log{"LumoApiMessageAndUrlCoverter,LumoApiMessage = nil"} : Log{});
  }
}

TEST_F(Incoming, WebViewKitComesFirst) {
  std::optional<LumoApiMessage> made = LumoApiMessage::messageWithObject(nullptr, 9);
  LumoWebViewKit::setHandler(
      {[](const URL& url) { return url.scheme() == "https"; }, [&](const URL&) { return made; }});
  EXPECT_EQ(outcome(open("https://request_from_lumo/pick?a=b")), "9");
  EXPECT_EQ(log, Log{"YES == [LumoWebViewKit canHanleOpenUrlFromSafari:url]"});
  EXPECT_EQ(outcome(open("demo://request_from_lumo/pick?a=b")), "3");
  EXPECT_EQ(usedClipboard("https://a"), "9");
  EXPECT_EQ(log, Log{});
  made.reset();
  const char* notBuilt = "webView: the web-view kit claimed the URL and built no message";
  EXPECT_EQ(usedClipboard("https://a"), notBuilt);
  EXPECT_EQ(outcome(open("https://request_from_lumo/pick?a=b")), notBuilt);
}

TEST_F(Incoming, StoredMessageNeedsItsAnnouncement) {
  const char* announced = "x://any/where?a=b&NeedToGetData=true";
  EXPECT_EQ(usedClipboard(announced), "apiMessage: missing or empty");
  store().setApiMessage(LumoApiMessage::messageWithObject(LumoApiTextObject::objectWithText("t"), 7));
  for (const char* url : {announced, "s:?NeedToGetData=true"}) EXPECT_EQ(usedClipboard(url), "7");
  for (const char* url :
      {"s:?NeedToGetData=TRUE", "s:?NeedToGetData=1", "s:?NeedToGetData=%74rue", "s:?NeedToGetData",
          "s:?needtogetdata=true", "s:?NeedToGetData=true&NeedToGetData=false", "s://h"}) {
    EXPECT_EQ(usedClipboard(url), "NeedToGetData: no stored message is announced") << url;
  }
  EXPECT_EQ(usedClipboard(" no URL "), "url: missing or empty");
  EXPECT_EQ(log, Log{});
}

TEST_F(Incoming, LaunchFromMiniApp) {
  const std::pair<std::string, Text> cases[] = {{"appParameter=a%3Db", "a=b"}, {"x=1", ""},
      {"appParameter=", ""}, {"appParameter=1+2", "1+2"}, {"appParameter=%e4%b8%ad", "中"},
      {"appParameter=%FF", {}}};
  for (const auto& [query, parameter] : cases) {
    const auto launch = LumoApiMiniProgramLaunchObject::newWithAppParameter(parameter);
    expectMessage("demo://maLaunchApp?" + query, 1, launch.get(), C::messageWithLaunchFromLumoMiniApp);
  }
}

TEST_F(Incoming, Responses) {
  const std::pair<std::string, Fields> cases[] = {{"error=0", {{"error", "0"}}},
      {"error=%37&error_description=aGVsbG8=&error_extend_info=5Lit5paH&k=a%20b",
          {{"error", "%37"}, {"errorDescription", "hello"}, {"extendInfo", "中文"}}},
      {"error_description=/w==&error_extend_info=!", {}}};
  for (const auto& [query, fields] : cases) {
    const auto expected = filled<LumoApiResultObject>(fields);
    lumo::StringDictionary otherInfo;
    for (const auto& [key, value] : pairs(query)) otherInfo.set(key, std::string(value));
    expected->setOtherInfo(otherInfo);
    expectMessage(
        "demo://response_from_lumo/any?" + query, 6, expected.get(), C::messageWithResponseFromLumo);
  }
  EXPECT_EQ(*C::messageWithResponseFromLumo(LumoApiURLDecoder())->object(), LumoApiResultObject());
}

TEST_F(Incoming, KindsFromQueryAndRecord) {
  const Data preview = bytes(2, 'p'), main = bytes(3, 'm');
  const auto link = URL::parse("https://a/?b=c");
  const std::string fields = "&title=SGk=&description=" + base64("中文") + "&url=" + base64("https://a/?b=c");
  const Text title = "Hi", description = "中文";
  store().setApiLargeData(
      std::make_shared<const LumoApiLargeData>(LumoApiLargeData{{"previewimagedata", preview},
          {"file_data", main}, {"image_data_list", Value::Array{bytes(1), Data()}}}));
  const Value map(Value::Dictionary{{"k", 1}});
  const std::string extMap = "&extMap=" + base64(R"({"k":1})");
  const std::pair<std::string, std::shared_ptr<LumoApiObject>> cases[] = {
      {"text&file_data=" + base64("中文"),
          filled<LumoApiTextObject>({{"text", "中文"}, {"title", "Hi"}, {"description", "中文"}})},
      {"text", filled<LumoApiTextObject>({{"title", "Hi"}, {"description", "中文"}})},
      {"img", LumoApiImageObject::objectWithData(main, preview, title, description)},
      {"image", LumoApiImageObject::objectWithData(main, preview, title, description)},
      {"file", LumoApiExtendObject::objectWithData(main, preview, title, description)},
      {"audio", LumoApiAudioObject::objectWithURL(link, title, description, preview)},
      {"video", LumoApiVideoObject::objectWithURL(link, title, description, preview)},
      {"news", LumoApiNewsObject::objectWithURL(link, title, description, preview)},
      {"url", LumoApiURLObject::objectWithURL(link, title, description, preview, 0)},
      {"nimbo&video_assetURL=" + base64("asset://1") + extMap,
          LumoApiVideoForNimboObject::objectWithAssetURL("asset://1", title, map)},
      {"nimbo&video_assetURL=", LumoApiVideoForNimboObject::objectWithAssetURL("", title, {})},
      {"nimbo&video_assetURL=!&extMap=" + base64("{no json"),
          LumoApiVideoForNimboObject::objectWithVideoData(main, title, {})},
      {"nimbo&extMap=" + base64("7"), LumoApiVideoForNimboObject::objectWithVideoData(main, title, {})},
      {"common", std::make_shared<LumoApiCommonContentObject>()}, {"localFile", nullptr}, {"IMG", nullptr},
      {"", nullptr}};
  for (const auto& [query, object] : cases) expectView("file_type=" + query + fields, object.get());
  // Empty bytes are bytes.
  store().setApiLargeData(std::make_shared<const LumoApiLargeData>(LumoApiLargeData{{"file_data", Data()}}));
  expectView("file_type=nimbo", LumoApiVideoForNimboObject::objectWithVideoData(Data(), {}, {}).get());
  // Without a record, with foreign types in it, and with fields that do not decode.
  const LumoApiLargeData odd{
      {"file_data", "text"}, {"image_data_list", Value::Array{main, 1}}, {"previewimagedata", 1}};
  for (const auto& record : {LumoApiLargeDataPtr(), std::make_shared<const LumoApiLargeData>(odd)}) {
    store().setApiLargeData(record);
    const auto pictures = LumoApiImageArrayForNimboObject::objectWithimageDataArray({}, {}, map);
    expectView("file_type=nimbo" + extMap, pictures.get());
    expectView("file_type=img&title=SGk%3D&description=/w==",
        LumoApiImageObject::objectWithData({}, {}, {}, {}).get());
    expectView(
        "file_type=url&url=" + base64("no url"), LumoApiURLObject::objectWithURL({}, {}, {}, {}, 0).get());
    expectView("file_type=news&url=", LumoApiNewsObject::objectWithURL(URL::parse(""), {}, {}, {}).get());
    expectView("file_type=common&title=SGk=", std::make_shared<LumoApiCommonContentObject>().get());
  }
}

TEST_F(Incoming, WhatIsSentIsReadBack) {
  const auto link = URL::parse("https://a/中?b=c#d");
  const Value map(
      Value::Dictionary{{"big", ~std::uint64_t{0}}, {"list", Value::Array{0.1, nullptr, true, "é"}}});
  const std::shared_ptr<LumoApiObject> objects[] = {
      LumoApiTextObject::objectWithText("a&b=c %\"😀"),
      LumoApiImageObject::objectWithData(bytes(5'000'000), bytes(9), "=", ""),
      LumoApiExtendObject::objectWithData(bytes(1), {}, "T", "D"),
      LumoApiURLObject::objectWithURL(link, "T", {}, bytes(9), 0),
      LumoApiNewsObject::objectWithURL(link, "T", "D", Data()),
      LumoApiAudioObject::objectWithURL(link, "T", {}, bytes(9)),
      LumoApiVideoObject::objectWithURL(link, "T", "", bytes(8)),
      LumoApiVideoForNimboObject::objectWithVideoData(bytes(7), "T", map),
      LumoApiVideoForNimboObject::objectWithAssetURL("asset://a&b", "T", map),
      LumoApiImageArrayForNimboObject::objectWithimageDataArray(std::vector{bytes(1), bytes(2)}, {}, map),
      filled<LumoApiCommonContentObject>(
          {{"previewImageData", bytes(9)}, {"pictureDataArray", Value::Array{bytes(5'000'000)}}}),
  };
  for (const auto& object : objects) {
    const std::string url(send(object).value().absoluteString());
    log.clear();
    expectView(url.substr(url.find('?') + 1), object.get());  // as the messenger hands a share on
  }
}

}  // namespace
