// The order of the house: cli → LumoApi → model → platform → third-party libraries, and nothing the other
// way.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>

namespace fs = std::filesystem;

namespace {

const fs::path kRoot = LUMOAPI_SOURCE_DIR;

/// What a source of each layer may include of the project.
const std::map<std::string, std::set<std::string>> kMayInclude = {{"platform", {"platform"}},
    {"model", {"platform", "model"}}, {"LumoApi", {"platform", "model", "LumoApi"}},
    {"cli", {"platform", "model", "LumoApi", "cli"}}};

bool isThirdParty(const std::string& header) {
  static const std::regex pattern(
      "boost/.*|CLI/.*|hwy/.*|libheif/.*|webp/.*|plist/.*|j(config|error|peglib)\\.h|png\\.h");
  return std::regex_match(header, pattern);
}

TEST(House, IncludesGoOneWay) {
  const std::regex include("\\s*#\\s*include\\s*([\"<])([^\">]+)[\">].*");
  int files = 0;
  for (const auto& [layer, allowed] : kMayInclude) {
    for (const auto& entry : fs::recursive_directory_iterator(kRoot / layer)) {
      const fs::path file = fs::relative(entry.path(), kRoot);
      const bool isSource = file.extension() == ".cpp", isHeader = file.extension() == ".h";
      if (!isSource && !isHeader) continue;
      SCOPED_TRACE(file.string());
      ++files;
      std::ifstream stream(entry.path());
      std::string first;
      std::smatch match;
      for (std::string line; std::getline(stream, line);) {
        if (!std::regex_match(line, match, include)) continue;
        const std::string header = match[2];
        if (first.empty()) first = header;
        if (match[1] == "\"") {
          EXPECT_TRUE(allowed.contains(*fs::path(header).begin())) << header;
        } else if (isThirdParty(header)) {
          EXPECT_TRUE(layer == "cli" || (layer == "platform" && isSource)) << header;
        }
      }
      const fs::path own = fs::path(file).replace_extension(".h");
      if (isSource && fs::exists(kRoot / own)) {
        EXPECT_EQ(first, own) << "a source includes its own header first";
      }
    }
  }
  EXPECT_GT(files, 80);
}

}  // namespace
