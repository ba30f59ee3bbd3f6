#pragma once

#include "platform/Immortal.h"

#include <memory>
#include <mutex>
#include <utility>

namespace lumo {

/// What the app registered of one kind, and null until it does. Whoever calls a handler holds it meanwhile:
/// no lock is held while the app's code runs, its destructor included.
template <class Handler>
class Registered {
 public:
  using Pointer = std::shared_ptr<const Handler>;

  static Pointer current() noexcept {
    const std::lock_guard guard(state()->lock);
    return state()->handler;
  }

  /// Runs `alongside()` in the same step, for what must change together with the handler.
  template <class Alongside>
  static void set(Pointer replacement, const Alongside& alongside) noexcept {
    const std::lock_guard guard(state()->lock);
    state()->handler.swap(replacement);
    alongside();
  }

  static void set(Pointer replacement) noexcept {
    set(std::move(replacement), [] {});
  }

 private:
  struct State {
    std::mutex lock;
    Pointer handler;
  };

  static const Immortal<State>& state() noexcept {
    static const Immortal<State> held;
    return held;
  }
};

}  // namespace lumo
