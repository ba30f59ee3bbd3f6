// The example documents: there is one of every kind, each converts, and their README says truly what they
// send.

#include "platform/values/JSON.h"
#include "tests/cli/ShellTest.h"

#include <regex>
#include <set>

namespace {

namespace fs = std::filesystem;

const fs::path kExamples = fs::path(LUMOAPI_SOURCE_DIR) / "examples";

using ExamplesTest = ShellTest;

TEST_F(ExamplesTest, EachConvertsAsTheirReadmeSays) {
  const std::regex row(R"(\|[^|]+\| `(\w+)` \| \[(\S+)\]\((\S+)\) \| `(\S+)` \| ([^|]+) \|)");
  std::set<std::string> classes, inTable, inFolder;
  std::ifstream readme(kExamples / "README.md");
  std::smatch cell;
  for (std::string line; std::getline(readme, line);) {
    if (!std::regex_match(line, cell, row)) continue;
    SCOPED_TRACE(line);
    const std::string name = cell[1], file = cell[2], destination = cell[4];
    classes.insert(name);
    inTable.insert(file);
    EXPECT_EQ(cell[3], file);
    const Outcome outcome = shell("lumoapi encode '" + (kExamples / file).string() + "'");
    ASSERT_EQ(outcome.status, 0);
    const lumo::Value result = lumo::parseJSON(outcome.output).value();
    const lumo::Value::Dictionary& members = *result.asDictionary();
    EXPECT_EQ(*members.find("object")->asDictionary()->find("class")->asString(), name);
    EXPECT_TRUE(members.find("url")->asString()->starts_with(destination + "?"));
    std::string staged;
    if (const auto* record = members.find("apiLargeData")->asDictionary()) {
      for (const auto& entry : *record) staged += (staged.empty() ? "" : ", ") + entry.key;
    }
    EXPECT_EQ(staged.empty() ? "nothing" : staged, cell[5]);
  }
  for (const auto& entry : fs::directory_iterator(kExamples)) {
    if (entry.path().extension() == ".json") inFolder.insert(entry.path().filename());
  }
  EXPECT_EQ(inTable, inFolder);
  EXPECT_EQ(classes.size(), 22U);
}

TEST_F(ExamplesTest, TheScriptShowsThemAndTellsOfARefusal) {
  const std::string script = "'" + (kExamples / "run.sh").string() + "' ";
  const Outcome outcome = shell(script + LUMOAPI_TOOL);
  EXPECT_EQ(outcome.status, 0);
  const std::string track = std::to_string(fs::file_size(kExamples / "files/harbour-walk.gpx"));
  EXPECT_NE(outcome.output.find(", file_data " + track + " bytes\n"), std::string::npos) << outcome.output;
  std::istringstream lines(outcome.output);
  for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 100u) << line;
  EXPECT_EQ(shell(script + "false").status, 1);
}

}  // namespace
