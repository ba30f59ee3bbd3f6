#include "LumoApi/LumoApiDatastore.h"

#include "platform/Immortal.h"

#include <mutex>
#include <utility>

LumoApiPasteboard::~LumoApiPasteboard() = default;

namespace {

using Values = LumoApiDatastore::Values;
using ValuesPtr = std::shared_ptr<const Values>;
using PasteboardPtr = std::shared_ptr<LumoApiPasteboard>;

/// What the store holds. In all that changes it, what is replaced is destroyed after the lock is released: it
/// may be large, or the app's code.
struct State {
  std::mutex lock;
  ValuesPtr values;  // null until they are set
  std::optional<LumoApiMessage> message;
  PasteboardPtr pasteboard;  // null: the record is here
  LumoApiLargeDataPtr record;
};

const lumo::Immortal<State>& state() noexcept {
  static const lumo::Immortal<State> held;
  return held;
}

PasteboardPtr pasteboard() noexcept {
  const std::lock_guard guard(state()->lock);
  return state()->pasteboard;
}

/// Replaces one value and keeps all others, whoever sets them meanwhile.
template <class T>
void set(T Values::*member, T value) {
  auto replacement = std::make_shared<Values>();
  ValuesPtr former;
  const std::lock_guard guard(state()->lock);
  if (state()->values) *replacement = *state()->values;
  (*replacement).*member = std::move(value);
  former = std::exchange(state()->values, std::move(replacement));
}

}  // namespace

// instance
LumoApiDatastore& LumoApiDatastore::instance() noexcept {
  static constinit LumoApiDatastore store;
  return store;
}

std::shared_ptr<const Values> LumoApiDatastore::values() const noexcept {
  static const lumo::Immortal<Values> kNone;
  const std::lock_guard guard(state()->lock);
  return state()->values ? state()->values : ValuesPtr(std::shared_ptr<void>(), &*kNone);
}

void LumoApiDatastore::setValues(Values values) {
  auto replacement = std::make_shared<const Values>(std::move(values));
  const std::lock_guard guard(state()->lock);
  state()->values.swap(replacement);
}

void LumoApiDatastore::setScheme(std::optional<std::string> scheme) {
  set(&Values::scheme, std::move(scheme));
}

void LumoApiDatastore::setAppName(std::optional<std::string> appName) {
  set(&Values::appName, std::move(appName));
}

void LumoApiDatastore::setAppId(std::optional<std::string> appId) { set(&Values::appId, std::move(appId)); }

void LumoApiDatastore::setOpenId(std::optional<std::string> openId) {
  set(&Values::openId, std::move(openId));
}

void LumoApiDatastore::setUin(std::optional<lumo::Value> uin) { set(&Values::uin, std::move(uin)); }

void LumoApiDatastore::setIsLumoSupportUrlForShareText(bool is) {
  set(&Values::isLumoSupportUrlForShareText, is);
}

void LumoApiDatastore::setIsLumoSupportUrlInsteadPastedboard(bool is) {
  set(&Values::isLumoSupportUrlInsteadPastedboard, is);
}

void LumoApiDatastore::setIsLumoSupportApiGeneralPastboard(bool is) {
  set(&Values::isLumoSupportApiGeneralPastboard, is);
}

// setApiLargeData:
bool LumoApiDatastore::setApiLargeData(LumoApiLargeDataPtr record) noexcept {
  if (const PasteboardPtr elsewhere = pasteboard()) return elsewhere->write(std::move(record));
  const std::lock_guard guard(state()->lock);
  state()->record.swap(record);
  return true;
}

// getApiLargeData
LumoApiLargeDataPtr LumoApiDatastore::getApiLargeData() const noexcept {
  if (const PasteboardPtr elsewhere = pasteboard()) return elsewhere->read();
  const std::lock_guard guard(state()->lock);
  return state()->record;
}

void LumoApiDatastore::setApiMessage(std::optional<LumoApiMessage> message) {
  const std::lock_guard guard(state()->lock);
  state()->message.swap(message);
}

// getApiMessageWithClass:
std::optional<LumoApiMessage> LumoApiDatastore::apiMessage() const noexcept {
  const std::lock_guard guard(state()->lock);
  return state()->message;
}

void LumoApiDatastore::setPasteboard(PasteboardPtr pasteboard) noexcept {
  const std::lock_guard guard(state()->lock);
  state()->pasteboard.swap(pasteboard);
}
