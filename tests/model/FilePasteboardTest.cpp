#include "model/LumoApiFilePasteboard.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;
using lumo::Data;
using lumo::Value;

namespace {

class FilePasteboard : public testing::Test {
 protected:
  FilePasteboard() {
    std::string folder = fs::temp_directory_path() / "pasteboard.XXXXXX";
    folder_ = ::mkdtemp(folder.data());
    path_ = folder_ / "store";
  }
  ~FilePasteboard() override { fs::remove_all(folder_); }

  /// A record of equal entries of a given size, so that a mixture of two records would show.
  static LumoApiLargeDataPtr record(char fill, std::size_t size = 200'000) {
    const Data bytes(std::string(size, fill));
    return std::make_shared<const LumoApiLargeData>(LumoApiLargeData{
        {"file_data", bytes}, {"image_data_list", Value::Array{bytes, Data()}}, {"text", "中"}});
  }
  std::size_t filesInFolder() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
  }

  fs::path folder_, path_;
};

TEST_F(FilePasteboard, KeepsWhatTheDatastoreStages) {
  const auto file = std::make_shared<LumoApiFilePasteboard>(path_);
  LumoApiDatastore& store = LumoApiDatastore::instance();
  store.setPasteboard(file);
  EXPECT_FALSE(store.getApiLargeData());
  EXPECT_EQ(file->lastError(), "");
  EXPECT_TRUE(store.setApiLargeData(record('a')));
  EXPECT_TRUE(store.setApiLargeData(record('b')));
  EXPECT_EQ(*LumoApiFilePasteboard(path_).read(), *record('b'));
  struct stat status {};
  EXPECT_EQ(::stat(path_.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0600u);
  EXPECT_EQ(filesInFolder(), 1u);
  EXPECT_TRUE(store.setApiLargeData(nullptr));
  EXPECT_TRUE(store.setApiLargeData(nullptr));
  EXPECT_EQ(filesInFolder(), 0u);
  store.setPasteboard(nullptr);
}

TEST_F(FilePasteboard, RefusesWhatIsNoRecordAndSaysWhy) {
  const auto content = [this](const std::string& text) { std::ofstream(path_, std::ios::binary) << text; };
  LumoApiFilePasteboard file(path_);
  const std::string name = path_.string() + ": ";
  const auto readError = [&] {
    EXPECT_FALSE(file.read());
    return file.lastError();
  };
  content("bplist00 damaged");
  EXPECT_EQ(readError(), name + "not a large-data record");
  content("");
  EXPECT_EQ(readError(), name + "not a large-data record");
  fs::resize_file(path_, LumoApiFilePasteboard::kMaxFileSize + 1);
  EXPECT_EQ(readError(), name + "268435457 bytes, at most 268435456");
  EXPECT_TRUE(file.write(record('a')));
  EXPECT_EQ(file.lastError(), "");
  fs::resize_file(path_, fs::file_size(path_) - 1);
  EXPECT_EQ(readError(), name + "not a large-data record");

  const fs::path target = folder_ / "target";
  const std::pair<const char*, std::function<void()>> inTheWay[] = {
      {"link", [&] { fs::create_symlink(target, path_); }},
      {"folder", [&] { fs::create_directory(path_); }},
      {"pipe", [&] { ::mkfifo(path_.c_str(), 0600); }}};
  for (const auto& [what, place] : inTheWay) {
    SCOPED_TRACE(what);
    fs::remove(path_);
    place();
    EXPECT_EQ(readError(), name + "not a regular file");
    EXPECT_FALSE(file.write(record('a')));
    EXPECT_FALSE(file.write(nullptr));
    EXPECT_EQ(file.lastError(), name + "not a regular file");
    EXPECT_EQ(filesInFolder(), 1u);
  }
  LumoApiFilePasteboard nowhere(folder_ / "none" / "store");
  EXPECT_FALSE(nowhere.write(record('a')));
  EXPECT_NE(nowhere.lastError().find("No such file or directory"), std::string::npos);
  EXPECT_FALSE(nowhere.write(std::make_shared<const LumoApiLargeData>(LumoApiLargeData{{"k", "\xFF"}})));
  EXPECT_NE(nowhere.lastError().find("cannot be archived"), std::string::npos);
}

TEST_F(FilePasteboard, AReaderNeverSeesHalfARecordWhateverBecomesOfTheWriter) {
  ASSERT_TRUE(LumoApiFilePasteboard(path_).write(record('a')));
  for (int round = 0; round < 20; ++round) {
    const pid_t writer = ::fork();
    ASSERT_GE(writer, 0);
    if (writer == 0) {
      LumoApiFilePasteboard file(path_);
      for (char fill = 'b';; fill = fill == 'z' ? 'b' : static_cast<char>(fill + 1)) file.write(record(fill));
    }
    LumoApiFilePasteboard reader(path_);
    for (int i = 0; i < 20; ++i) {
      const LumoApiLargeDataPtr seen = reader.read();
      ASSERT_TRUE(seen) << reader.lastError();
      ASSERT_EQ(*seen, *record(static_cast<char>(seen->find("file_data")->asData()->data()[0])));
    }
    ::kill(writer, SIGKILL);
    ::waitpid(writer, nullptr, 0);
    EXPECT_TRUE(reader.read()) << reader.lastError();
  }
}

}  // namespace
