#pragma once

#include <cstddef>

#if defined(__has_feature)
#define LUMOAPI_UNDER_ASAN __has_feature(address_sanitizer)
#define LUMOAPI_UNDER_TSAN __has_feature(thread_sanitizer)
#endif

/// Watches what the calling thread allocates, third-party code included, and has some of it fail. One at a
/// time. The address sanitizer keeps malloc() for itself, so that only `new` is watched there; the thread
/// sanitizer keeps all.
class Allocations {
 public:
#if LUMOAPI_UNDER_TSAN
  static constexpr bool kWatches = false;
#else
  static constexpr bool kWatches = true;
#endif
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
