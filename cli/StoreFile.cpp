#include "cli/StoreFile.h"

#include "cli/Files.h"

#include <utility>

namespace lumo::cli {

StoreFile::StoreFile(const std::optional<std::string>& file) {
  if (file) file_.emplace(*file);
}

void StoreFile::prepare(LumoApiLargeDataPtr record) {
  if (!file_) return;
  file_->read();
  check();
  if (!record) return;
  file_->write(std::move(record));
  check();
}

void StoreFile::check() const {
  if (file_ && !file_->error().empty()) throw FileError(file_->error());
}

bool StoreFile::Watched::write(LumoApiLargeDataPtr record) noexcept {
  const bool isWritten = pasteboard_.write(std::move(record));
  keepError();
  return isWritten;
}

LumoApiLargeDataPtr StoreFile::Watched::read() noexcept {
  LumoApiLargeDataPtr record = pasteboard_.read();
  keepError();
  return record;
}

void StoreFile::Watched::keepError() noexcept try {
  if (error_.empty()) error_ = pasteboard_.lastError();
} catch (...) {  // memory is exhausted
}

}  // namespace lumo::cli
