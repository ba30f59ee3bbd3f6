#include "LumoApi/LumoWebViewKit.h"

#include <memory>
#include <mutex>
#include <new>
#include <utility>

namespace {

using HandlerPtr = std::shared_ptr<const LumoWebViewKit::Handler>;

std::mutex lock;

/// What the app registered. Never destroyed: objects that outlive main() may still handle URLs.
HandlerPtr& registered() noexcept {
  alignas(HandlerPtr) static unsigned char place[sizeof(HandlerPtr)];
  static HandlerPtr& held = *new (place) HandlerPtr;
  return held;
}

HandlerPtr exchange(HandlerPtr handler) noexcept {
  const std::lock_guard guard(lock);
  return std::exchange(registered(), std::move(handler));
}

HandlerPtr current() noexcept {
  const std::lock_guard guard(lock);
  return registered();
}

}  // namespace

void LumoWebViewKit::setHandler(Handler handler) {
  exchange(std::make_shared<const Handler>(std::move(handler)));
}

void LumoWebViewKit::removeHandler() noexcept { exchange(nullptr); }

// canHanleOpenUrlFromSafari: (sic)
bool LumoWebViewKit::canHanleOpenUrlFromSafari(const lumo::URL& url) noexcept {
  const auto handler = current();
  try {
    return handler && handler->claims && handler->claims(url);
  } catch (...) {
    return false;
  }
}

// messageWithSafariUrl:
std::optional<LumoApiMessage> LumoWebViewKit::messageWithSafariUrl(const lumo::URL& url) noexcept {
  const auto handler = current();
  try {
    if (handler && handler->message) return handler->message(url);
  } catch (...) {  // no message then
  }
  return std::nullopt;
}
