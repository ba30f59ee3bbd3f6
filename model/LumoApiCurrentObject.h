#pragma once

#include "LumoApi/Export.h"
#include "LumoApi/LumoApiObject.h"

#include <memory>

/// The content object that is being sent from the calling thread: a slot of each thread, filled by the app
/// around a conversion. The converter reads its `cflag` and never changes the slot. Empty unless filled; no
/// thread sees another's.
class LUMOAPI_EXPORT LumoApiCurrentObject {
 public:
  /// What the slot of the calling thread holds; null where it is empty.
  static std::shared_ptr<const LumoApiObject> get() noexcept;
  /// Fills the slot of the calling thread; null empties it.
  static void set(std::shared_ptr<const LumoApiObject> object) noexcept;

  /// Fills the slot of the thread for its own lifetime and then puts back what was there before.
  class LUMOAPI_EXPORT Scope {
   public:
    /// Fills the slot of the calling thread.
    explicit Scope(std::shared_ptr<const LumoApiObject> object) noexcept;
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    std::shared_ptr<const LumoApiObject> before_;
  };
};
