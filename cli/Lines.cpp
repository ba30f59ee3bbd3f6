#include "cli/Lines.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace lumo::cli {

std::optional<std::string_view> LineReader::next(Output& output) {
  std::size_t searched = 0;
  while (true) {
    const char* start = buffer_.data() + begin_;
    const std::size_t available = end_ - begin_;
    if (searched < available) {
      if (const void* found = std::memchr(start + searched, '\n', available - searched)) {
        const auto length = static_cast<std::size_t>(static_cast<const char*>(found) - start);
        return taken(length, length + 1);
      }
    }
    if (ended_) {
      if (available == 0) return std::nullopt;
      return taken(available, available);
    }
    searched = available;
    output.flush();
    fill();
  }
}

std::string_view LineReader::taken(std::size_t length, std::size_t lengthWithEnd) {
  const std::string_view line(buffer_.data() + begin_, length);
  begin_ += lengthWithEnd;
  return line.ends_with('\r') ? line.substr(0, length - 1) : line;
}

void LineReader::fill() {
  constexpr std::size_t kLeast = std::size_t{1} << 18;
  std::copy(buffer_.begin() + static_cast<std::ptrdiff_t>(begin_),
            buffer_.begin() + static_cast<std::ptrdiff_t>(end_), buffer_.begin());
  end_ -= begin_;
  begin_ = 0;
  if (end_ > kMostBytes) throw FileError(input_.name(), EFBIG);
  if (end_ == buffer_.size()) buffer_.resize(std::max(kLeast, end_ * 2));
  const std::size_t count = input_.read(buffer_.data() + end_, buffer_.size() - end_);
  end_ += count;
  ended_ = count == 0;
}

}  // namespace lumo::cli
