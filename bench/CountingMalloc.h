#pragma once

#include <cstddef>

namespace bench {

/// What a program linked with CountingMalloc.cpp has allocated, by whatever way, third-party code included.
struct Allocations {
  std::size_t count;  ///< blocks since restart()
  std::size_t large;  ///< those of 64 KiB and more among them
  std::size_t live;   ///< bytes in use
  std::size_t peak;   ///< the most bytes in use at once since restart()
};

void restartCounting();
Allocations allocations();

}  // namespace bench
