#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace lumo::image {

using Bytes = std::span<const std::uint8_t>;

/// Reads big-endian numbers off the front; past the end it gives zeros and remembers.
class ByteReader {
 public:
  explicit ByteReader(Bytes bytes) noexcept : rest_(bytes) {}

  std::uint64_t number(std::size_t size) noexcept {
    std::uint64_t value = 0;
    for (const std::uint8_t byte : take(size)) value = value << 8 | byte;
    return value;
  }
  std::string_view word() noexcept {
    const Bytes bytes = take(4);
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
  }
  Bytes take(std::uint64_t size) noexcept {
    if (size > rest_.size()) isShort_ = true;
    const Bytes taken = rest_.first(isShort_ ? 0 : static_cast<std::size_t>(size));
    rest_ = rest_.subspan(taken.size());
    return taken;
  }
  Bytes rest() const noexcept { return rest_; }
  bool isShort() const noexcept { return isShort_; }

 private:
  Bytes rest_;
  bool isShort_ = false;
};

}  // namespace lumo::image
