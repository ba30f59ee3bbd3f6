#include "LumoApi/LumoApiCurrentObject.h"

#include <utility>

namespace {

thread_local std::shared_ptr<const LumoApiObject> slot;

}  // namespace

std::shared_ptr<const LumoApiObject> LumoApiCurrentObject::get() noexcept { return slot; }

void LumoApiCurrentObject::set(std::shared_ptr<const LumoApiObject> object) noexcept { slot.swap(object); }

LumoApiCurrentObject::Scope::Scope(std::shared_ptr<const LumoApiObject> object) noexcept
    : before_(std::exchange(slot, std::move(object))) {}

LumoApiCurrentObject::Scope::~Scope() { slot.swap(before_); }
