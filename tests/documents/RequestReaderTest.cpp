#include "cli/Files.h"
#include "documents/RequestReader.h"
#include "documents/ResultWriter.h"
#include "model/ContentClasses.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace lumo::documents {
namespace {

EncodeRequest requestOf(std::string_view text) {
  const Value document = parseJSON(text).value();
  return readEncodeRequest(Place(document, cli::FilesBeside(LUMOAPI_SOURCE_DIR)));
}

std::string errorOf(std::string_view text) {
  try {
    requestOf(text);
    return "";
  } catch (const DocumentError& error) {
    return error.what();
  }
}

/// A request whose content object has the members, or without a class the request itself.
std::string with(const std::string& className, const std::string& members) {
  if (className.empty()) return R"({"message":null,)" + members + "}";
  return R"({"message":{"object":{"class":"LumoApi)" + className + R"(Object",)" + members + "}}}";
}

TEST(RequestReaderTest, EveryMistakeIsNamedByItsPath) {
  const std::string kText = "not a string but ", kBytes = R"(not {"$data": base64} or {"$file": path} but )";
  const std::string kUnsigned = "not an integer from 0 to 18446744073709551615 but ";
  const std::string kEither = "exactly one of $data and $file is expected", kFolder = LUMOAPI_SOURCE_DIR "/";
  const std::string kBase64 = "not base64 with its padding", k63 = std::string(63, 'x');
  const struct {
    std::string className, members, error;
  } kCases[] = {
      {"", R"("":1)", R"([""]: unknown member)"},
      {"", R"("a/\u001b\"":1)", R"(["a/\u001b\""]: unknown member)"},
      {"", "\"" + k63 + "ä\":1", "[\"" + k63 + "…\"]: unknown member"},
      {"", R"("message":{"type":2147483648})",
          "message.type: not an integer from -2147483648 to 2147483647 but 2147483648"},
      {"", R"("message":{"isSupportKiva":1})", "message.isSupportKiva: not true or false but 1"},
      {"", R"("message":{"kivaObject":{"kivadata":null}})",
          "message.kivaObject.kivadata: unknown member, did you mean kivaData?"},
      {"", R"("message":{"object":{"text":"x"}})", "message.object.class: missing"},
      {"", R"("message":{"object":{"class":"LumoApiTxtObject"}})",
          "message.object.class: no content class has this name, did you mean LumoApiTextObject?"},
      {"", R"("message":{"object":{"class":"webImage"}})",
          "message.object.class: no content class has this name, did you mean LumoApiWebImageObject?"},
      {"", R"("datastore":{"uin":1.5})", "datastore.uin: not a string or a 64-bit integer but 1.5"},
      {"", R"("datastore":{"apiLargeData":{"fileData":null}})",
          "datastore.apiLargeData.fileData: unknown member, did you mean file_data?"},
      {"", R"("datastore":{"apiMessage":{"object":7}})", "datastore.apiMessage.object: not an object but 7"},
      {"", R"("currentObject":{"class":"LumoApiObject","text":""})", "currentObject.text: unknown member"},
      {"", R"("webView":{"claims":[0]})", "webView.claims[0]: not a string but 0"},
      {"Text", R"("titel":null)", "titel: unknown member, did you mean title?"},
      {"Text", R"("flashURL":"a:")", "flashURL: unknown member"},
      {"Text", R"("cflag":7.0)", "cflag: " + kUnsigned + "7.0"},
      {"Text", R"("cflag":-1)", "cflag: " + kUnsigned + "-1"},
      {"Text", R"("cflag":18446744073709551616)", "cflag: " + kUnsigned + "18446744073709551616.0"},
      {"Text", R"("cflag":1,"cflag":"1")", "cflag: " + kUnsigned + "a string"},
      {"URL", R"("url":"a b")", "url: not a valid URL"},
      {"File", R"("data":"AA==")", "data: " + kBytes + "a string"},
      {"File", R"("data":{})", "data: " + kEither},
      {"File", R"("data":{"$data":"","$file":""})", "data: " + kEither},
      {"File", R"("data":{"$Data":""})", "data.$Data: unknown member, did you mean $data?"},
      {"File", R"("data":{"$data":"AA="})", "data.$data: " + kBase64},
      {"File", R"("imageDataArray":[{"$data":""},{"$file":"none.jpg"}])",
          "imageDataArray[1].$file: " + kFolder + "none.jpg: No such file or directory"},
      {"File", R"("data":{"$file":"cli"})", "data.$file: " + kFolder + "cli: Is a directory"},
      {"File", R"("data":{"$file":"/dev/zero"})", "data.$file: /dev/zero: not a regular file"},
      {"File", R"("data":{"$file":"d\u0000"})", "data.$file: " + kFolder + "d: the path holds a zero byte"},
      {"File", R"("imageDataArray":[null])", "imageDataArray[0]: " + kBytes + "null"},
      {"CommonContent", R"("textArray":["",null])", "textArray[1]: " + kText + "null"},
      {"CommonContent", R"("textArray":{})", "textArray: not an array but an object"},
      {"CreateLumoGroupPro", R"("queryDictionary":{"b":false})", "queryDictionary.b: " + kText + "false"},
      {"VideoForNimbo", R"("extMap":{"a":[1,{"$data":"?"}]})", "extMap.a[1].$data: " + kBase64},
      {"VideoForNimbo", R"("extMap":[{"$file":null}])", "extMap[0]: " + kEither},
  };
  for (const auto& [className, members, error] : kCases) {
    EXPECT_EQ(errorOf(with(className, members)), (className.empty() ? "" : "message.object.") + error);
  }
  EXPECT_EQ(errorOf("[]"), "not an object but an array");
  EXPECT_EQ(errorOf("{}"), "message: missing");
  EXPECT_EQ(errorOf(R"({"mesage":null})"), "mesage: unknown member, did you mean message?");
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
  const NamedBytes none;
  anyContentClass([&none](auto contentClass) {
    SCOPED_TRACE(contentClass.name);
    auto object = std::make_shared<typename decltype(contentClass)::Type>();
    forEachField(*object, [](const char*, auto& field) { fill(field); });
    LumoApiMessage message = LumoApiMessage::messageWithObject(object, -7);
    message.setIsSupportKiva(true);
    message.setKivaObject(std::make_shared<LumoApiKivaObject>());
    message.kivaObject()->setKivaData("card");

    LumoApiMessage back;
    const Value document = parseJSON(writeJSON(documentOf(message)).value()).value();
    read(Place(document, none), back);
    EXPECT_EQ(*back.object(), *object);
    EXPECT_EQ(back.type(), -7);
    EXPECT_TRUE(back.isSupportKiva());
    EXPECT_EQ(back.kivaObject()->kivaData(), "card");
    return false;
  });
}

}  // namespace
}  // namespace lumo::documents
