#include "platform/kernels/Kernels.h"

#include <atomic>

namespace lumo::kernels {

namespace {

#if defined(__x86_64__)

constexpr const Kernels* kKinds[] = {&kPlain, &kAVX2, &kAVX512};

// The instructions that each source of kernels was compiled with.
std::size_t kindsHere() noexcept {
  __builtin_cpu_init();
  const bool avx2 = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") &&
                    __builtin_cpu_supports("bmi2") && __builtin_cpu_supports("popcnt");
  const bool avx512 = avx2 && __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
                      __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512vbmi") &&
                      __builtin_cpu_supports("avx512vbmi2");
  return avx512 ? 3 : avx2 ? 2 : 1;
}

#elif defined(__aarch64__) && defined(__ARM_NEON)

constexpr const Kernels* kKinds[] = {&kPlain, &kNEON};

constexpr std::size_t kindsHere() noexcept { return 2; }

#else

constexpr const Kernels* kKinds[] = {&kPlain};

constexpr std::size_t kindsHere() noexcept { return 1; }

#endif

}  // namespace

std::span<const Kernels* const> available() noexcept { return std::span(kKinds).first(kindsHere()); }

// Any thread may be the first to choose; all choose alike.
const Kernels& best() noexcept {
  static constinit std::atomic<const Kernels*> chosen = nullptr;
  const Kernels* kernels = chosen.load(std::memory_order_relaxed);
  if (kernels == nullptr) {
    kernels = available().back();
    chosen.store(kernels, std::memory_order_relaxed);
  }
  return *kernels;
}

}  // namespace lumo::kernels
