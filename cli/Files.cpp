#include "cli/Files.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <new>
#include <string_view>
#include <system_error>

namespace lumo::cli {

namespace {

/// Whether a call that failed is to be made again, after waiting until it can succeed.
bool isWorthAnotherTry(int descriptor, short event) {
  if (errno == EINTR) return true;
  if (errno != EAGAIN && errno != EWOULDBLOCK) return false;
  pollfd awaited{descriptor, event, 0};
  ::poll(&awaited, 1, -1);
  return true;
}

std::size_t readSome(int descriptor, const std::string& name, char* buffer, std::size_t size) {
  while (true) {
    const ssize_t count = ::read(descriptor, buffer, size);
    if (count >= 0) return static_cast<std::size_t>(count);
    if (!isWorthAnotherTry(descriptor, POLLIN)) throw FileError(name, errno);
  }
}

void writeAll(int descriptor, const std::string& name, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
    if (count >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
    } else if (!isWorthAnotherTry(descriptor, POLLOUT)) {
      throw FileError(name, errno);
    }
  }
}

/// What the descriptor's file says of itself; a size of 0 where it does not know.
std::size_t expectedSize(const struct stat& status) {
  return S_ISREG(status.st_mode) && status.st_size > 0 ? static_cast<std::size_t>(status.st_size) : 0;
}

/// `read(buffer, size)` gives how many bytes it put there; 0 at the end.
template <class Read>
std::string readToEnd(const std::string& name, std::size_t sizeHint, const Read& read) {
  constexpr std::size_t kLeast = std::size_t{1} << 16, kMostAtOnce = std::size_t{1} << 24;
  if (sizeHint > kMostBytes) throw FileError(name, EFBIG);
  std::string bytes(std::max(sizeHint + 1, kLeast), '\0');  // one more shows the end without growing
  std::size_t used = 0;
  while (const std::size_t count = read(bytes.data() + used, std::min(bytes.size() - used, kMostAtOnce))) {
    used += count;
    if (used > kMostBytes) throw FileError(name, EFBIG);
    if (used == bytes.size()) bytes.resize(used * 2);
  }
  bytes.resize(used);
  return bytes;
}

struct Closer {
  int descriptor;
  ~Closer() { ::close(descriptor); }
};

}  // namespace

FileError::FileError(const std::string& name, int error)
    : FileError(name, std::generic_category().message(error)) {
  brokenPipe_ = error == EPIPE;
}

Data FilesBeside::file(const std::string& path) const { return readRegularFile(folder_ / path); }

Input::Input(const std::string& file)
    : name_(file),
      files_(file == "-" ? "" : std::filesystem::path(file).parent_path()),
      descriptor_(STDIN_FILENO) {
  if (file == "-") {
    name_ = "standard input";
    // Somebody who forgot the file's name would wait for the tool, and the tool for them.
    const bool isTyped = ::isatty(STDIN_FILENO) == 1 && ::isatty(STDERR_FILENO) == 1;
    if (isTyped) complain("reading from the terminal; Ctrl-D ends the input");
  } else {
    descriptor_ = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor_ < 0) throw FileError(name_, errno);
  }
  struct stat status {};
  if (::fstat(descriptor_, &status) == 0) expectedSize_ = expectedSize(status);
  progress_.emplace(name_, expectedSize_);
}

Input::~Input() {
  if (descriptor_ != STDIN_FILENO) ::close(descriptor_);
}

std::size_t Input::read(char* buffer, std::size_t size) {
  const std::size_t count = readSome(descriptor_, name_, buffer, size);
  progress_->advance(count);
  return count;
}

std::string Input::readAll() {
  return readToEnd(name_, expectedSize_,
                   [this](char* buffer, std::size_t size) { return read(buffer, size); });
}

void Output::flush() {
  writeAll(STDOUT_FILENO, "standard output", buffer_);
  buffer_.clear();
}

void writeFile(const std::string& file, std::string_view bytes, Existing existing) {
  if (file == "-") return writeAll(STDOUT_FILENO, "standard output", bytes);
  const int whereItExists = existing == Existing::Kept ? O_EXCL : O_TRUNC;
  const int descriptor = ::open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | whereItExists, 0666);
  if (descriptor < 0) throw FileError(file, errno);
  const Closer closer{descriptor};
  writeAll(descriptor, file, bytes);
}

bool isURL(const std::string& operand) {
  std::error_code error;
  return operand.find(':') != std::string::npos && !std::filesystem::exists(operand, error);
}

Data readRegularFile(const std::filesystem::path& path) {
  const std::string& name = path.native();
  if (const std::size_t zero = name.find('\0'); zero != std::string::npos) {
    throw FileError(name.substr(0, zero), "the path holds a zero byte");
  }
  // Without O_NONBLOCK a pipe that nobody writes to would keep the tool waiting.
  const int descriptor = ::open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor < 0) throw FileError(name, errno);
  const Closer closer{descriptor};
  struct stat status {};
  if (::fstat(descriptor, &status) != 0) throw FileError(name, errno);
  if (S_ISDIR(status.st_mode)) throw FileError(name, EISDIR);
  if (!S_ISREG(status.st_mode)) throw FileError(name, "not a regular file");
  try {
    return Data(readToEnd(name, expectedSize(status), [&](char* buffer, std::size_t size) {
      return readSome(descriptor, name, buffer, size);
    }));
  } catch (const std::bad_alloc&) {
    throw FileError(name, ENOMEM);
  }
}

}  // namespace lumo::cli
