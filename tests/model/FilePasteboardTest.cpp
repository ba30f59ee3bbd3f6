#include "LumoApi/LumoApiFilePasteboard.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <utility>

namespace fs = std::filesystem;
using lumo::Data;
using lumo::Value;

namespace {

LumoApiLargeDataPtr record(Value value) {
  return std::make_shared<const LumoApiLargeData>(LumoApiLargeData{{"file_data", std::move(value)}});
}

/// Two buffers filled alike, so that a mixture of two records would show.
LumoApiLargeDataPtr filled(char fill) {
  return record(Value::Array{Data(std::string(100'000, fill)), "中", Data(std::string(100'001, fill))});
}

class FilePasteboard : public testing::Test {
 protected:
  ~FilePasteboard() override { fs::remove_all(folder_); }

  std::string readError() { return file_->read() ? "" : file_->lastError(); }
  std::string writeError(const LumoApiLargeDataPtr& record) {
    return file_->write(record) ? "" : file_->lastError();
  }
  std::ptrdiff_t filesInFolder() const {
    return std::distance(fs::directory_iterator(folder_), fs::directory_iterator());
  }

  std::string pattern_ = fs::temp_directory_path() / "pasteboard.XXXXXX";
  const fs::path folder_ = ::mkdtemp(pattern_.data()), path_ = folder_ / "store";
  const std::string name_ = path_.string() + ": ";
  const std::shared_ptr<LumoApiFilePasteboard> file_ = std::make_shared<LumoApiFilePasteboard>(path_);
};

TEST_F(FilePasteboard, KeepsWhatTheDatastoreStages) {
  LumoApiDatastore& store = LumoApiDatastore::instance();
  store.setPasteboard(file_);
  EXPECT_FALSE(store.getApiLargeData());
  EXPECT_EQ(file_->lastError(), "");
  EXPECT_TRUE(store.setApiLargeData(filled('a')) && store.setApiLargeData(filled('b')));
  EXPECT_EQ(*LumoApiFilePasteboard(path_).read(), *filled('b'));
  EXPECT_EQ(fs::status(path_).permissions(), fs::perms(0600));
  EXPECT_EQ(filesInFolder(), 1);
  EXPECT_TRUE(store.setApiLargeData(nullptr) && store.setApiLargeData(nullptr));
  EXPECT_EQ(filesInFolder(), 0);
  store.setPasteboard(nullptr);
}

TEST_F(FilePasteboard, RefusesWhatIsNoRecordOfItsOwnerAndSaysWhy) {
  std::ofstream(path_) << "bplist00 damaged";
  EXPECT_EQ(readError(), name_ + "not a large-data record");
  fs::resize_file(path_, LumoApiFilePasteboard::kMaxFileSize + 1);
  EXPECT_EQ(readError(), name_ + "268435457 bytes, at most 268435456");
  EXPECT_TRUE(file_->write(filled('a')));
  EXPECT_EQ(file_->lastError(), "");
  fs::resize_file(path_, fs::file_size(path_) - 1);
  EXPECT_EQ(readError(), name_ + "not a large-data record");
  const bool givenAway = ::chown(path_.c_str(), 1, 1) == 0;  // as root only
  EXPECT_EQ(readError(), name_ + (givenAway ? "owned by another user" : "not a large-data record"));

  void (*const inTheWay[])(const fs::path&) = {
      [](const fs::path& path) { fs::create_symlink(path.string() + ".target", path); },
      [](const fs::path& path) { fs::create_directory(path); },
      [](const fs::path& path) { ::mkfifo(path.c_str(), 0600); }};
  for (const auto& place : inTheWay) {
    SCOPED_TRACE(&place - inTheWay);
    fs::remove(path_);
    place(path_);
    for (const std::string& error : {readError(), writeError(filled('a')), writeError(nullptr)}) {
      EXPECT_EQ(error, name_ + "not a regular file");
    }
    EXPECT_EQ(filesInFolder(), 1);
  }
}

TEST_F(FilePasteboard, KeepsTheOldRecordWhereTheNewOneCannotBeWritten) {
  ASSERT_TRUE(file_->write(filled('a')));
  EXPECT_EQ(writeError(record("\xFF")), name_ + "the record cannot be archived");
  const Data huge = Data::uninitialized(LumoApiFilePasteboard::kMaxFileSize).data;
  EXPECT_EQ(writeError(record(huge)), name_ + "the record is too large");

  // A disk that is full midway, as near as a test comes to it.
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit whole{};
  ::getrlimit(RLIMIT_FSIZE, &whole);
  const rlimit part{fs::file_size(path_) - 10, whole.rlim_max};
  ::setrlimit(RLIMIT_FSIZE, &part);
  EXPECT_EQ(writeError(filled('b')), name_ + "File too large");
  ::setrlimit(RLIMIT_FSIZE, &whole);
  std::signal(SIGXFSZ, SIG_DFL);
  EXPECT_EQ(*file_->read(), *filled('a'));
  EXPECT_EQ(filesInFolder(), 1);

  fs::remove_all(folder_);
  EXPECT_EQ(writeError(filled('a')), name_ + "No such file or directory");
}

TEST_F(FilePasteboard, AReaderNeverSeesHalfARecordWhateverBecomesOfTheWriter) {
  ASSERT_TRUE(file_->write(filled('a')));
  char fill = 'a';
  for (unsigned round = 0; round < 10; ++round) {
    const pid_t writer = ::fork();
    ASSERT_GE(writer, 0);
    if (writer == 0) {
      ::alarm(10);  // does not outlive a test that failed
      for (char next = 'b';; next = next == 'z' ? 'b' : char(next + 1)) file_->write(filled(next));
    }
    int changes = 0;
    for (int looks = 0; looks < 50'000 && changes <= 3; ++looks) {
      if (changes == 3) {  // the last look is at what a writer left that was killed at some point of its work
        ::usleep(round * 1'500);
        ::kill(writer, SIGKILL);
        ::waitpid(writer, nullptr, 0);
        ++changes;
      }
      const LumoApiLargeDataPtr seen = file_->read();
      ASSERT_TRUE(seen) << file_->lastError();
      const char now = seen->find("file_data")->asArray()->front().asData()->view().front();
      ASSERT_EQ(*seen, *filled(now));
      changes += now != std::exchange(fill, now);
    }
    ASSERT_GT(changes, 3) << "the writer wrote nothing";
  }
}

}  // namespace
