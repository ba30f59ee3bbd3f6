// What the tool says of launch URLs: of good ones, of spoiled ones and of hostile ones.

#include "LumoApi/Base64.h"
#include "LumoApi/LumoApiFilePasteboard.h"
#include "inspect/Content.h"
#include "inspect/JSON.h"
#include "inspect/Printable.h"
#include "inspect/Text.h"
#include "platform/archive/KeyedArchiver.h"
#include "platform/values/JSON.h"
#include "tests/cli/ShellTest.h"

#include <regex>
#include <set>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;
namespace codes = lumo::inspection::codes;
using namespace lumo::inspection;
using lumo::Data;
using lumo::Value;
using namespace std::string_literals;

const std::string kShare = "mlumoapi://share/to_fri?";
const std::string kSender = "src_type=app&version=1&callback_type=scheme&file_type=";
const std::string kText = kShare + kSender + "text&file_data=aGVsbG8=";
const std::string kPicture = kShare + kSender + "img&objectlocation=pasteboard";
const std::string kView = "demo://request_from_lumo/view?file_type=";

Findings findings(const std::string& url, const Store& store = {}, bool all = false) {
  return findingsOf(lumo::URL::parse(url).value(), store, all);
}

/// "code:key", each once, in order.
std::string codesOf(const Findings& found) {
  std::string text;
  for (const Warning& warning : found.warnings.all()) {
    const std::string next = std::string(warning.code) + ":" + warning.key;
    if (text != next && !text.ends_with(" " + next)) text += (text.empty() ? "" : " ") + next;
  }
  return text;
}

Store storeOf(Value::Dictionary record) {
  return {true, std::make_shared<const LumoApiLargeData>(std::move(record))};
}

/// Lines that fit, and nothing in them that a terminal obeys.
enum class Width { Page, Any };
void expectHarmless(const std::string& output, Width width = Width::Page) {
  static const std::regex unsafe("[\x01-\x09\x0B-\x1F\x7F]|\xC2[\x80-\x9F]|\xE2\x80[\x8E\x8F\xA8-\xAE]");
  EXPECT_FALSE(std::regex_search(output, unsafe)) << output;
  std::istringstream lines(output);
  for (std::string line; width == Width::Page && std::getline(lines, line);)
    EXPECT_LE(columnsOf(line), 100u) << line;
}

using InspectTest = ShellTest;

TEST_F(InspectTest, ExplainsEveryExample) {
  const std::pair<const char*, const char*> kExamples[] = {
      {"authorization", "check the app's authorization."},
      {"avatar-picture", "set a profile picture."},
      {"avatar-video", "set a moving profile picture."},
      {"common-content", "share a preview with a text or a picture."},
      {"common-service", "open a service through the common channel."},
      {"data", "share data of the app's own."},
      {"extra-service", "open one of its extra services."},
      {"face-collection", "add pictures to the face collection."},
      {"feed-pictures", "share pictures or a video for the social feed."},
      {"feed-video", "share a video for the social feed."},
      {"file", "share a file."},
      {"group-pro-create", "asks the messenger to create a guild, with a signature."},
      {"group-pro-join", "let the user join a guild, with a signature."},
      {"image", "share a picture."},
      {"link-share", "share a link to a web page."},
      {"mini-program", "launch a mini-program."},
      {"news-share", "share a link to a news page."},
      {"text-share", "share a text."},
      {"third-app-bind-group", "asks the main messenger to bind a group to the app."},
      {"third-app-join-group", "asks the sibling messenger to let the user join a group of the app."},
      {"video-share", "share a link to a video."},
      {"web-image", "share a picture on the web."},
  };
  const fs::path examples = fs::path(LUMOAPI_SOURCE_DIR) / "examples";
  for (const auto& [name, asks] : kExamples) {
    SCOPED_TRACE(name);
    const std::string file = (examples / name).string() + ".json";
    const Outcome outcome =
        shell("rm -f s; lumoapi encode --url --store s \"$(cat)\" | lumoapi inspect --store s", file);
    EXPECT_EQ(outcome.status, 0);
    const std::string line = std::regex_replace(outcome.output, std::regex("\n(?! )"), " ");
    EXPECT_NE(line.find(asks), std::string::npos) << outcome.output;
    EXPECT_EQ(outcome.output.find("Warnings"), std::string::npos) << outcome.output;
    expectHarmless(outcome.output);
    const std::string document = read(file);
    std::smatch title;
    if (std::regex_search(document, title, std::regex("\"title\": \"([^\"]*)\""))) {
      EXPECT_NE(outcome.output.find(title[1]), std::string::npos) << outcome.output;
    }
  }
}

TEST(Inspect, WarnsOfWhatIsWrong) {
  const std::string kLink = kShare + kSender + "news&objectlocation=url&url=aDovL2g=", kTitle = "&title=SGk=";
  const auto base64 = [](std::size_t length) { return lumo::base64Encoded(std::string(length, 'x')); };
  const struct {
    std::string url, codes;
  } kCases[] = {
      {kText, ""},
      {kText + "&description=" + base64(512) + "&title=" + base64(128), ""},
      {kLink + kTitle + "&pasteboard=", ""},
      {kLink + "&cflag=8", ""},
      {kView + "url&url=aDovL2g=", ""},
      {"demo://request_from_lumo/pick?version=1", ""},
      {"demo://response_from_lumo?error=0&anything=x", ""},
      {"DEMO://maLaunchApp?appParameter=a%252520", ""},
      {"MLUMOAPI://card/show_pslcard?src_type=app", ""},
      {"mlumoguild://mlumoguild/guild/join?B=%26&a=1&guild_avatar=h%3A%2F%2Fh%2F%2520&sig=x", ""},
      // Where it leads.
      {"mlumoapi://Share/to_fri?src_type=app", "unknown-destination:"},
      {"https://example.com/", "unknown-destination:"},
      {"demo://request_from_lumo/View?file_type=text", "unknown-request:"},
      {"demo://maLaunchApp", "no-query:"},
      {kText + "#x", "fragment:"},
      {kText + "&NeedToGetData=true", "stored-message:NeedToGetData"},
      {"demo://any?NeedToGetData=true", ""},
      {"demo://any?NeedToGetData=TRUE", "unknown-destination: unexpected-word:NeedToGetData"},
      // What is missing.
      {kShare + "version=1&callback_type=scheme", "missing-key:src_type missing-key:file_type"},
      {kShare + kSender + "text&file_data=", "missing-key:file_data"},
      {kLink, "missing-key:title"},
      {kLink + "&title=&cflag=9", "missing-key:title"},
      {kShare + kSender + "localFile&objectlocation=pasteboard",
          "missing-key:fileName record-in-store:file_data"},
      {kView + "text", "missing-key:file_data"},
      {"mlumoapi://profile/sdk_launch_mini_app?src_type=app&version=1&mini_appid=&mini_type=0",
          "missing-key:mini_appid"},
      {"mlumoapi://profile/sdk_avatar_edit?" + kSender + "img", "missing-key:objectlocation"},
      {"mlumoguild://mlumoguild/guild/join?a=1", "missing-key:sig"},
      // Kinds.
      {kShare + kSender + "Text", "unknown-kind:file_type"},
      {kShare + kSender + "image&objectlocation=url", "unknown-kind:file_type"},
      {kView + "localFile&fileName=x", "unknown-kind:file_type record-in-store:file_data"},
      {"mlumoapi://auth/sdk_check_auth?" + kSender + "img", "unexpected-word:file_type"},
      // Pairs, and what should have been pairs.
      {kText + "&titel=SGk=", "unknown-key:titel"},
      {kText + "&title=SGk=&title=SG8=", "duplicate-key:title"},
      {kText + "&appid=a&b", "cut-value:appid"},
      {kText + "&title=SGk&b=c", "bad-base64:title unknown-key:b cut-value:title"},
      {kText + "&&title=SGk=", "empty-piece:file_data"},
      {kText + "&openId=a&src_type=web",
          "duplicate-key:src_type unexpected-word:src_type injected-key:src_type"},
      {kText + "&openId=a&title=SGk=&title=SG8=", "injected-key:title duplicate-key:title"},
      {kShare + "fileName=a&b=c&" + kText.substr(kShare.size()), "unknown-key:b injected-key:b"},
      {"mlumoguild://mlumoguild/guild/join?b=1&a=1&sig=x", "unsorted-key:a"},
      {"mlumoguild://mlumoguild/guild/join?a=1&sig=x&z=1", "unsorted-key:z"},
      // Values.
      {kText + "&version=2", "duplicate-key:version unexpected-word:version"},
      {kText + "&shareType=2&cflag=-1&mini_type=18446744073709551615",
          "unexpected-word:shareType bad-number:cflag"},
      {kText + "&title=SG%20k", "bad-base64:title"},
      {kText + "&title=SGk", "bad-base64:title"},
      {kText + "&title=SGk%253D", "double-escape:title bad-base64:title"},
      {kText + "&appid=50%25%20", ""},
      {kText + "&title=/w==&appid=%FF", "not-utf8:title not-utf8:appid"},
      {kText + "&title=SGk%3D", ""},
      {kView + "text&file_data=SGk%3D", "bad-base64:file_data"},
      {kLink + kTitle + "&flashurl=YSBi&extMap=ew==", "bad-link:flashurl bad-json:extMap"},
      {kView + "nimbo&extMap=Nw==", "bad-json:extMap"},
      {kLink + kTitle + "&pasteboard=aGVsbG8=", "bad-record:pasteboard"},
      {kText + "&title=" + base64(129) + "&tagName=" + base64(129) + "&messageExt=" + base64(257),
          "limit-exceeded:title limit-exceeded:tagName limit-exceeded:messageExt"},
      {kView + "text&file_data=" + base64(1537), ""},
  };
  for (const auto& [url, expected] : kCases) {
    SCOPED_TRACE(url.substr(0, 300));
    const Findings found = findings(url);
    EXPECT_EQ(codesOf(found), expected);
    expectHarmless(textOf(found, {}));
  }
}

TEST(Inspect, LooksIntoTheRecordAndTheStore) {
  const Data large(std::string(1'048'577, 'x')), larger(std::string(5'242'881, 'x'));
  const Value::Dictionary picture{{"file_data", Data("x"s)}};
  const std::string kFaces =
      "mlumoapi://profile/sdk_face_collection?" + kSender + "img&objectlocation=pasteboard";
  const struct {
    std::string url;
    Store store;
    std::string codes;
  } kCases[] = {
      {kPicture, {}, "record-in-store:file_data"},
      {kPicture, {true, nullptr}, "record-missing:file_data"},
      {kPicture, storeOf(picture), ""},
      {kPicture, storeOf({{"previewimagedata", large}}),
          "record-incomplete:file_data limit-exceeded:previewimagedata"},
      {kPicture, storeOf({{"file_data", larger}}), "limit-exceeded:file_data"},
      {kView + "img", storeOf({{"file_data", larger}, {"previewimagedata", large}}), ""},
      {kShare + kSender + "img&objectlocation=pasteboard&previewimageUrl=aDovL2g=", {true, nullptr}, ""},
      {kText, storeOf({}), ""},
      {kFaces, storeOf({{"image_data_list", Value::Array(10, Data("x"s))}}),
          "limit-exceeded:image_data_list"},
      {kFaces, storeOf({{"image_data_list", Value::Array{large}}}), "limit-exceeded:image_data_list[0]"},
  };
  for (const auto& [url, store, expected] : kCases) {
    EXPECT_EQ(codesOf(findings(url, store)), expected) << url;
  }

  const Value form = Value::Dictionary{{"textArray", Value::Array{"one", "two"}}, {"title", "Hi"}};
  const Findings found = findings(kView + "common",
      storeOf({{"file_data", lumo::archivedData(form)->joined()}, {"pasted_kiva_data", "Y2FyZA=="}}));
  std::string text;
  for (const RecordEntry& entry : found.record->entries)
    text += entry.path + "=" + entry.text.value_or("-") + " ";
  EXPECT_EQ(text,
      "file_data=- file_data.textArray=a list of 2 file_data.textArray[0]=one "
      "file_data.textArray[1]=two file_data.title=Hi pasted_kiva_data=card ");
}

TEST(Inspect, TellsPicturesByTheirHeads) {
  const std::string kJPEG = "\xFF\xD8\xFF\xE0\0\x04zz\xFF\xFF\xC2\0\x0B\x08\0\x3C\0\x60"s;
  const std::string kRIFF = "RIFF\0\0\0\0WEBPVP8"s, kZeros(16, '\0');
  const struct {
    std::string bytes, words, extension, size;
  } kCases[] = {
      {kJPEG, "JPEG picture", "jpg", "96x60"},
      {"\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\1\0\2\0\0\1\0"s, "PNG picture", "png", "65538x256"},
      {"GIF89a\2\1\4\3"s, "GIF picture", "gif", "258x772"},
      {kRIFF + " " + "\0\0\0\0\0\0\0\x9D\1\x2A\x40\x41\x10\0"s, "WebP picture", "webp", "320x16"},
      {kRIFF + "L" + "\0\0\0\0\x2F\x3F\1\1\0"s + kZeros, "WebP picture", "webp", "320x5"},
      {kRIFF + "X" + "\0\0\0\0\0\0\0\0\x3F\1\0\1\0\0"s, "WebP picture", "webp", "320x2"},
      {"\0\0\0\x18"
       "ftypheic"s,
          "HEIC picture", "heic", ""},
      {"\0\0\0\x18"
       "ftypisom"s,
          "MP4 video", "mp4", ""},
      {"bplist00", "property list", "plist", ""},
      {"h\xC3\xA4\n", "text", "txt", ""},
      {"h\x1B", "unknown bytes", "bin", ""},
      {"\xFF", "unknown bytes", "bin", ""},
      {"", "nothing", "bin", ""},
  };
  for (const auto& [bytes, words, extension, size] : kCases) {
    SCOPED_TRACE(words);
    const auto sizeOf = [](const Content& content) {
      return content.size ? std::to_string(content.size->width) + "x" + std::to_string(content.size->height)
                          : "";
    };
    const Content content = contentOf(Data::copy(bytes));
    EXPECT_EQ(content.inWords, words);
    EXPECT_EQ(content.extension, extension);
    EXPECT_EQ(sizeOf(content), size);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
      const std::string part = sizeOf(contentOf(Data(
          std::vector<std::uint8_t>(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length)))));
      EXPECT_TRUE(part.empty() || part == size) << part << " of " << length << " bytes";
    }
  }
}

TEST(Inspect, SaysWhereATextStopsBeingAURL) {
  const struct {
    std::string text;
    std::size_t offset;
    std::string reason;
  } kCases[] = {
      {"a://b?c=d e", 9, "a blank, which is written %20"},
      {"a://b?c=%2", 8, "a “%” without"},
      {"a://b/\x1B", 6, "a control character, which is written %1B"},
      {"a://b?c=[", 8, "“[”, which is written %5B"},
      {"a://b/#c#", 8, "a second “#”"},
      {"a://\xC3\xA4/", 4, "only ASCII"},
      {"a://b:x/", 4, "the part before the path"},
      {"\xFF", 0, "bytes that are no UTF-8"},
      {"hello", 0, "a launch URL begins"},
      {"{\"url\"", 0, "a document"},
      {"", 0, "no text"},
  };
  for (const auto& [text, offset, reason] : kCases) {
    NoURL found{};
    EXPECT_FALSE(launchURLOf(text, found)) << text;
    EXPECT_EQ(found.offset, offset) << text;
    EXPECT_TRUE(found.reason.starts_with(reason)) << text << ": " << found.reason;
  }
  EXPECT_EQ(textOf("a://b/ü?c=d\x1B e", {12, "why"}),
      "not a URL: byte 13: why\n  a://b/ü?c=d\\x1b e\n             ^");
}

TEST(Inspect, TextOfStrangersStaysText) {
  const std::pair<std::string, std::string> kCases[] = {
      {"a\n\r\t\x1B[31m\x7F", R"(a\n\r\t\x1b[31m\x7f)"},
      {"\xC2\x9B"
       "2J",
          R"(\u{009b}2J)"},
      {"a\u202E\u2066\uFEFF", R"(a\u{202e}\u{2066}\u{feff})"},
      {"\U000E0041", R"(\u{e0041})"},
      {"\xFF\xC3(\xE2\x82", R"(\xff\xc3(\xe2\x82)"},
      {"\xED\xA0\x80\xC0\x80", R"(\xed\xa0\x80\xc0\x80)"},
      {"häß 漢字 👩‍🚀", "häß 漢字 👩‍🚀"},
  };
  for (const auto& [text, expected] : kCases) EXPECT_EQ(printable(text), expected);
  EXPECT_EQ(printableJSON("\"\u009B\u202E\U000E0041\"\n"), "\"\\u009b\\u202e\\udb40\\udc41\"\n");
  EXPECT_EQ(columnsOf("ä漢e\u0301"), 4u);
  EXPECT_EQ(wrapped("one two three 漢字漢字漢字", 8),
      (std::vector<std::string>{"one two", "three", "漢字漢字", "漢字"}));
  EXPECT_EQ(cut("漢字漢字", 6), "漢字…");
  EXPECT_EQ(grouped(1'234'567) + grouped(999) + grouped(1000), "1,234,5679991,000");

  const std::string kHostile = "x\x1B]0;\x07\xC2\x9B\u202Ey" + std::string(300, 'z');
  const Findings found =
      findings(kShare + kSender + "text&file_data=" + lumo::base64Encoded(kHostile) +
                   "&thirdAppDisplayName=" + lumo::base64Encoded(kHostile) + "&appid=%1B%0A&%1B=",
          storeOf({{kHostile, kHostile}}));
  expectHarmless(textOf(found, {.isFull = true}, {{"Saved", {kHostile}}}), Width::Any);
  const std::string text = textOf(found, {});
  expectHarmless(text);
  EXPECT_NE(text.find("… 309 characters in all; --full"), std::string::npos) << text;
  const std::string json = jsonOf(documentOf(found));
  expectHarmless(json, Width::Any);
  const Value document = lumo::parseJSON(json).value();
  const Value& entry = (*document.asDictionary()->find("entries")->asArray())[4];
  EXPECT_EQ(*entry.asDictionary()->find("value")->asString(), kHostile);
}

TEST(Inspect, ManyPairsTakeNoTime) {
  std::string url = kText;
  for (int i = 0; i < 200'000; ++i) url += "&k" + std::to_string(i) + "=v&a=&b&";
  url += "title=SGk=";
  const Findings found = findings(url);
  EXPECT_LE(found.entries.size(), 110u);
  EXPECT_EQ(found.entriesLeftOut + found.entries.size(), 400'006u);
  EXPECT_EQ(*found.text("title"), "Hi") << "a key that counts is shown wherever it stands";
  EXPECT_GT(found.warnings.leftOut(), 500'000u);
  EXPECT_LT(textOf(found, {}).size(), 20'000u);
  EXPECT_EQ(findings(url, {}, true).entriesLeftOut, 0u);

  Value::Array deep;
  for (int level = 1; level < 511; ++level) deep = Value::Array{deep};
  const std::string map = lumo::base64Encoded(*lumo::writeJSON(deep));
  EXPECT_TRUE(lumo::parseJSON(jsonOf(documentOf(findings(kText + "&extMap=" + map)))));
}

TEST_F(InspectTest, SavesBytesInTheFolderAlone) {
  const Data bytes("\xFF\xD8\xFFpicture"s);
  LumoApiFilePasteboard((folder_ / "s").string())
      .write(std::make_shared<LumoApiLargeData>(LumoApiLargeData{{"../../up", bytes}, {"/a/b", bytes},
          {"a.b", Data("text"s)}, {"..", bytes}, {"image_data_list", Value::Array{bytes, bytes}}}));
  const std::string kSave = "lumoapi inspect --store s --save d \"$(cat)\"";
  EXPECT_EQ(shell(kSave, kPicture + "&previewimageData=AAEC").status, 0);
  std::set<std::string> names;
  for (const auto& entry : fs::recursive_directory_iterator(folder_))
    names.insert(fs::relative(entry.path(), folder_));
  EXPECT_EQ(names,
      (std::set<std::string>{"s", "in", "out", "err", "d", "d/up.jpg", "d/a-b.jpg", "d/a-b-2.txt",
          "d/entry.jpg", "d/image_data_list-0.jpg", "d/image_data_list-1.jpg", "d/previewimageData.bin"}));
  EXPECT_EQ(read("d/image_data_list-1.jpg"), bytes.view());
  EXPECT_NE(read("out").find("\nSaved\n  d/previewimageData.bin\n  d/up.jpg\n"), std::string::npos);

  // Neither a file nor a link in its place is written to.
  fs::remove_all(folder_ / "d");
  fs::create_directory(folder_ / "d");
  fs::create_symlink("../in", folder_ / "d/up.jpg");
  const Outcome outcome = shell(kSave, kPicture);
  EXPECT_EQ(outcome.status, 4);
  EXPECT_EQ(outcome.errors, "lumoapi: d/up.jpg: File exists\n");
  EXPECT_EQ(read("in"), kPicture);
  EXPECT_NE(shell("lumoapi inspect --save e \"$(cat)\"; test ! -e e", kText).output.find("nothing"),
      std::string::npos);
}

TEST_F(InspectTest, DocumentForPrograms) {
  const std::string url =
      "mlumothirdappgroup://thirdappgroup/"
      "joingroup?unionid=%26&cflag=18446744073709551615&extMap=eyJhIjoxfQ==";
  const Value document = lumo::parseJSON(jsonOf(documentOf(findings(url)))).value();
  const auto json = [](std::string text) { return lumo::parseJSON(text).value(); };
  const auto& members = *document.asDictionary();
  EXPECT_EQ(*members.find("url"), Value(url));
  EXPECT_EQ(*members.find("parts"),
      json(R"({"scheme":"mlumothirdappgroup","host":"thirdappgroup","path":"/joingroup"})"));
  EXPECT_EQ(*members.find("destination"),
      json(R"({"name":"join-group","asks":"let the user join a group of the app",
      "direction":"to-messenger","messenger":"main"})"));
  EXPECT_EQ(*members.find("entries"), json(R"([
      {"key":"unionid","meaning":"identifier of the group","encoding":"plain","raw":"%26","value":"&","counts":true},
      {"key":"cflag","meaning":"control flags","encoding":"number","raw":"18446744073709551615",
       "value":18446744073709551615,"counts":true},
      {"key":"extMap","meaning":"extra map","encoding":"base64-json","raw":"eyJhIjoxfQ==","value":{"a":1},
       "counts":true}])"));
  const std::string text =
      jsonOf(documentOf(findings(kPicture, storeOf({{"file_data", Data("GIF89a\2\0\1\0"s)}}))));
  const Value record = lumo::parseJSON(text).value();
  EXPECT_EQ(*record.asDictionary()->find("record"), json(R"({"place":"store","announced":true,"entries":[
      {"path":"file_data","meaning":"main bytes","content":"GIF picture","size":10,"width":2,"height":1}],"leftOut":0})"));
  EXPECT_EQ(*record.asDictionary()->find("kind"), json(R"({"word":"img","meaning":"a picture"})"));
}

}  // namespace
