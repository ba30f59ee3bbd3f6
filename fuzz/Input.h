#pragma once

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

namespace lumo::fuzz {

/// Structured values from an input's bytes, from its beginning on; behind its end all are 0 or empty.
class Input {
 public:
  explicit Input(std::string_view bytes) noexcept : rest_(bytes) {}

  bool empty() const noexcept { return rest_.empty(); }
  std::string_view rest() const noexcept { return rest_; }

  std::uint8_t byte() noexcept {
    if (rest_.empty()) return 0;
    const auto first = static_cast<std::uint8_t>(rest_.front());
    rest_.remove_prefix(1);
    return first;
  }

  bool flag() noexcept { return (byte() & 1) != 0; }

  /// A number below `count`, which is at most 256.
  std::size_t below(std::size_t count) noexcept { return byte() % count; }

  template <std::integral Integer>
  Integer number() noexcept {
    std::make_unsigned_t<Integer> bits = 0;
    for (std::size_t i = 0; i < sizeof bits; ++i) {
      bits = static_cast<decltype(bits)>(std::uint64_t{bits} << 8 | byte());
    }
    return static_cast<Integer>(bits);
  }

  /// That many bytes, or those that are left.
  std::string_view bytes(std::size_t size) noexcept {
    const std::string_view taken = rest_.substr(0, size);
    rest_.remove_prefix(taken.size());
    return taken;
  }

  /// Bytes after a length of two bytes.
  std::string_view piece() noexcept { return bytes(number<std::uint16_t>()); }

 private:
  std::string_view rest_;
};

}  // namespace lumo::fuzz
