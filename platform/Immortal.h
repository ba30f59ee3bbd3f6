#pragma once

#include <cstddef>
#include <new>

namespace lumo {

/// An object that is never destroyed, for what belongs to the whole process: threads and static objects that
/// outlive main() still find it there. A static Immortal needs no memory beside its own.
template <class T>
class Immortal {
 public:
  Immortal() : object_(*::new (place_) T) {}
  Immortal(const Immortal&) = delete;
  Immortal& operator=(const Immortal&) = delete;

  T& operator*() const noexcept { return object_; }
  T* operator->() const noexcept { return &object_; }

 private:
  alignas(T) std::byte place_[sizeof(T)];
  T& object_;
};

}  // namespace lumo
