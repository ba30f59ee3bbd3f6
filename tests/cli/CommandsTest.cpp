// The commands around the conversions, and what shells and manuals say of all commands.

#include "cli/CommandTable.h"
#include "cli/NewDocument.h"
#include "platform/JSON.h"
#include "tests/cli/ShellTest.h"

#include <algorithm>

namespace {

using CommandsTest = ShellTest;

const std::string kText = R"({"message":{"object":{"class":"LumoApiTextObject","text":"hello"}}})";
const std::string kURL =
    "mlumoapi://share/to_fri?src_type=app&version=1&file_type=text&callback_type=scheme&file_data=aGVsbG8=";

TEST_F(CommandsTest, ADocumentOfEveryKindIsFilledAndWithoutFault) {
  const std::vector<std::string> kinds = lumo::cli::contentKinds();
  EXPECT_EQ(kinds.size(), 23u);
  for (const std::string& kind : kinds) {
    SCOPED_TRACE(kind);
    const Outcome outcome =
        shell("lumoapi new -o " + kind + " " + kind + " && lumoapi encode --url " + kind +
              " | wc -l; lumoapi lint " + kind + " && lumoapi qr " + kind + " | grep -c ▄");
    EXPECT_EQ(outcome.status, 0) << outcome.output << outcome.errors;
    EXPECT_TRUE(outcome.output.starts_with("1\n")) << outcome.output;
    EXPECT_EQ(read(kind).find("null"), std::string::npos) << read(kind);
  }
  const Outcome kept = shell("lumoapi new -o in text", "x");
  EXPECT_EQ(kept.status, 4);
  EXPECT_EQ(kept.errors, "lumoapi: in: File exists\n");
  EXPECT_EQ(read("in"), "x");
  expectBeginning(shell("lumoapi new txet").errors, "lumoapi: KIND: txet is not known, did you mean text?\n");
}

TEST_F(CommandsTest, LintTellsOfRefusalsAndWarnings) {
  const std::string kTitled = R"({"message":{"object":{"class":"LumoApiTextObject","text":"a","title":")" +
                              std::string(129, 't') + "\"}}}";
  const struct {
    std::string line, input;
    int status;
    std::string output;
  } kCases[] = {
      {"lumoapi lint", " " + kText, 0, ""},
      {"lumoapi lint", kURL + "\n\n" + kURL + "&titel=SGk=\r\na b", 1,
          "standard input:3: unknown-key: titel: nobody reads it, did you mean title?\n"
          "standard input:4: not-a-url: byte 2: a blank, which is written %20\n"},
      {"lumoapi lint in -", kTitled, 1, "in: too-long: title: 129 UTF-16 code units, at most 128\n"},
      {"lumoapi lint in", "{\n\"message\"}", 1, "in: bad-document: line 2, column 10: not JSON\n"},
      {"lumoapi lint in", R"({"mesage":null})", 1,
          "in: bad-document: mesage: unknown member, did you mean message?\n"},
      {"lumoapi lint in", R"({"message":{"object":{"class":"LumoApiResultObject"}}})", 1,
          "in: unknown-kind: object: "},
      {"lumoapi lint in", R"({"url":"demo://request_from_lumo/view?file_type=txt"})", 1,
          "in: unknown-kind: file_type: “txt” is no kind of content, did you mean text?\n"},
      {"lumoapi lint --lines in", kText + "\n" + kTitled, 1, "in:2: too-long: title: 129"},
      {"lumoapi lint in", "", 1, "in: not-a-url: byte 1: no text at all\n"},
      {"lumoapi lint 'demo://request_from_lumo/view?file_type=img'", "", 0, ""},
      {"lumoapi lint in none", "\x1B", 4, "in:1: not-a-url: byte 1: a control character"},
      {"lumoapi lint --json", kText, 0, "[]\n"},
  };
  for (const auto& [line, input, status, output] : kCases) {
    SCOPED_TRACE(line + " <<< " + input.substr(0, 100));
    const Outcome outcome = shell(line, input);
    EXPECT_EQ(outcome.status, status) << outcome.errors;
    expectBeginning(outcome.output, output);
  }
  EXPECT_EQ(lumo::parseJSON(shell("lumoapi lint --json --lines", "\n" + kTitled).output),
      lumo::parseJSON(R"([{"file":"standard input","line":2,"code":"too-long","key":"title",
                           "message":"title: 129 UTF-16 code units, at most 128"}])"));
}

TEST_F(CommandsTest, AQRCodeIsReadBack) {
  const std::string kLong = "demo://" + std::string(2946, 'a');
  // The characters become a bitmap, four pixels a module; a block stands for light modules.
  const std::string kBitmap =
      R"(awk 'BEGIN { split("█ ▀ ▄", sign, " ") } { gsub(/█/, "3"); gsub(/▀/, "1"); gsub(/▄/, "2"); gsub(/ /, "0")
          for (half = 1; half <= 2; ++half) for (i = 0; i < 4; ++i) for (n = 1; n <= length($0); ++n)
            for (j = 0; j < 4; ++j) bits = bits (int(substr($0, n, 1) / half) % 2 ? 0 : 1) " "
        } END { print "P1", 4 * length($0), 8 * NR; print bits }' > t.pbm; zbarimg -q --raw t.pbm)";
  const struct {
    std::string line, input, output;
  } kCases[] = {
      {"lumoapi qr --png p.png --svg - >p.svg; zbarimg -q --raw p.png p.svg", kURL,
          kURL + "\n" + kURL + "\n"},
      {"lumoapi encode | lumoapi qr --png p; zbarimg -q --raw p", kText, kURL + "\n"},
      {"lumoapi qr --png p.png \"$(cat)\" && zbarimg -q --raw p.png", kLong, kLong + "\n"},
      {"lumoapi qr in | " + kBitmap, kText, kURL + "\n"},
      {"lumoapi qr --color=always in | sed 's/\x1B[^m]*m//g; y/█▀▄ / ▄▀█/' | " + kBitmap, kURL, kURL + "\n"},
  };
  for (const auto& [line, input, output] : kCases) EXPECT_EQ(shell(line, input).output, output) << line;

  const struct {
    std::string line, input;
    int status;
    std::string errors;
  } kFaults[] = {
      {"lumoapi qr", kLong + "a", 1, "lumoapi: refused: url: 2954 bytes, at most 2953 in a QR code\n"},
      {"lumoapi qr", R"({"message":null})", 1, "lumoapi: refused: message: missing or empty\n"},
      {"lumoapi qr", R"({"url":null})", 1, "lumoapi: refused: the document's url is null\n"},
      {"lumoapi qr 'a:b c'", "", 3, "lumoapi: not a URL: byte 4: a blank"},
      {"lumoapi qr", "{", 3, "lumoapi: standard input: line 1, column 2: "},
      {"lumoapi qr --png no/p a:b", "", 4, "lumoapi: no/p: No such file or directory\n"},
      {"script -qec 'stty cols 28; lumoapi qr demo://a 2>in' /dev/null >s; status=$?; cat in >&2; exit "
       "$status",
          "", 1, "lumoapi: refused: the code is 29 columns wide, the terminal 28;"},
      {"lumoapi qr 'demo://request_from_lumo/view?file_type=img' >f", "", 0,
          "lumoapi: the bytes beside the URL"},
  };
  for (const auto& [line, input, status, errors] : kFaults) {
    const Outcome outcome = shell(line, input);
    EXPECT_EQ(outcome.status, status) << line;
    EXPECT_EQ(outcome.output, "");
    expectBeginning(outcome.errors, errors);
  }
}

TEST_F(CommandsTest, ManualAndCompletionsKnowEveryCommand) {
  const std::string kShare = LUMOAPI_SHARE;
  const Outcome manual = shell("mandoc -Tlint -Wwarning '" + kShare +
                               "/man/man1/lumoapi.1' >&2; "
                               "mandoc -Tutf8 -Owidth=200 '" +
                               kShare + "/man/man1/lumoapi.1' | sed 's/.\b//g'");
  EXPECT_EQ(manual.errors, "");
  std::string names;
  for (const lumo::cli::Command& command : lumo::cli::commands()) {
    names.append(command.name).append("\n");
    EXPECT_NE(manual.output.find("lumoapi " + std::string(command.name)), std::string::npos);
    for (const lumo::cli::Option& option : command.options) {
      EXPECT_NE(manual.output.find(option.name), std::string::npos) << option.name;
    }
  }
  const std::pair<std::string, std::string> kCases[] = {
      // what was typed, and what the shell makes of it
      {"\"\"", names + "help\n--help\n--version\n"},
      {"e", "encode\n"},
      {"help i", "inspect\n"},
      {"encode --l", "--lines\n"},
      {"encode --store fi", "file\nfile 2\n"},
      {"decode fi", "file\nfile 2\n"},
      {"inspect --color a", "auto\nalways\n"},
      {"inspect --color = n", "never\n"},
      {"inspect --color =", "auto\nalways\nnever\n"},
      {"inspect --save f", "folder\n"},
      {"new -o file web", "web-image\n"},
      {"new -o fi", "file\nfile 2\n"},
  };
  for (const auto& [typed, completed] : kCases) {
    const Outcome outcome =
        shell("mkdir -p folder; touch file 'file 2'; bash -c '. " + kShare +
              "/bash-completion/completions/lumoapi; COMP_WORDS=(lumoapi " + typed +
              "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); $(complete -p lumoapi | cut -d\" \" -f3); "
              "((${#COMPREPLY[@]} == 0)) || printf \"%s\\n\" \"${COMPREPLY[@]}\"'");
    EXPECT_EQ(outcome.output, completed) << typed;
    EXPECT_EQ(outcome.errors, "") << typed;
  }
}

}  // namespace
