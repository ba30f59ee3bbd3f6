#pragma once

#include "LumoApi/Export.h"
#include "LumoApi/LumoApiMessage.h"
#include "LumoApi/URL.h"

#include <functional>
#include <optional>

/// The web-view kit, which may claim a URL that opened the app before the converter looks at it.
///
/// The app registers what it does; without a handler it claims nothing. Every operation may be called from
/// any thread; the handler is called on the thread that handles the URL, with no lock held, and must not
/// throw (a handler that does is taken to have claimed nothing, or to have built no message).
class LUMOAPI_EXPORT LumoWebViewKit {
 public:
  /// What the app does about such a URL.
  struct Handler {
    /// Whether the kit handles this URL itself.
    std::function<bool(const lumo::URL&)> claims;
    /// The message that it builds from a URL that it claimed, or null.
    std::function<std::optional<LumoApiMessage>(const lumo::URL&)> message;
  };

  /// Registers the app's handler, in place of another one.
  static void setHandler(Handler handler);
  /// Claims nothing from now on.
  static void removeHandler() noexcept;

  /// Whether the handler claims the URL.
  static bool canHanleOpenUrlFromSafari(const lumo::URL& url) noexcept;  // sic
  /// The message that the handler builds from the URL, or null.
  static std::optional<LumoApiMessage> messageWithSafariUrl(const lumo::URL& url) noexcept;
};
