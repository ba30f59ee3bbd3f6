#pragma once

#include <cstddef>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define LUMOAPI_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define LUMOAPI_SANITIZED 1
#endif
#endif

/// Watches what the calling thread allocates, third-party code included, and has some of it fail. One at a
/// time. A sanitizer keeps malloc() for itself: there only `new` is watched.
class Allocations {
 public:
  static constexpr std::size_t kNever = static_cast<std::size_t>(-1);

  /// The allocation with this number, counted from 0, fails; all that follow fail with it, or none. Those
  /// smaller than `atLeast` are let through.
  explicit Allocations(std::size_t failing = kNever, bool lasting = false, std::size_t atLeast = 0);
  ~Allocations();
  Allocations(const Allocations&) = delete;
  Allocations& operator=(const Allocations&) = delete;

  /// From here on nothing fails; the counts go on.
  void relent() noexcept;
  bool failed() const noexcept;

  std::size_t blocks() const noexcept;  ///< allocated so far
  std::size_t bytes() const noexcept;
  std::size_t peak() const noexcept;            ///< the most bytes in use at once
  std::ptrdiff_t blocksInUse() const noexcept;  ///< allocated and not freed
};
