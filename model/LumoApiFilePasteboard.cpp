#include "LumoApi/LumoApiFilePasteboard.h"

#include "platform/archive/KeyedArchiver.h"
#include "platform/files/PrivateFile.h"

#include <mutex>
#include <utility>

namespace {

using lumo::FileError;

FileError writeRecord(const std::string& path, const LumoApiLargeDataPtr& record) {
  if (!record) return lumo::removePrivateFile(path);
  const std::optional<lumo::DataChain> archive = lumo::archivedData(lumo::Value(*record));
  if (!archive) return "the record cannot be archived";
  if (archive->size() > LumoApiFilePasteboard::kMaxFileSize) return "the record is too large";
  return lumo::replacePrivateFile(path, *archive);
}

FileError readRecord(const std::string& path, LumoApiLargeDataPtr& record) {
  std::optional<lumo::Data> content;
  FileError error = lumo::readPrivateFile(path, LumoApiFilePasteboard::kMaxFileSize, content);
  if (!error.empty() || !content) return error;
  const std::optional<lumo::Value> root = lumo::unarchivedValue(*content);
  if (!root || !root->asDictionary()) return "not a large-data record";
  record = std::make_shared<const LumoApiLargeData>(*root->asDictionary());
  return {};
}

}  // namespace

struct LumoApiFilePasteboard::State {
  const std::string path;
  std::mutex lock;
  std::string error{};

  /// Runs an operation that gives a text for what went wrong, and keeps that text.
  template <class Operation>
  bool succeeded(const Operation& operation) noexcept {
    try {
      std::string found = operation();
      if (!found.empty()) found.insert(0, path + ": ");
      const std::lock_guard guard(lock);
      error.swap(found);
      return error.empty();
    } catch (...) {
      const std::lock_guard guard(lock);
      error = "out of memory";  // short enough to need none
      return false;
    }
  }
};

LumoApiFilePasteboard::LumoApiFilePasteboard(std::string path) : state_(new State{std::move(path), {}}) {}

LumoApiFilePasteboard::~LumoApiFilePasteboard() = default;

bool LumoApiFilePasteboard::write(LumoApiLargeDataPtr record) noexcept {
  return state_->succeeded([&] { return writeRecord(state_->path, record); });
}

LumoApiLargeDataPtr LumoApiFilePasteboard::read() noexcept {
  LumoApiLargeDataPtr record;
  return state_->succeeded([&] { return readRecord(state_->path, record); }) ? record : nullptr;
}

std::string LumoApiFilePasteboard::lastError() const {
  const std::lock_guard guard(state_->lock);
  return state_->error;
}
