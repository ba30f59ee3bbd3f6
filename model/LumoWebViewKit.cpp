#include "LumoApi/LumoWebViewKit.h"

#include "model/Registered.h"

#include <memory>
#include <utility>

using RegisteredKit = lumo::Registered<LumoWebViewKit::Handler>;

void LumoWebViewKit::setHandler(Handler handler) {
  RegisteredKit::set(std::make_shared<const Handler>(std::move(handler)));
}

void LumoWebViewKit::removeHandler() noexcept { RegisteredKit::set(nullptr); }

// canHanleOpenUrlFromSafari: (sic)
bool LumoWebViewKit::canHanleOpenUrlFromSafari(const lumo::URL& url) noexcept {
  const auto handler = RegisteredKit::current();
  try {
    return handler && handler->claims && handler->claims(url);
  } catch (...) {
    return false;
  }
}

// messageWithSafariUrl:
std::optional<LumoApiMessage> LumoWebViewKit::messageWithSafariUrl(const lumo::URL& url) noexcept {
  const auto handler = RegisteredKit::current();
  try {
    if (handler && handler->message) return handler->message(url);
  } catch (...) {  // no message then
  }
  return std::nullopt;
}
