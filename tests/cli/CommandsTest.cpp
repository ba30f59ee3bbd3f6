// The commands around the conversions, and what shells and manuals say of all commands.

#include "cli/CommandTable.h"
#include "cli/NewDocument.h"
#include "platform/values/JSON.h"
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
