#include "LumoApi/LumoApiFilePasteboard.h"

#include "platform/archive/KeyedArchiver.h"
#include "platform/files/PrivateFile.h"

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

LumoApiFilePasteboard::LumoApiFilePasteboard(std::string path) : path_(std::move(path)) {}

template <class Operation>
bool LumoApiFilePasteboard::succeeded(const Operation& operation) noexcept {
  try {
    std::string error = operation();
    if (!error.empty()) error.insert(0, path_ + ": ");
    const std::lock_guard guard(lock_);
    error_.swap(error);
    return error_.empty();
  } catch (...) {
    const std::lock_guard guard(lock_);
    error_ = "out of memory";  // short enough to need none
    return false;
  }
}

bool LumoApiFilePasteboard::write(LumoApiLargeDataPtr record) noexcept {
  return succeeded([&] { return writeRecord(path_, record); });
}

LumoApiLargeDataPtr LumoApiFilePasteboard::read() noexcept {
  LumoApiLargeDataPtr record;
  return succeeded([&] { return readRecord(path_, record); }) ? record : nullptr;
}

std::string LumoApiFilePasteboard::lastError() const {
  const std::lock_guard guard(lock_);
  return error_;
}
