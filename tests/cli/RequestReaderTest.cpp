#include "cli/RequestReader.h"
#include "cli/ResultWriter.h"
#include "model/ContentClasses.h"
#include "model/LumoApiCurrentObject.h"
#include "model/LumoWebViewKit.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace lumo::cli {
namespace {

EncodeRequest requestOf(std::string_view text) {
  const Value document = parseJSON(text).value();
  return readEncodeRequest(Place(document, std::filesystem::path(LUMOAPI_SOURCE_DIR)));
}

std::string errorOf(std::string_view text) {
  try {
    requestOf(text);
    return "";
  } catch (const DocumentError& error) {
    return error.what();
  }
}

/// A request whose content object has the members.
std::string with(const std::string& className, const std::string& members) {
  return R"({"message":{"object":{"class":"LumoApi)" + className + R"(Object",)" + members + "}}}";
}

TEST(RequestReaderTest, EveryMistakeIsNamedByItsPath) {
  const std::string kText = "not a string but ", kBytes = R"(not {"$data": base64} or {"$file": path} but )";
  const std::string kUnsigned = "not an integer from 0 to 18446744073709551615 but ";
  const std::pair<std::string, std::string> kCases[] = {
      {"[]", "not an object but an array"},
      {"{}", "message: missing"},
      {R"({"mesage":null})", "mesage: unknown member, did you mean message?"},
      {R"({"message":null,"":1})", R"([""]: unknown member)"},
      {R"({"message":null,"a/\u001b\"":1})", R"(["a/\u001b\""]: unknown member)"},
      {R"({"message":null,")" + std::string(63, 'x') + R"(ä":1})",
       "[\"" + std::string(63, 'x') + "…\"]: unknown member"},
      {R"({"message":{"type":2147483648}})",
       "message.type: not an integer from -2147483648 to 2147483647 but 2147483648"},
      {R"({"message":{"isSupportKiva":1}})", "message.isSupportKiva: not true or false but 1"},
      {R"({"message":{"kivaObject":{"kivadata":null}}})",
       "message.kivaObject.kivadata: unknown member, did you mean kivaData?"},
      {R"({"message":{"object":{"text":"x"}}})", "message.object.class: missing"},
      {R"({"message":{"object":{"class":"LumoApiTxtObject"}}})",
       "message.object.class: no content class has this name, did you mean LumoApiTextObject?"},
      {R"({"message":{"object":{"class":"X"}}})", "message.object.class: no content class has this name"},
      {with("Text", R"("titel":null)"), "message.object.titel: unknown member, did you mean title?"},
      {with("Text", R"("flashURL":"a:")"), "message.object.flashURL: unknown member"},
      {with("Text", R"("text":7.0)"), "message.object.text: " + kText + "7.0"},
      {with("Text", R"("cflag":7.0)"), "message.object.cflag: " + kUnsigned + "7.0"},
      {with("Text", R"("cflag":-1)"), "message.object.cflag: " + kUnsigned + "-1"},
      {with("Text", R"("cflag":18446744073709551616)"),
       "message.object.cflag: " + kUnsigned + "18446744073709551616.0"},
      {with("Text", R"("cflag":true)"), "message.object.cflag: " + kUnsigned + "true"},
      {with("Text", R"("cflag":1,"cflag":"1")"), "message.object.cflag: " + kUnsigned + "a string"},
      {with("URL", R"("url":"a b")"), "message.object.url: not a valid URL"},
      {with("URL", R"("url":{})"), "message.object.url: " + kText + "an object"},
      {with("File", R"("data":"AA==")"), "message.object.data: " + kBytes + "a string"},
      {with("File", R"("data":{})"), "message.object.data: exactly one of $data and $file is expected"},
      {with("File", R"("data":{"$data":"","$file":""})"),
       "message.object.data: exactly one of $data and $file is expected"},
      {with("File", R"("data":{"$Data":""})"),
       "message.object.data.$Data: unknown member, did you mean $data?"},
      {with("File", R"("data":{"$data":"AA="})"), "message.object.data.$data: not base64 with its padding"},
      {with("File", R"("data":{"$data":"A-=="})"), "message.object.data.$data: not base64 with its padding"},
      {with("File", R"("data":{"$data":"AA==\n"})"),
       "message.object.data.$data: not base64 with its padding"},
      {with("File", R"("imageDataArray":[{"$data":""},{"$file":"none.jpg"}])"),
       "message.object.imageDataArray[1].$file: " LUMOAPI_SOURCE_DIR "/none.jpg: No such file or directory"},
      {with("File", R"("data":{"$file":"cli"})"),
       "message.object.data.$file: " LUMOAPI_SOURCE_DIR "/cli: Is a directory"},
      {with("File", R"("data":{"$file":"/dev/zero"})"),
       "message.object.data.$file: /dev/zero: not a regular file"},
      {with("File", R"("data":{"$file":"dev\u0000"})"),
       "message.object.data.$file: " LUMOAPI_SOURCE_DIR "/dev: the path holds a zero byte"},
      {with("File", R"("imageDataArray":[null])"), "message.object.imageDataArray[0]: " + kBytes + "null"},
      {with("CommonContent", R"("textArray":["",null])"), "message.object.textArray[1]: " + kText + "null"},
      {with("CommonContent", R"("textArray":{})"), "message.object.textArray: not an array but an object"},
      {with("CreateLumoGroupPro", R"("queryDictionary":{"a":"","b":false})"),
       "message.object.queryDictionary.b: " + kText + "false"},
      {with("VideoForNimbo", R"("extMap":{"a":[1,{"$data":"?"}]})"),
       "message.object.extMap.a[1].$data: not base64 with its padding"},
      {with("VideoForNimbo", R"("extMap":[{"$file":null}])"),
       "message.object.extMap[0]: exactly one of $data and $file is expected"},
      {R"({"message":null,"datastore":{"uin":1.5}})",
       "datastore.uin: not a string or a 64-bit integer but 1.5"},
      {R"({"message":null,"datastore":{"apiLargeData":{"fileData":null}}})",
       "datastore.apiLargeData.fileData: unknown member, did you mean file_data?"},
      {R"({"message":null,"datastore":{"apiMessage":{"object":7}}})",
       "datastore.apiMessage.object: not an object but 7"},
      {R"({"message":null,"currentObject":{"class":"LumoApiObject","text":""}})",
       "currentObject.text: unknown member"},
      {R"({"message":null,"webView":{"claims":[0]}})", "webView.claims[0]: " + kText + "0"},
  };
  for (const auto& [document, error] : kCases) {
    SCOPED_TRACE(document);
    EXPECT_EQ(errorOf(document), error);
  }
}

TEST(RequestReaderTest, NullAndAbsentMembersAreTheSame) {
  const auto document = [](const EncodeRequest& request) {
    return writeJSON(documentOf(request.message), {.escapeSolidus = false}).value();
  };
  const EncodeRequest bare = requestOf(R"({"message":{}})");
  EXPECT_EQ(document(bare), R"({"type":0,"object":null})");
  EXPECT_EQ(document(requestOf(R"({"message":{"type":null,"object":null,"isSupportKiva":null,
      "kivaObject":null},"datastore":null,"currentObject":null,"webView":null})")),
            document(bare));
  EXPECT_EQ(requestOf(R"({"message":null})").message, std::nullopt);
  EXPECT_EQ(document(requestOf(with("News", R"("targetContentType":null,"url":"","title":null)"))),
            R"({"type":0,"object":{"class":"LumoApiNewsObject","url":"","targetContentType":3}})");
  EXPECT_EQ(document(requestOf(with("CreateLumoGroupPro", R"("queryDictionary":{"a":null,"b":""})"))),
            R"({"type":0,"object":{"class":"LumoApiCreateLumoGroupProObject","queryDictionary":{"b":""}}})");
}

TEST(RequestReaderTest, FreeFormValuesHoldBytesAndKeepEverythingElse) {
  const auto request = requestOf(with("VideoForNimbo", R"("extMap":{"bytes":[{"$data":"AB=="}],"none":null,
      "largest":18446744073709551615,"pair":{"$data":"?","x":1},"file":{"$file":"examples/../dev"}})"));
  const auto& object = dynamic_cast<const LumoApiVideoForNimboObject&>(*request.message->object());
  const Value::Dictionary& map = *object.extMap()->asDictionary();
  EXPECT_EQ(*map.find("bytes"), Value(Value::Array{Data::copy(std::string_view("\0", 1))}));
  EXPECT_EQ(*map.find("none"), Value());
  EXPECT_EQ(*map.find("largest"), Value(~std::uint64_t{0}));
  EXPECT_EQ(*map.find("pair"), Value(Value::Dictionary{{"$data", "?"}, {"x", 1}}));
  EXPECT_TRUE(map.find("file")->asData()->view().starts_with("#!/bin/sh\n"));
}

// A value of every type of field, with the characters and sizes that a document must carry unharmed.
void fill(std::optional<std::string>& text) { text = std::string("\0\x1f/\"ä😀", 10); }
void fill(std::uint64_t& number) { number = ~std::uint64_t{0}; }
void fill(std::optional<Data>& bytes) { bytes = Data::copy("\xFF\xFE"); }
void fill(std::optional<URL>& url) { url = URL::parse("http://a/%C3%A4?b#c"); }
void fill(std::optional<StringDictionary>& texts) { texts = StringDictionary{{"", "&="}, {"ä", ""}}; }
void fill(std::optional<std::vector<std::string>>& texts) { texts = {"", "x"}; }
void fill(std::optional<std::vector<Data>>& list) { list = {Data(), Data::copy("abc")}; }
void fill(std::optional<Value>& value) {
  value = Value::Dictionary{{"n", Value(Value::Array{-1, 0.5, true, nullptr})}, {"b", Data::copy("x")}};
}

TEST(RequestReaderTest, MessagesOfEveryClassComeBackAsTheyWereWritten) {
  const std::filesystem::path folder;
  anyContentClass([&folder](auto contentClass) {
    SCOPED_TRACE(contentClass.name);
    auto object = std::make_shared<typename decltype(contentClass)::Type>();
    forEachField(*object, [](const char*, auto& field) { fill(field); });
    LumoApiMessage message = LumoApiMessage::messageWithObject(object, -7);
    message.setIsSupportKiva(true);
    message.setKivaObject(std::make_shared<LumoApiKivaObject>());
    message.kivaObject()->setKivaData("card");

    LumoApiMessage back;
    const Value document = parseJSON(writeJSON(documentOf(message)).value()).value();
    read(Place(document, folder), back);
    EXPECT_EQ(*back.object(), *object);
    EXPECT_EQ(back.type(), -7);
    EXPECT_TRUE(back.isSupportKiva());
    EXPECT_EQ(back.kivaObject()->kivaData(), "card");
    return false;
  });
}

TEST(SurroundingsTest, SurroundOneConversionOnly) {
  EncodeRequest request = requestOf(R"({"message":null,"currentObject":{"class":"LumoApiObject","cflag":9},
      "datastore":{"appId":"100","uin":-9223372036854775808,"apiLargeData":{},"apiMessage":{"type":5}},
      "webView":{"claims":["web:","https://"],"message":{"type":2}}})");
  const LumoApiDatastore& store = LumoApiDatastore::instance();
  const URL claimed = URL::parse("https://a").value();
  Stage stage;
  stage.set(std::move(request.surroundings));
  EXPECT_EQ(store.appId(), "100");
  EXPECT_EQ(store.uin(), Value(INT64_MIN));
  EXPECT_TRUE(store.getApiLargeData() && store.getApiLargeData()->empty());
  EXPECT_EQ(store.getApiMessageWithClass<LumoApiMessage>()->type(), 5);
  EXPECT_EQ(LumoApiCurrentObject::get()->cflag(), 9U);
  EXPECT_TRUE(LumoWebViewKit::canHanleOpenUrlFromSafari(claimed));
  EXPECT_FALSE(LumoWebViewKit::canHanleOpenUrlFromSafari(URL::parse("http://a").value()));
  EXPECT_EQ(LumoWebViewKit::messageWithSafariUrl(claimed)->type(), 2);

  stage.set({});
  EXPECT_FALSE(store.appId() || store.uin() || store.getApiLargeData() || LumoApiCurrentObject::get());
  EXPECT_FALSE(store.getApiMessageWithClass<LumoApiMessage>());
  EXPECT_FALSE(LumoWebViewKit::canHanleOpenUrlFromSafari(claimed));
}

}  // namespace
}  // namespace lumo::cli
