// The tool as a whole, as a shell and as another program meet it.

#include "platform/JSON.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace {

namespace fs = std::filesystem;

class ToolTest : public ::testing::Test {
 protected:
  struct Outcome {
    int status;
    std::string output;
    std::string errors;
  };

  ToolTest() {
    std::string name = (fs::temp_directory_path() / "lumoapi-XXXXXX").string();
    folder_ = ::mkdtemp(name.data());
  }
  ~ToolTest() override { fs::remove_all(folder_); }

  void write(const std::string& name, const std::string& text) { std::ofstream(folder_ / name) << text; }
  std::string read(const std::string& name) {
    std::stringstream text;
    text << std::ifstream(folder_ / name).rdbuf();
    return text.str();
  }

  /// Runs a line of shell, in which `lumoapi` is the tool, in a folder of the test's own.
  Outcome shell(const std::string& line, const std::string& input = "") {
    write("in", input);
    const std::string script = "cd '" + folder_.string() + "' && PATH=\"" +
                               fs::path(LUMOAPI_TOOL).parent_path().string() + ":$PATH\" && { " + line +
                               "\n} <in >out 2>err";
    const int status = std::system(script.c_str());
    return {WEXITSTATUS(status), read("out"), read("err")};
  }

  fs::path folder_;
};

const std::string kHello = R"({"message":{"object":{"class":"LumoApiTextObject","text":"hello"}}})";
const std::string kHelloURL =
    "mlumoapi://share/to_fri?src_type=app&version=1&file_type=text&callback_type=scheme&file_data=aGVsbG8=";

std::string titled(std::size_t length) {
  return R"({"message":{"object":{"class":"LumoApiTextObject","text":"a","title":")" +
         std::string(length, 't') + "\"}}}";
}

TEST_F(ToolTest, StatusAndStreamsOfEachEnd) {
  const std::string kDeep = R"({"message":)" + std::string(600, '[') + std::string(600, ']') + "}";
  struct {
    std::string line, input;
    int status;
    std::string output, errors;  // each: what the stream begins with; empty: nothing stands there
  } const kCases[] = {
      {"lumoapi encode --url", kHello, 0, kHelloURL + "\n", ""},
      {"lumoapi encode --url - ", kHello, 0, kHelloURL + "\n", ""},
      {"lumoapi encode --url in", kHello, 0, kHelloURL + "\n", ""},
      {"cat in | lumoapi encode --url /dev/stdin", kHello, 0, kHelloURL + "\n", ""},
      {"lumoapi encode", titled(128), 0, "{\n  \"url\": \"mlumoapi://", ""},
      {"lumoapi encode", titled(129), 1, "{\n  \"url\": null,",
       "lumoapi: refused: title: 129 UTF-16 code units, at most 128\n"},
      {"lumoapi encode", R"({"message":{}})", 1,
       "{\n  \"url\": null,\n  \"log\": [\n    \"param error: object is nil\"\n  ],\n"
       "  \"apiLargeData\": null,\n  \"object\": null\n}\n",
       "lumoapi: refused: object: missing or empty\n"},
      {"lumoapi encode --url", R"({"message":null})", 1, "", "lumoapi: refused: message: missing or empty\n"},
      {"lumoapi", "", 2, "", "Turns messages"},
      {"lumoapi encoed", "", 2, "", "lumoapi: no command encoed, did you mean encode?\n\nTurns messages"},
      {"lumoapi encode --uri", kHello, 2, "", "lumoapi: The following argument was not expected: --uri\n"},
      {"lumoapi encode in in", kHello, 2, "", "lumoapi: The following argument was not expected: in\n"},
      {"lumoapi encode", "{\n \"ä\" 1}", 3, "", "lumoapi: standard input: line 2, column 6: not JSON\n"},
      {"lumoapi encode in", R"({"message":"\ud800"})", 3, "", "lumoapi: in: line 1, column 19: not JSON\n"},
      {"lumoapi encode", kDeep, 3, "", "lumoapi: standard input: line 1, column 523: nested too deeply\n"},
      {"lumoapi encode", "", 3, "", "lumoapi: standard input: line 1, column 1: the text ends early\n"},
      {"lumoapi encode", R"({"message":7})", 3, "",
       "lumoapi: standard input: message: not an object but 7\n"},
      {"lumoapi encode none", "", 4, "", "lumoapi: none: No such file or directory\n"},
      {"lumoapi encode --lines .", "", 4, "", "lumoapi: .: Is a directory\n"},
      {"lumoapi encode >/dev/full", kHello, 4, "", "lumoapi: standard output: No space left on device\n"},
      {"lumoapi encode <&-", "", 4, "", "lumoapi: standard input: Bad file descriptor\n"},
      {"{ lumoapi encode; echo $? >&2; } | false", titled(200'000), 1, "", "4\n"},
      {"lumoapi --version", "", 0, "lumoapi ", ""},
      {"lumoapi --help", "", 0, "Turns messages into the URLs that launch the messenger.\n\n  $ ", ""},
      {"lumoapi encode -h", "", 0, "Turns a message into", ""},
  };
  for (const auto& expected : kCases) {
    SCOPED_TRACE(expected.line + " <<< " + expected.input.substr(0, 100));
    const Outcome outcome = shell(expected.line, expected.input);
    EXPECT_EQ(outcome.status, expected.status);
    EXPECT_EQ(outcome.output.substr(0, expected.output.size()), expected.output);
    EXPECT_EQ(outcome.errors.substr(0, expected.errors.size()), expected.errors);
    EXPECT_EQ(outcome.output.empty(), expected.output.empty()) << outcome.output;
    EXPECT_EQ(outcome.errors.empty(), expected.errors.empty()) << outcome.errors;
  }
}

TEST_F(ToolTest, TheExampleInTheHelpIsTrue) {
  std::istringstream help(shell("lumoapi encode --help").output);
  std::string line, shown;
  while (!line.starts_with("  $ ")) ASSERT_TRUE(std::getline(help, line));
  std::getline(help, shown);
  EXPECT_EQ("  " + shell(line.substr(4)).output, shown + "\n");
}

TEST_F(ToolTest, ResultsHoldAllThatTheConversionDid) {
  fs::create_directory(folder_ / "sub");
  write("sub/cat.jpg", "\xFF\xD8");
  write(
      "sub/picture.jsonl",
      R"({"message":{"type":5,"object":{"class":"LumoApiImageObject","imageDataArray":[{"$file":"cat.jpg"}],)"
      R"("data":{"$file":"../sub/cat.jpg"},"title":"<\/>"}},"currentObject":{"class":"LumoApiObject","cflag":9},)"
      R"("datastore":{"scheme":"demo","uin":-7,"apiLargeData":{"file_data":{"$data":"AAEC"}}}})");
  const std::string kBytes = R"({"$data":"/9g="})";
  EXPECT_EQ(shell("lumoapi encode --lines sub/picture.jsonl").output,
            R"({"url":"mlumoapi://share/to_fri?src_type=app&version=1&file_type=img&callback_type=scheme)"
            R"(&objectlocation=pasteboard&callback_name=demo&title=PC8+&shareType=0&uin=-7&cflag=9",)"
            R"("log":["urlWithMessage, share with :LumoApiImageObject","pasteboarditem count: 2"],)"
            R"("apiLargeData":{"file_data":)" +
                kBytes + R"(,"image_data_list":[)" + kBytes +
                R"(]},"object":{"class":"LumoApiImageObject","data":)" + kBytes + R"(,"imageDataArray":[)" +
                kBytes + R"(],"title":"</>"}})" + "\n");
  // A line is a conversion of its own: what one brings along is not there for the next.
  const std::string kEnd =
      R"(,"log":["urlWithMessage, share with :LumoApiTextObject","pasteboarditem count: 0"],)";
  const std::string kObject = R"("object":{"class":"LumoApiTextObject","text":"hello"}})";
  EXPECT_EQ(shell("lumoapi encode --lines", kHello.substr(0, kHello.size() - 1) +
                                                R"(,"datastore":{"scheme":"s","apiLargeData":{}}})" +
                                                "\n\r\n \t\n" + kHello + "\r\n[\n" + R"({"message":null})")
                .output,
            R"({"url":")" + kHelloURL + R"(&callback_name=s")" + kEnd + R"("apiLargeData":{},)" + kObject +
                "\n" + R"({"url":")" + kHelloURL + "\"" + kEnd + R"("apiLargeData":null,)" + kObject + "\n" +
                R"({"error":"column 2: the text ends early"})" + "\n" +
                R"({"url":null,"log":[],"apiLargeData":null,"object":null})" + "\n");
}

TEST_F(ToolTest, ManyLinesKeepTheirOrderAndOneInErrorStopsNothing) {
  std::string lines;
  for (int i = 0; i < 10'000; ++i) {
    lines += i == 5'000
                 ? R"({"message":{"typ":0}})"
                 : R"({"message":{"object":{"class":"LumoApiMiniProgramLaunchObject","appParameter":")" +
                       std::to_string(i) + (i == 7'000 ? std::string(3'000'000, 'x') : "") + "\"}}}";
    lines += i == 9'999 ? "" : "\n";
  }
  const Outcome outcome = shell("lumoapi encode --lines in", lines);
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.errors, "");
  std::istringstream results(outcome.output);
  std::string line;
  int count = 0;
  for (; std::getline(results, line); ++count) {
    const lumo::Value result = lumo::parseJSON(line).value();
    if (count == 5'000) {
      EXPECT_EQ(line, R"({"error":"message.typ: unknown member, did you mean type?"})");
    } else {
      const auto* object = result.asDictionary()->find("object")->asDictionary();
      ASSERT_EQ(std::atoi(object->find("appParameter")->asString()->c_str()), count);
    }
  }
  EXPECT_EQ(count, 10'000);

  const Outcome urls =
      shell("lumoapi encode --lines --url", "\n" + kHello + "\n{}\n" + titled(129) + "\n" + kHello);
  EXPECT_EQ(urls.status, 3);
  EXPECT_EQ(urls.output, kHelloURL + "\n\n\n" + kHelloURL + "\n");
  EXPECT_EQ(urls.errors,
            "lumoapi: standard input:3: message: missing\n"
            "lumoapi: standard input:4: refused: title: 129 UTF-16 code units, at most 128\n");
}

TEST_F(ToolTest, AResultComesBeforeTheNextLineIsWaitedFor) {
  int toTool[2], fromTool[2];
  ASSERT_TRUE(::pipe(toTool) == 0 && ::pipe(fromTool) == 0);
  const pid_t child = ::fork();
  if (child == 0) {
    ::dup2(toTool[0], STDIN_FILENO);
    ::dup2(fromTool[1], STDOUT_FILENO);
    for (const int end : {toTool[0], toTool[1], fromTool[0], fromTool[1]}) ::close(end);
    ::execl(LUMOAPI_TOOL, LUMOAPI_TOOL, "encode", "--lines", "--url", nullptr);
    ::_exit(127);
  }
  ::close(toTool[0]);
  ::close(fromTool[1]);
  // The second line arrives in two pieces, the first of them together with the first line.
  for (const std::string& piece : {kHello + "\n" + kHello.substr(0, 9), kHello.substr(9) + "\n"}) {
    ASSERT_EQ(::write(toTool[1], piece.data(), piece.size()), static_cast<ssize_t>(piece.size()));
    pollfd awaited{fromTool[0], POLLIN, 0};
    ASSERT_EQ(::poll(&awaited, 1, 10'000), 1) << "no result while the input stays open";
    char answer[1000];
    const ssize_t length = ::read(fromTool[0], answer, sizeof answer);
    EXPECT_EQ(std::string(answer, static_cast<std::size_t>(length)), kHelloURL + "\n");
  }
  ::close(toTool[1]);
  int status = -1;
  ::waitpid(child, &status, 0);
  ::close(fromTool[0]);
  EXPECT_EQ(status, 0);
}

}  // namespace
