// The example documents: there is one of every kind, each converts, and their README says truly what they
// send.

#include "platform/JSON.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <utility>

namespace {

namespace fs = std::filesystem;

const fs::path kExamples = fs::path(LUMOAPI_SOURCE_DIR) / "examples";

const struct {
  std::string contentClass, file, destination, fileType, staged;
} kRows[] = {
    {"LumoApiTextObject", "text-share.json", "mlumoapi://share/to_fri", "text", "pasted_kiva_data"},
    {"LumoApiExtendObject", "data.json", "mlumoapi://share/to_fri", "file", "previewimagedata, file_data"},
    {"LumoApiImageObject", "image.json", "mlumoapi://share/to_fri", "img",
     "previewimagedata, file_data, pasted_kiva_data"},
    {"LumoApiImageForLumoAvatarObject", "avatar-picture.json", "mlumoapi://profile/sdk_avatar_edit", "img",
     "file_data"},
    {"LumoApiVideoForLumoAvatarObject", "avatar-video.json", "mlumoapi://profile/sdk_dynamic_avatar_edit",
     "video", "previewimagedata, file_data"},
    {"LumoApiAuthObject", "authorization.json", "mlumoapi://auth/sdk_check_auth", "video", "nothing"},
    {"LumoApiCreateLumoGroupProObject", "group-pro-create.json", "mlumoguild://mlumoguild/guild/create", "",
     "nothing"},
    {"LumoApiJoinLumoGroupProObject", "group-pro-join.json", "mlumoguild://mlumoguild/guild/join", "",
     "nothing"},
    {"LumoApiImageArrayForFaceCollectionObject", "face-collection.json",
     "mlumoapi://profile/sdk_face_collection", "img", "image_data_list"},
    {"LumoApiImageArrayForNimboObject", "feed-pictures.json", "mlumoapi://share/to_fri", "nimbo",
     "image_data_list"},
    {"LumoApiVideoForNimboObject", "feed-video.json", "mlumoapi://share/to_fri", "nimbo", "nothing"},
    {"LumoApiWebImageObject", "web-image.json", "mlumoapi://share/to_fri", "img", "nothing"},
    {"LumoApiURLObject", "link-share.json", "mlumoapi://share/to_fri", "url", "previewimagedata"},
    {"LumoApiNewsObject", "news-share.json", "mlumoapi://share/to_fri", "news", "nothing"},
    {"LumoApiVideoObject", "video-share.json", "mlumoapi://share/to_fri", "video", "previewimagedata"},
    {"LumoApiCommonContentObject", "common-content.json", "mlumoapi://share/to_fri", "common", "file_data"},
    {"LumoApiExtraServiceObject", "extra-service.json", "mlumoapi://profile/sdk_extend_service", "",
     "nothing"},
    {"LumoApiCommonServiceObject", "common-service.json", "mlumoapi://open_connect/common_channel", "",
     "nothing"},
    {"LumoApiFileObject", "file.json", "mlumoapi://share/to_fri", "localFile", "file_data"},
    {"LumoApiThirdAppBindGroupObject", "third-app-bind-group.json",
     "mlumothirdappgroup://thirdappgroup/bindgroup", "", "nothing"},
    {"LumoApiThirdAppJoinGroupObject", "third-app-join-group.json",
     "teskthirdappgroup://thirdappgroup/joingroup", "", "nothing"},
    {"LumoApiLaunchMiniProgramObject", "mini-program.json", "mlumoapi://profile/sdk_launch_mini_app", "",
     "nothing"},
};

std::string contentOf(const fs::path& file) {
  std::stringstream text;
  text << std::ifstream(file).rdbuf();
  return text.str();
}

/// The exit status of a line of shell and what it wrote to its output.
std::pair<int, std::string> run(const std::string& line) {
  std::FILE* pipe = ::popen(line.c_str(), "r");
  std::string output;
  for (int byte; (byte = std::fgetc(pipe)) != EOF;) output += static_cast<char>(byte);
  return {WEXITSTATUS(::pclose(pipe)), output};
}

TEST(Examples, EachConvertsAsTheirReadmeSays) {
  const std::string readme = contentOf(kExamples / "README.md");
  std::set<std::string> inTable, inFolder;
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.file);
    inTable.insert(row.file);
    const auto [status, output] = run(LUMOAPI_TOOL " encode '" + (kExamples / row.file).string() + "'");
    ASSERT_EQ(status, 0);
    const lumo::Value result = lumo::parseJSON(output).value();
    const lumo::Value::Dictionary& members = *result.asDictionary();
    EXPECT_EQ(*members.find("object")->asDictionary()->find("class")->asString(), row.contentClass);
    const std::string url = *members.find("url")->asString();
    EXPECT_TRUE(url.starts_with(row.destination + "?")) << url;
    const std::size_t word = url.find("file_type=");
    EXPECT_EQ(word == std::string::npos ? "" : url.substr(word + 10, url.find('&', word) - word - 10),
              row.fileType);
    std::string staged;
    if (const auto* record = members.find("apiLargeData")->asDictionary()) {
      for (const auto& entry : *record) staged += (staged.empty() ? "" : ", ") + entry.key;
    }
    EXPECT_EQ(staged.empty() ? "nothing" : staged, row.staged);
    EXPECT_NE(readme.find("| `" + row.contentClass + "` | [" + row.file + "](" + row.file + ") | `" +
                          row.destination + "` | " + row.staged + " |"),
              std::string::npos);
  }
  for (const auto& entry : fs::directory_iterator(kExamples)) {
    if (entry.path().extension() == ".json") inFolder.insert(entry.path().filename());
  }
  EXPECT_EQ(inTable, inFolder);
}

TEST(Examples, TheScriptShowsThemAndTellsOfARefusal) {
  const std::string script = "'" + (kExamples / "run.sh").string() + "' ";
  const auto [status, output] = run(script + LUMOAPI_TOOL);
  EXPECT_EQ(status, 0);
  const std::string preview = std::to_string(fs::file_size(kExamples / "files/harbour-preview.jpg"));
  const std::string track = std::to_string(fs::file_size(kExamples / "files/harbour-walk.gpx"));
  EXPECT_NE(
      output.find("\n  staged: previewimagedata " + preview + " bytes, file_data " + track + " bytes\n"),
      std::string::npos)
      << output;
  std::istringstream lines(output);
  for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 100u) << line;
  EXPECT_EQ(run(script + "false").first, 1);
}

}  // namespace
