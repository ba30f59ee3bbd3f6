#pragma once

#include <csetjmp>
#include <new>
#include <type_traits>

namespace lumo {

/// Runs calls into a C library that reports an error through a callback which must not return.
///
/// The callback calls fail(), which leads back out of run(). What lies in between is left without running any
/// destructor: the library's own frames, and a function that keeps its objects outside of itself.
class ErrorTrap {
 public:
  ErrorTrap() = default;
  ErrorTrap(const ErrorTrap&) = delete;
  ErrorTrap& operator=(const ErrorTrap&) = delete;

  /// False where the calls failed; throws std::bad_alloc where they failed for want of memory.
  template <class Calls>
  bool run(const Calls& calls) {
    static_assert(std::is_trivially_destructible_v<Calls>);
    if (setjmp(place_) == 0) {
      calls();
      return true;
    }
    if (outOfMemory_) throw std::bad_alloc();
    return false;
  }

  [[noreturn]] void fail(bool outOfMemory = false) noexcept {
    outOfMemory_ = outOfMemory;
    std::longjmp(place_, 1);
  }

 private:
  std::jmp_buf place_;
  bool outOfMemory_ = false;
};

}  // namespace lumo
