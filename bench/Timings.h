#pragma once

#include <benchmark/benchmark.h>

#include <string>
#include <utility>

namespace bench {

/// Registers `work` under a name of the form "case/who", whose last part says whose code is timed. What it
/// gives is kept from being optimised away.
template <class Work>
benchmark::internal::Benchmark* timing(const std::string& name, Work work) {
  return benchmark::RegisterBenchmark(name.c_str(), [work = std::move(work)](benchmark::State& state) {
    for (auto _ : state) {
      const auto result = work();
      benchmark::DoNotOptimize(&result);
      benchmark::ClobberMemory();
    }
  });
}

void registerTextTimings();
void registerShareTimings();
void registerIncomingTimings();
void registerJSONTimings();
void registerPictureTimings();

/// Whether all that is compared does the same work; says on standard error what does not.
bool peersAgree();

}  // namespace bench
