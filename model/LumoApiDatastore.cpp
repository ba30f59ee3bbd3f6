#include "model/LumoApiDatastore.h"

#include <utility>

LumoApiPasteboard::~LumoApiPasteboard() = default;

namespace {

class MemoryPasteboard final : public LumoApiPasteboard {
 public:
  bool write(LumoApiLargeDataPtr record) noexcept override {
    const std::lock_guard guard(lock_);
    record_.swap(record);
    return true;
  }

  LumoApiLargeDataPtr read() noexcept override {
    const std::lock_guard guard(lock_);
    return record_;
  }

 private:
  std::mutex lock_;
  LumoApiLargeDataPtr record_;
};

}  // namespace

// In all of these, what a setter replaces is destroyed after the lock is released: it may be large.

LumoApiDatastore::LumoApiDatastore()
    : values_(std::make_shared<const Values>()), pasteboard_(std::make_shared<MemoryPasteboard>()) {}

// instance
LumoApiDatastore& LumoApiDatastore::instance() noexcept {
  // Never destroyed, so that a thread that outlives main() finds it still there.
  static LumoApiDatastore& store = *new LumoApiDatastore;
  return store;
}

std::shared_ptr<const LumoApiDatastore::Values> LumoApiDatastore::values() const noexcept {
  const std::lock_guard guard(lock_);
  return values_;
}

void LumoApiDatastore::setValues(Values values) {
  auto replacement = std::make_shared<const Values>(std::move(values));
  const std::lock_guard guard(lock_);
  values_.swap(replacement);
}

// setApiLargeData:
bool LumoApiDatastore::setApiLargeData(LumoApiLargeDataPtr record) noexcept {
  return pasteboard()->write(std::move(record));
}

// getApiLargeData
LumoApiLargeDataPtr LumoApiDatastore::getApiLargeData() const noexcept { return pasteboard()->read(); }

void LumoApiDatastore::setApiMessage(std::optional<LumoApiMessage> message) {
  const std::lock_guard guard(lock_);
  message_.swap(message);
}

// getApiMessageWithClass:
std::optional<LumoApiMessage> LumoApiDatastore::apiMessage() const noexcept {
  const std::lock_guard guard(lock_);
  return message_;
}

void LumoApiDatastore::setPasteboard(std::shared_ptr<LumoApiPasteboard> pasteboard) {
  if (!pasteboard) pasteboard = std::make_shared<MemoryPasteboard>();
  const std::lock_guard guard(lock_);
  pasteboard_.swap(pasteboard);
}

std::shared_ptr<LumoApiPasteboard> LumoApiDatastore::pasteboard() const noexcept {
  const std::lock_guard guard(lock_);
  return pasteboard_;
}
