#include "model/LumoWebViewKit.h"

#include <memory>
#include <mutex>
#include <utility>

namespace {

std::mutex lock;
std::shared_ptr<const LumoWebViewKit::Handler> registered;

std::shared_ptr<const LumoWebViewKit::Handler> exchange(
    std::shared_ptr<const LumoWebViewKit::Handler> handler) {
  const std::lock_guard guard(lock);
  return std::exchange(registered, std::move(handler));
}

std::shared_ptr<const LumoWebViewKit::Handler> current() noexcept {
  const std::lock_guard guard(lock);
  return registered;
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
