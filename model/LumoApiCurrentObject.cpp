#include "LumoApi/LumoApiCurrentObject.h"

#include <pthread.h>

#include <cstddef>
#include <new>
#include <utility>

namespace {

using Pointer = std::shared_ptr<const LumoApiObject>;

/// The slot of one thread. It has no destructor that could run before that of another object of the thread
/// which still converts; a thread's key empties it later, after all of these.
struct Slot {
  alignas(Pointer) std::byte place[sizeof(Pointer)];
  bool isMade;

  Pointer& pointer() noexcept {
    if (!std::exchange(isMade, true)) ::new (place) Pointer;
    return *std::launder(reinterpret_cast<Pointer*>(place));
  }
};

constinit thread_local Slot slot{};

/// Empties slots at the end of their threads, but not the main thread's: what runs at the end of the process
/// still finds its object there.
struct AtThreadEnd {
  pthread_key_t key{};
  bool works;

  AtThreadEnd() noexcept
      : works(::pthread_key_create(
                  &key, [](void* ended) { Pointer().swap(static_cast<Slot*>(ended)->pointer()); }) == 0) {}

  void empty(Slot& filled) const noexcept {
    if (works) ::pthread_setspecific(key, &filled);
  }
};

Pointer exchange(Pointer object) noexcept {
  static const AtThreadEnd atThreadEnd;
  if (object) atThreadEnd.empty(slot);
  return std::exchange(slot.pointer(), std::move(object));
}

}  // namespace

Pointer LumoApiCurrentObject::get() noexcept { return slot.pointer(); }

// What was there before is destroyed once the slot holds its successor: it may be the app's code.
void LumoApiCurrentObject::set(Pointer object) noexcept { exchange(std::move(object)); }

LumoApiCurrentObject::Scope::Scope(Pointer object) noexcept : before_(exchange(std::move(object))) {}

LumoApiCurrentObject::Scope::~Scope() { exchange(std::move(before_)); }
