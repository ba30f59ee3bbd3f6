#include "LumoApi/LumoApiDatastore.h"

#include <new>
#include <utility>

LumoApiPasteboard::~LumoApiPasteboard() = default;

// In all of these, what a setter replaces is destroyed after the lock is released: it may be large.

// instance
LumoApiDatastore& LumoApiDatastore::instance() noexcept {
  // Needs no memory of its own, and is never destroyed, so that a thread that outlives main() finds it still
  // there.
  alignas(LumoApiDatastore) static unsigned char place[sizeof(LumoApiDatastore)];
  static LumoApiDatastore& store = *new (place) LumoApiDatastore;
  return store;
}

std::shared_ptr<const LumoApiDatastore::Values> LumoApiDatastore::values() const noexcept {
  alignas(Values) static unsigned char place[sizeof(Values)];
  static const Values& kNone = *new (place) Values;
  const std::lock_guard guard(lock_);
  return values_ ? values_ : std::shared_ptr<const Values>(std::shared_ptr<void>(), &kNone);
}

void LumoApiDatastore::setValues(Values values) {
  auto replacement = std::make_shared<const Values>(std::move(values));
  const std::lock_guard guard(lock_);
  values_.swap(replacement);
}

// setApiLargeData:
bool LumoApiDatastore::setApiLargeData(LumoApiLargeDataPtr record) noexcept {
  if (const auto elsewhere = pasteboard()) return elsewhere->write(std::move(record));
  const std::lock_guard guard(lock_);
  record_.swap(record);
  return true;
}

// getApiLargeData
LumoApiLargeDataPtr LumoApiDatastore::getApiLargeData() const noexcept {
  if (const auto elsewhere = pasteboard()) return elsewhere->read();
  const std::lock_guard guard(lock_);
  return record_;
}

void LumoApiDatastore::setApiMessage(std::optional<LumoApiMessage> message) {
  const std::lock_guard guard(lock_);
  message_.swap(message);
}

// getApiMessageWithClass:
std::optional<LumoApiMessage> LumoApiDatastore::apiMessage() const noexcept {
  const std::lock_guard guard(lock_);
  return message_;
}

void LumoApiDatastore::setPasteboard(std::shared_ptr<LumoApiPasteboard> pasteboard) noexcept {
  const std::lock_guard guard(lock_);
  pasteboard_.swap(pasteboard);
}

std::shared_ptr<LumoApiPasteboard> LumoApiDatastore::pasteboard() const noexcept {
  const std::lock_guard guard(lock_);
  return pasteboard_;
}
