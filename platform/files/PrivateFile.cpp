#include "platform/files/PrivateFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <system_error>
#include <utility>

namespace lumo {

namespace {

class Descriptor {
 public:
  explicit Descriptor(int number) noexcept : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { close(); }

  int get() const noexcept { return number_; }
  explicit operator bool() const noexcept { return number_ >= 0; }
  bool close() noexcept { return number_ < 0 || ::close(std::exchange(number_, -1)) == 0; }

 private:
  int number_;
};

FileError systemError() { return std::generic_category().message(errno); }

/// What is wrong with whatever stands at the path, as far as a replacement goes; nothing there is fine.
FileError replaceable(const std::string& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0) return errno == ENOENT ? FileError() : systemError();
  return S_ISREG(status.st_mode) ? FileError() : "not a regular file";
}

FileError writeAll(int file, const Data& bytes) {
  for (std::size_t done = 0; done < bytes.size();) {
    const ssize_t count = ::write(file, bytes.data() + done, bytes.size() - done);
    if (count < 0 && errno != EINTR) return systemError();
    if (count > 0) done += static_cast<std::size_t>(count);
  }
  return {};
}

bool flush(const Descriptor& file) noexcept {
  int result;
  do {
    result = ::fsync(file.get());
  } while (result != 0 && errno == EINTR);
  return result == 0;
}

/// A new file beside another, under a name that nobody can guess and for its owner alone. It is removed
/// again, also where memory runs out, unless it takes the other's place.
class Replacement {
 public:
  explicit Replacement(const std::string& path)
      : name_(path + ".XXXXXX"), file_(::mkostemp(name_.data(), O_CLOEXEC)), exists_(file_) {}
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;
  ~Replacement() {
    if (exists_) (void)::unlink(name_.c_str());
  }

  bool exists() const noexcept { return exists_; }

  /// Writes the content and sees it onto the disk.
  FileError fill(const DataChain& content) {
    for (const Data& piece : content.pieces()) {
      if (FileError error = writeAll(file_.get(), piece); !error.empty()) return error;
    }
    return flush(file_) && file_.close() ? FileError() : systemError();
  }

  bool takePlaceOf(const std::string& path) noexcept {
    if (::rename(name_.c_str(), path.c_str()) != 0) return false;
    exists_ = false;
    return true;
  }

 private:
  std::string name_;
  Descriptor file_;
  bool exists_;
};

int openFolderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
  return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

FileError readAll(int file, DataBuffer& buffer) {
  std::size_t done = 0;
  for (;;) {
    // One byte more than expected tells a file that grew from one that did not.
    std::uint8_t further = 0;
    const bool full = done == buffer.data.size();
    const ssize_t count =
        full ? ::read(file, &further, 1) : ::read(file, buffer.bytes + done, buffer.data.size() - done);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return systemError();
    if ((count == 0) != full) return "changed while it was read";
    if (full) return {};
    done += static_cast<std::size_t>(count);
  }
}

}  // namespace

FileError replacePrivateFile(const std::string& path, const DataChain& content) {
  if (FileError error = replaceable(path); !error.empty()) return error;
  const Descriptor folder(openFolderOf(path));  // now, since after the renaming nothing may fail any more
  Replacement replacement(path);
  if (!replacement.exists()) return systemError();
  if (FileError error = replacement.fill(content); !error.empty()) return error;
  if (!replacement.takePlaceOf(path)) return systemError();
  // Without this, a crash of the machine could bring the old content back. Some file systems cannot, and need
  // not.
  if (folder) (void)flush(folder);
  return {};
}

FileError removePrivateFile(const std::string& path) {
  if (FileError error = replaceable(path); !error.empty()) return error;
  return ::unlink(path.c_str()) == 0 || errno == ENOENT ? FileError() : systemError();
}

FileError readPrivateFile(const std::string& path, std::size_t limit, std::optional<Data>& content) {
  content.reset();
  // Not blocking, so that a pipe in the file's place is told and not waited for.
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  if (!file) {
    if (errno == ENOENT) return {};
    return errno == ELOOP ? "not a regular file" : systemError();
  }
  struct stat status {};
  if (::fstat(file.get(), &status) != 0) return systemError();
  if (!S_ISREG(status.st_mode)) return "not a regular file";
  if (status.st_uid != ::geteuid()) return "owned by another user";
  const auto size = static_cast<std::size_t>(status.st_size);
  if (size > limit) return std::to_string(size) + " bytes, at most " + std::to_string(limit);
  DataBuffer buffer = Data::uninitialized(size);
  if (FileError error = readAll(file.get(), buffer); !error.empty()) return error;
  content = std::move(buffer.data);
  return {};
}

}  // namespace lumo
