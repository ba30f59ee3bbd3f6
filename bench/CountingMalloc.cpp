// Stands in for the C library's malloc and calls it. For programs of one thread.

#include "bench/CountingMalloc.h"

#include <malloc.h>

#include <algorithm>
#include <cerrno>

namespace {

bench::Allocations counted{};

void* added(void* block) {
  if (!block) return block;
  const std::size_t size = malloc_usable_size(block);
  ++counted.count;
  counted.large += size >= 65536;
  counted.live += size;
  counted.peak = std::max(counted.peak, counted.live);
  return block;
}

void removed(void* block) {
  if (block) counted.live -= std::min(counted.live, malloc_usable_size(block));
}

}  // namespace

extern "C" {

// The names under which the GNU C library offers its own.
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);

void* malloc(std::size_t size) { return added(__libc_malloc(size)); }
void* calloc(std::size_t count, std::size_t size) { return added(__libc_calloc(count, size)); }
void* memalign(std::size_t alignment, std::size_t size) { return added(__libc_memalign(alignment, size)); }
void* aligned_alloc(std::size_t alignment, std::size_t size) { return memalign(alignment, size); }
int posix_memalign(void** block, std::size_t alignment, std::size_t size) {
  *block = memalign(alignment, size);
  return *block ? 0 : ENOMEM;
}
void* realloc(void* block, std::size_t size) {
  removed(block);
  return added(__libc_realloc(block, size));
}
void free(void* block) {
  removed(block);
  __libc_free(block);
}

}  // extern "C"

void bench::restartCounting() {
  counted.count = counted.large = 0;
  counted.peak = counted.live;
}

bench::Allocations bench::allocations() { return counted; }
