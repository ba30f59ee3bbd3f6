// The tool as a whole, as a shell and as another program meet it.

#include "LumoApi/Base64.h"
#include "platform/values/JSON.h"
#include "tests/cli/ShellTest.h"

#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;

class ToolTest : public ShellTest {
 protected:
  /// Runs a command over the requests, one a line, and holds each result against what it must be.
  void expectResults(
      const std::string& command, const std::vector<std::pair<std::string, std::string>>& results) {
    std::string requests, line;
    for (const auto& [request, result] : results) requests += request + "\n";
    std::istringstream output(shell(command, requests).output);
    for (const auto& [request, result] : results) {
      std::getline(output, line);
      EXPECT_EQ(line, result) << request;
    }
    EXPECT_FALSE(std::getline(output, line)) << line;
  }
};

const std::string kHello = R"({"message":{"object":{"class":"LumoApiTextObject","text":"hello"}}})";
const std::string kHelloURL =
    "mlumoapi://share/to_fri?src_type=app&version=1&file_type=text&callback_type=scheme&file_data=aGVsbG8=";

std::string titled(std::size_t length) {
  return R"({"message":{"object":{"class":"LumoApiTextObject","text":"a","title":")" +
         std::string(length, 't') + "\"}}}";
}

TEST_F(ToolTest, StatusAndStreamsOfEachEnd) {
  const std::string kMessage = "{\n  \"message\": {\n    \"type\": 3,";
  const std::string kNoMessage = "{\n  \"message\": null,\n  \"log\": []\n}\n";
  const std::string kStaging =
      R"({"message":{"object":{"class":"LumoApiImageArrayForNimboObject","imageDataArray":[{"$data":""}]}}})";
  const std::string kDeep = R"({"message":)" + std::string(600, '[') + std::string(600, ']') + "}";
  const std::string kUnknown = "mlumoapi://nowhere?a=b";
  const struct {
    std::string line, input;
    int status;
    std::string output = "", errors = "";  // each: what the stream begins with, or nothing
  } kCases[] = {
      {"lumoapi encode --url in", kHello, 0, kHelloURL + "\n"},
      {"cat in | lumoapi encode --url /dev/stdin", kHello, 0, kHelloURL + "\n"},
      {"lumoapi encode", titled(128), 0, "{\n  \"url\": \"mlumoapi://"},
      {"lumoapi encode", titled(129), 1, "{\n  \"url\": null,",
          "lumoapi: refused: title: 129 UTF-16 code units"},
      {"lumoapi encode --lines --url", "\n" + kHello + "\r\n \t\r\n{}\n" + titled(129) + "\n" + kHello, 3,
          kHelloURL + "\n\n\n" + kHelloURL + "\n",
          "lumoapi: standard input:4: message: missing\n"
          "lumoapi: standard input:5: refused: title: 129 UTF-16 code units, at most 128\n"},
      {"lumoapi encode --url", R"({"message":null})", 1, "", "lumoapi: refused: message: missing or empty\n"},
      {"lumoapi decode 'demo://request_from_lumo/pick?a='", "", 0, kMessage},
      {"lumoapi decode -", R"({"url":"demo://request_from_lumo/pick?a="})", 0, kMessage},
      {"lumoapi decode a:b", "", 1, kNoMessage, "lumoapi: no message: host: missing or empty\n"},
      {"lumoapi decode --store none a:b", "", 1, kNoMessage, "lumoapi: no message: host: missing or empty\n"},
      {"mv in f:g; lumoapi decode f:g", "{}", 3, "", "lumoapi: f:g: url: missing\n"},
      {"lumoapi decode 'x://a b'", "", 3, "", "lumoapi: x://a b: url: not a valid URL\n"},
      {"lumoapi decode --lines x://y", "", 4, "", "lumoapi: x://y: No such file or directory\n"},
      {"lumoapi decode --lines --store s", "", 2, "", "lumoapi: --store excludes --lines\n"},
      {"lumoapi decode --store in a:b", "x", 4, "", "lumoapi: in: not a large-data record\n"},
      {"cp in f; lumoapi encode --store f in; status=$?; cmp in f && exit $status", kStaging, 4, "",
          "lumoapi: f: not a large-data record\n"},
      {"lumoapi encode --store no/s", kStaging, 4, "", "lumoapi: no/s: No such file or directory\n"},
      {"lumoapi", "", 2, "", "Turns messages"},
      {"lumoapi encoed", "", 2, "",
          "lumoapi: no command encoed, did you mean encode?\n\nUsage: lumoapi COMMAND"},
      {"lumoapi encode --uri", kHello, 2, "", "lumoapi: no option --uri, did you mean --url?\n\nUsage: "},
      {"lumoapi encode", "{\n \"ä\" 1}", 3, "", "lumoapi: standard input: line 2, column 6: not JSON\n"},
      {"lumoapi encode", kDeep, 3, "", "lumoapi: standard input: line 1, column 523: nested too deeply\n"},
      {"lumoapi encode", R"({"message":7})", 3, "", "lumoapi: standard input: message: not an object but 7"},
      {"lumoapi encode --lines .", "", 4, "", "lumoapi: .: Is a directory\n"},
      {"lumoapi encode >/dev/full", kHello, 4, "", "lumoapi: standard output: No space left on device\n"},
      {"lumoapi encode <&-", "", 4, "", "lumoapi: standard input: Bad file descriptor\n"},
      {"{ lumoapi encode; echo $? >&2; } | false", titled(200'000), 1, "", "4\n"},
      {"lumoapi --version", "", 0, "lumoapi "},
      {"lumoapi --help", "", 0, "Turns messages into URLs"},
      {"lumoapi help inspect", "", 0, "Explains a launch URL"},
      // What a URL says.
      {"lumoapi inspect \"$(cat)\"", kHelloURL, 0, "An app asks the messenger to share a text.\n"},
      {"lumoapi inspect", "  " + kHelloURL + " \r\nsecond", 0, "An app asks"},
      {"lumoapi inspect -", kHelloURL, 0, "An app asks"},
      {"lumoapi inspect \"$(cat)\"", kUnknown, 1, "Neither"},
      {"lumoapi inspect --json \"$(cat)\"", kUnknown, 1, "{\n  \"url\": \"" + kUnknown},
      {"lumoapi inspect a b", "", 2, "", "lumoapi: "},
      {"lumoapi inspect --color=blue x", "", 2, "", "lumoapi: --color"},
      {"lumoapi inspect \"$(cat)\"", "a b", 3, "",
          "lumoapi: not a URL: byte 2: a blank, which is written %20\n  a b\n   ^"},
      {"lumoapi inspect --json", "", 3, "{\n  \"url\": \"\",\n", "lumoapi: not a URL"},
      {"lumoapi inspect --store in \"$(cat)\"", kHelloURL, 4, "", "lumoapi: in: not a large-data record\n"},
      {"lumoapi inspect \"$(cat)\" >/dev/full", kHelloURL, 4, "",
          "lumoapi: standard output: No space left on device\n"},
      {"lumoapi inspect --color=always \"$(cat)\"", kHelloURL, 0, "\x1B[1mAn app"},
      {"TERM=xterm NO_COLOR= script -qec \"lumoapi inspect '$(cat)'\" /dev/null </dev/null", kHelloURL, 0,
          "\x1B[1mAn app"},
      {"TERM=xterm NO_COLOR=1 script -qec \"lumoapi inspect '$(cat)'\" /dev/null </dev/null", kHelloURL, 0,
          "An app"},
      // What would be refused or looks wrong.
      {"lumoapi lint", " " + kHello, 0, ""},
      {"lumoapi lint", kHelloURL + "\n\n" + kHelloURL + "&titel=SGk=\r\na b", 1,
          "standard input:3: unknown-key: titel: nobody reads it, did you mean title?\n"
          "standard input:4: not-a-url: byte 2: a blank, which is written %20\n"},
      {"lumoapi lint in -", titled(129), 1, "in: too-long: title: 129 UTF-16 code units, at most 128\n"},
      {"lumoapi lint in", "{\n\"message\"}", 1, "in: bad-document: line 2, column 10: not JSON\n"},
      {"lumoapi lint in", R"({"mesage":null})", 1,
          "in: bad-document: mesage: unknown member, did you mean message?\n"},
      {"lumoapi lint in", R"({"message":{"object":{"class":"LumoApiResultObject"}}})", 1,
          "in: unknown-kind: object: "},
      {"lumoapi lint in", R"({"url":"demo://request_from_lumo/view?file_type=txt"})", 1,
          "in: unknown-kind: file_type: “txt” is no kind of content, did you mean text?\n"},
      {"lumoapi lint in",
          R"({"url":"x:?NeedToGetData=true","entry":"messageWithUrlUsedClipboard",)"
          R"("datastore":{"apiMessage":{}}})",
          0, ""},
      {"lumoapi lint --lines in", kHello + "\n" + titled(129), 1, "in:2: too-long: title: 129"},
      {"lumoapi lint in", "", 1, "in: not-a-url: byte 1: no text at all\n"},
      {"lumoapi lint 'demo://request_from_lumo/view?file_type=img'", "", 0, ""},
      {"lumoapi lint in none", "\x1B", 4, "in:1: not-a-url: byte 1: a control character",
          "lumoapi: none: No such file or directory\n"},
      {"lumoapi lint --json", kHello, 0, "[]\n"},
      {R"(lumoapi lint --json --lines in | tr -d ' \n')", "\n" + titled(129), 0,
          R"([{"file":"in","line":2,"code":"too-long","key":"title","message":"title:129UTF-16codeunits,atmost128"}])"},
      // QR codes.
      {"lumoapi qr", "demo://" + std::string(2947, 'a'), 1, "",
          "lumoapi: refused: url: 2954 bytes, at most 2953 in a QR code\n"},
      {"lumoapi qr", R"({"message":null})", 1, "", "lumoapi: refused: message: missing or empty\n"},
      {"lumoapi qr", R"({"url":null})", 1, "", "lumoapi: refused: the document's url is null\n"},
      {"lumoapi qr 'a:b c'", "", 3, "", "lumoapi: not a URL: byte 4: a blank"},
      {"lumoapi qr", "{", 3, "", "lumoapi: standard input: line 1, column 2: "},
      {"lumoapi qr --png no/p a:b", "", 4, "", "lumoapi: no/p: No such file or directory\n"},
      {"script -qec 'stty cols 28; lumoapi qr demo://a 2>in' /dev/null >s; status=$?; cat in >&2; exit "
       "$status",
          "", 1, "", "lumoapi: refused: the code is 29 columns wide, the terminal 28;"},
      {"lumoapi qr 'demo://request_from_lumo/view?file_type=img' >f", "", 0, "",
          "lumoapi: the bytes beside the URL"},
  };
  for (const auto& [line, input, status, output, errors] : kCases) {
    SCOPED_TRACE(line + " <<< " + input.substr(0, 100));
    const Outcome outcome = shell(line, input);
    EXPECT_EQ(outcome.status, status);
    expectBeginning(outcome.output, output);
    expectBeginning(outcome.errors, errors);
  }
}

TEST_F(ToolTest, TheHelpBeginsWithATrueExample) {
  for (const std::string command : {"encode", "decode", "lint"}) {
    std::istringstream help(shell("lumoapi " + command + " --help").output);
    std::string line, shown;
    while (!line.starts_with("  $ ")) ASSERT_TRUE(std::getline(help, line));
    std::istringstream output(shell(line.substr(4)).output);
    while (std::getline(output, shown) && std::getline(help, line)) EXPECT_EQ("  " + shown, line);
    EXPECT_TRUE(std::getline(help, line) && line.empty()) << line;
  }
}

TEST_F(ToolTest, LaunchURLsAndAllElseThatTheConversionDid) {
  fs::create_directory(folder_ / "sub");
  write("cat.jpg", "\xFF\xD8");
  const std::string kLog = R"(,"log":["urlWithMessage, share with :LumoApi)", kBytes = R"({"$data":"/9g="})";
  const std::string kText = kLog + R"(TextObject","pasteboarditem count: 0"],"apiLargeData":)";
  const std::string kObject = R"(,"object":{"class":"LumoApiTextObject","text":"hello"}})";
  const std::string kBare = R"({"url":")" + kHelloURL;
  expectResults("mv in sub/; lumoapi encode --lines sub/in",
      {{R"({"message":{"type":5,"object":{"class":"LumoApiImageObject","imageDataArray":[{"$file":"../cat.jpg"}],)"
        R"("data":{"$file":"./../cat.jpg"},"title":"<\/>"}},"currentObject":{"class":"LumoApiObject","cflag":9},)"
        R"("datastore":{"scheme":"demo","uin":-7,"apiLargeData":{"file_data":{"$data":"AAEC"}}}})",
           R"({"url":"mlumoapi://share/to_fri?src_type=app&version=1&file_type=img&callback_type=scheme)"
           R"(&objectlocation=pasteboard&callback_name=demo&title=PC8+&shareType=0&uin=-7&cflag=9")" +
               kLog + R"(ImageObject","pasteboarditem count: 2"],"apiLargeData":{"file_data":)" + kBytes +
               R"(,"image_data_list":[)" + kBytes + R"(]},"object":{"class":"LumoApiImageObject","data":)" +
               kBytes + R"(,"imageDataArray":[)" + kBytes + R"(],"title":"</>"}})"},
          // What a line brings along is not there for the next.
          {kHello, kBare + "\"" + kText + "null" + kObject},
          {kHello.substr(0, kHello.size() - 1) + R"(,"datastore":{"scheme":"s","apiLargeData":{}}})",
              kBare + "&callback_name=s\"" + kText + "{}" + kObject},
          {"[", R"({"error":"column 2: the text ends early"})"},
          {R"({"message":null})", R"({"url":null,"log":[],"apiLargeData":null,"object":null})"}});
}

TEST_F(ToolTest, MessagesOfURLsThatOpenedTheApp) {
  const auto viewed = [](const std::string& query, const std::string& more) {
    return R"({"url":"demo://request_from_lumo/view?file_type=)" + query + "\"" + more + "}";
  };
  const auto shown = [](const std::string& object) {
    return R"({"message":{"type":1,"object":{"class":"LumoApi)" + object + R"(}},"log":[]})";
  };
  const std::string kDeep = lumo::base64Encoded(std::string(510, '[') + std::string(510, ']'));
  const std::string kNone = R"({"message":null,"log":[]})";
  const std::string kStored =
      R"(,"datastore":{"apiMessage":{"object":{"class":"LumoApiObject","cflag":3}}}})";
  const std::string kAnnounced = R"({"url":"x:?NeedToGetData=true","entry":"messageWithUrl)";
  expectResults("lumoapi decode --lines",
      {{viewed("img", R"(,"datastore":{"apiLargeData":{"file_data":{"$data":"AAEC"}}})"),
           shown(R"(ImageObject","data":{"$data":"AAEC"})")},
          {viewed("img", ""), shown("ImageObject\"")},
          {viewed("nimbo&extMap=eyIkZGF0YSI6MX0=", ""),
              shown(R"(ImageArrayForNimboObject","extMap":{"$data":1})")},
          {viewed("nimbo&extMap=" + kDeep, ""),
              R"({"error":"the result is nested too deeply or holds a text that is not UTF-8"})"},
          {R"({"url":"https:a","webView":{"claims":["x","https:"],"message":{"isSupportKiva":true,"kivaObject":{}}}})",
              R"({"message":{"type":0,"object":null,"isSupportKiva":true,"kivaObject":{}},"log":)"
              R"(["YES == [LumoWebViewKit canHanleOpenUrlFromSafari:url]"]})"},
          {R"({"url":"https:a","webView":{"claims":["http://","ttps:"]}})", kNone},
          {kAnnounced + "UsedClipboard\"" + kStored,
              R"({"message":{"type":0,"object":{"class":"LumoApiObject","cflag":3}},"log":[]})"},
          {kAnnounced + "UsedClipboard\"}", kNone}, {kAnnounced + "NoClipboard\"" + kStored, kNone},
          {kAnnounced + "\"" + kStored, kNone}, {R"({"url":null,"entry":null})", kNone},
          {R"({"url":"","message":null})", R"({"error":"message: unknown member"})"},
          {R"({"url":"","entry":"url"})",
              R"({"error":"entry: none of messageWithUrl, messageWithUrlNoClipboard, )"
              R"(messageWithUrlUsedClipboard"})"}});
}

TEST_F(ToolTest, TwoProcessesMeetInAStore) {
  const std::string kTitles = R"("title":"中 &","description":""})", kPreview = R"("$data":"AAEC"},)";
  const std::string kData = R"(Object","data":{"$data":"/w=="},"previewImageData":{)" + kPreview + kTitles;
  const std::string kLink = R"(Object","url":"http://a/?b=c&d#e","previewImageData":{)" + kPreview;
  const std::string kMap = R"("title":"t","extMap":{"a":[null,1.5]}})";
  for (const std::string& rest : {R"(TextObject","text":"é+/=",)" + kTitles, "Image" + kData,
           "Extend" + kData, "URL" + kLink + kTitles, "Audio" + kLink + R"("targetContentType":1,)" + kTitles,
           "Video" + kLink + R"("targetContentType":2,)" + kTitles,
           "News" + kLink + R"("targetContentType":3,)" + kTitles,
           R"(VideoForNimboObject","assetURL":"assets:x",)" + kMap,
           R"(VideoForNimboObject","videoData":{)" + kPreview + kMap,
           R"(ImageArrayForNimboObject","imageDataArray":[{"$data":""},{"$data":"AA=="}],)" + kMap,
           R"(CommonContentObject","textArray":["t"],"previewImageData":{)" + kPreview + kTitles}) {
    const std::string object = R"({"class":"LumoApi)" + rest;
    SCOPED_TRACE(object);
    const Outcome decoded = shell(
        "rm -f store; url=$(lumoapi encode --url --store store) && "
        "lumoapi decode --store store \"demo://request_from_lumo/view${url#*/to_fri}\"",
        R"({"message":{"object":)" + object + "}}");
    ASSERT_EQ(decoded.status, 0) << decoded.errors;
    const lumo::Value result = lumo::parseJSON(decoded.output).value();
    const lumo::Value& message = *result.asDictionary()->find("message");
    EXPECT_EQ(*message.asDictionary()->find("object"), lumo::parseJSON(object).value());
    EXPECT_EQ(shell("lumoapi encode", R"({"message":)" + writeJSON(message).value() + "}").status, 0);
  }
  // A request's own record goes into the store first; one that neither brings nor stages any keeps it.
  EXPECT_EQ(shell("lumoapi encode --store s >a; echo '" + kHello +
                      "' | lumoapi encode --store s | grep -o BBBB; "
                      "lumoapi decode --store s 'x://request_from_lumo/view?file_type=img' | grep -o BBBB",
                R"({"message":null,"datastore":{"apiLargeData":{"file_data":{"$data":"BBBB"}}}})")
                .output,
      "BBBB\nBBBB\n");
}

TEST_F(ToolTest, ManyLinesKeepTheirOrderAndOneInErrorStopsNothing) {
  std::string lines, results;
  for (int i = 0; i < 10'000; ++i) {
    const std::string object = R"({"class":"LumoApiMiniProgramLaunchObject","appParameter":")" +
                               std::to_string(i) + std::string(i == 7'000 ? 3'000'000 : 0, 'x') + "\"}";
    lines += i == 5'000 ? R"({"message":{"typ":0}})" : R"({"message":{"object":)" + object + "}}";
    results += i == 5'000 ? R"({"error":"message.typ: unknown member, did you mean type?"})"
                          : R"({"url":null,"log":["urlWithMessage, share with )"
                            R"(:LumoApiMiniProgramLaunchObject"],"apiLargeData":null,"object":)" +
                                object + "}";
    lines += i == 9'999 ? "" : "\n";
    results += "\n";
  }
  const Outcome outcome = shell("lumoapi encode --lines in", lines);
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.errors, "");
  EXPECT_TRUE(outcome.output == results);
}

TEST_F(ToolTest, AResultComesBeforeTheNextLineIsWaitedFor) {
  // The second line arrives in two pieces, the first of them together with the first line.
  const Outcome outcome = shell(R"(mkfifo to from; lumoapi encode --lines --url <to >from & exec 3>to 4<from
      request=$(cat); printf '%s\n%.9s' "$request" "$request" >&3; timeout 10 head -n 1 <&4
      printf '%s\n' "${request#?????????}" >&3; timeout 10 head -n 1 <&4; exec 3>&-; wait $!)",
      kHello);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, kHelloURL + "\n" + kHelloURL + "\n");
}

TEST_F(ToolTest, ATerminalShowsTheProgressOfLongWork) {
  // The results are not read for a while, so that the work takes long.
  const Outcome outcome = shell(R"(yes "$(cat) " | head -n 8000 >f
      script -qec 'lumoapi encode --lines f | { sleep 0.5; wc -l; }' /dev/null | cat -v)",
      kHello);
  EXPECT_EQ(outcome.output.substr(0, 5), "^Mf: ");
  EXPECT_NE(outcome.output.find(" % of "), std::string::npos) << outcome.output;
  EXPECT_TRUE(outcome.output.ends_with("^M^[[K8000^M\n")) << outcome.output;
}

}  // namespace
