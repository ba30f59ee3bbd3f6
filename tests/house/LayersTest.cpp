// The order of the house: cli → inspect → documents → LumoApi → model → platform → third-party libraries, and
// nothing the other way.

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

/// The rooms, each with what it may include of the project beside itself. A layer may include all below it.
const std::map<std::string, std::set<std::string>> kMayInclude = {{"platform", {}},
    {"platform/kernels", {"platform"}}, {"platform/values", {"platform", "platform/kernels"}},
    {"platform/text", {"platform", "platform/kernels", "platform/values"}},
    {"platform/archive", {"platform", "platform/kernels", "platform/values", "platform/text"}},
    {"platform/pictures", {"platform", "platform/values"}},
    {"platform/files", {"platform", "platform/values"}}, {"model", {"platform*"}},
    {"LumoApi", {"platform*", "model"}}, {"documents", {"platform*", "model", "LumoApi"}},
    {"inspect", {"platform*", "model", "LumoApi", "documents"}},
    {"cli", {"platform*", "model", "LumoApi", "documents", "inspect"}}};

/// The room of a file: of platform/ its folder, of the others the layer, however deep the file stands in it.
std::string roomOf(const fs::path& file) {
  const std::string layer = *file.begin();
  return layer == "platform" ? file.parent_path().string() : layer;
}

/// Where a header stands that an #include names: the public ones of all layers go by LumoApi/.
fs::path placeOf(const std::string& header) {
  if (fs::exists(kRoot / header)) return header;
  for (const auto& [room, allowed] : kMayInclude) {
    const fs::path place = fs::path(room) / fs::path(header).filename();
    const bool hasPublic = room == "model" || room.starts_with("platform");
    if (hasPublic && header.starts_with("LumoApi/") && fs::exists(kRoot / place)) return place;
  }
  ADD_FAILURE() << "no such header: " << header;
  return header;
}

bool mayInclude(const std::string& room, const std::string& included) {
  const std::set<std::string>& allowed = kMayInclude.at(room);
  return room == included || allowed.contains(included) ||
         (included.starts_with("platform") && allowed.contains("platform*"));
}

bool isThirdParty(const std::string& header) {
  static const std::regex pattern(
      "boost/.*|CLI/.*|hwy/.*|libheif/.*|webp/.*|plist/.*|j(config|error|peglib)\\.h|png\\.h");
  return std::regex_match(header, pattern);
}

TEST(House, IncludesGoOneWay) {
  const std::regex include("\\s*#\\s*include\\s*([\"<])([^\">]+)[\">].*");
  const std::regex noRoomForSystems("filesystem|iostream|fstream");
  int files = 0;
  for (const std::string layer : {"platform", "model", "LumoApi", "documents", "inspect", "cli"}) {
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
        if (match[1] == "\"") {
          const fs::path place = placeOf(header);
          if (first.empty()) first = place;
          EXPECT_TRUE(mayInclude(roomOf(file), roomOf(place))) << header;
        } else if (isThirdParty(header)) {
          EXPECT_TRUE(layer == "cli" || (layer == "platform" && isSource)) << header;
        } else if (std::regex_match(header, noRoomForSystems)) {
          EXPECT_TRUE(layer == "cli") << header << ": files and terminals are the command line's";
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
