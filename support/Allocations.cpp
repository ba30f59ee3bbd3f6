// Stands in for the C library's malloc, or under a sanitizer for `new`, and calls it.

#include "support/Allocations.h"

#include <malloc.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <new>

namespace {

struct State {
  bool watching = false, lasting = false, failed = false;
  std::size_t failing = 0, atLeast = 0, blocks = 0, bytes = 0;
  std::ptrdiff_t inUse = 0, bytesInUse = 0, peak = 0;
};
thread_local constinit State state;

[[maybe_unused]] bool fails(std::size_t size) {
  if (!state.watching || size < state.atLeast) return false;
  const bool fail = state.lasting ? state.blocks >= state.failing : state.blocks == state.failing;
  state.failed |= fail;
  ++state.blocks;
  return fail;
}

[[maybe_unused]] void* added(void* block) {
  if (!state.watching || !block) return block;
  const std::size_t size = malloc_usable_size(block);
  ++state.inUse;
  state.bytes += size;
  state.bytesInUse += static_cast<std::ptrdiff_t>(size);
  state.peak = std::max(state.peak, state.bytesInUse);
  return block;
}

[[maybe_unused]] void removed(void* block) {
  if (!state.watching || !block) return;
  --state.inUse;
  state.bytesInUse -= static_cast<std::ptrdiff_t>(malloc_usable_size(block));
}

}  // namespace

Allocations::Allocations(std::size_t failing, bool lasting, std::size_t atLeast) {
  state = {.watching = true, .lasting = lasting, .failing = failing, .atLeast = atLeast};
}
Allocations::~Allocations() { state.watching = false; }
void Allocations::relent() noexcept { state.failing = kNever; }
bool Allocations::failed() const noexcept { return state.failed; }
std::size_t Allocations::blocks() const noexcept { return state.blocks; }
std::size_t Allocations::bytes() const noexcept { return state.bytes; }
std::size_t Allocations::peak() const noexcept { return static_cast<std::size_t>(state.peak); }
std::ptrdiff_t Allocations::blocksInUse() const noexcept { return state.inUse; }

#if LUMOAPI_UNDER_ASAN

void* operator new(std::size_t size) {
  void* block = fails(size) ? nullptr : added(std::malloc(size));
  if (!block) throw std::bad_alloc();
  return block;
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return fails(size) ? nullptr : added(std::malloc(size));
}
void operator delete(void* block) noexcept {
  removed(block);
  std::free(block);
}
void operator delete(void* block, std::size_t) noexcept { operator delete(block); }

#elif !LUMOAPI_UNDER_TSAN

extern "C" {

// The names under which the GNU C library offers its own.
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);

void* malloc(std::size_t size) { return fails(size) ? nullptr : added(__libc_malloc(size)); }
void* calloc(std::size_t count, std::size_t size) {
  return fails(count * size) ? nullptr : added(__libc_calloc(count, size));
}
void* memalign(std::size_t alignment, std::size_t size) {
  return fails(size) ? nullptr : added(__libc_memalign(alignment, size));
}
void* aligned_alloc(std::size_t alignment, std::size_t size) { return memalign(alignment, size); }
int posix_memalign(void** block, std::size_t alignment, std::size_t size) {
  *block = memalign(alignment, size);
  return *block ? 0 : ENOMEM;
}
void* realloc(void* block, std::size_t size) {
  if (fails(size)) return nullptr;
  removed(block);
  return added(__libc_realloc(block, size));
}
void free(void* block) {
  removed(block);
  __libc_free(block);
}

}  // extern "C"

#endif
