#include "platform/PrivateFile.h"

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

/// Fills a new file, for its owner alone, and sees it onto the disk.
FileError fill(Descriptor& file, const DataChain& content) {
  for (const Data& piece : content.pieces()) {
    if (FileError error = writeAll(file.get(), piece); !error.empty()) return error;
  }
  return ::fsync(file.get()) == 0 && file.close() ? FileError() : systemError();
}

/// Makes a rename last: without this, a crash of the machine could bring the old name back.
void flushFolder(const std::string& path) noexcept {
  const std::size_t slash = path.rfind('/');
  const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
  const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (opened) (void)::fsync(opened.get());  // some file systems cannot, and need not
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
  std::string temporary = path + ".XXXXXX";
  Descriptor file(::mkostemp(temporary.data(), O_CLOEXEC));  // of an unguessable name, new, and 0600
  if (!file) return systemError();
  FileError error = fill(file, content);
  if (error.empty() && ::rename(temporary.c_str(), path.c_str()) != 0) error = systemError();
  if (error.empty()) {
    flushFolder(path);
  } else {
    (void)::unlink(temporary.c_str());
  }
  return error;
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
