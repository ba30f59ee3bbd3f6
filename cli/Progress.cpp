#include "cli/Progress.h"

#include "inspect/Printable.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace lumo::cli {

namespace {

constexpr std::chrono::milliseconds kInterval{250};

void show(std::string_view text) {
  const std::string line = "\r" + std::string(text) + "\x1B[K";  // without what was on the line before
  static_cast<void>(std::fwrite(line.data(), 1, line.size(), stderr));
}

}  // namespace

Progress::Progress(const std::string& name, std::size_t size) : size_(size), next_(Clock::now() + kInterval) {
  const bool isWatched = ::isatty(STDERR_FILENO) == 1 && ::isatty(STDOUT_FILENO) == 0;
  if (!isWatched) size_ = 0;
  name_ = inspection::cut(inspection::printable(name), 40);
}

Progress::~Progress() { hide(); }

void Progress::hide() {
  if (isShown_) show("");
  isShown_ = false;
}

void Progress::advance(std::size_t bytes) {
  done_ += bytes;
  if (size_ == 0) return;
  const Clock::time_point now = Clock::now();
  if (now < next_) return;
  next_ = now + kInterval;
  isShown_ = true;
  const auto percent =
      static_cast<unsigned>(100.0 * static_cast<double>(std::min(done_, size_)) / static_cast<double>(size_));
  show(name_ + ": " + std::to_string(percent) + " % of " + inspection::grouped(size_ / 1000) + " kB");
}

}  // namespace lumo::cli
