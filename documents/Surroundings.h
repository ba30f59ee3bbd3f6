#pragma once

#include "LumoApi/LumoApiDatastore.h"
#include "LumoApi/LumoApiLargeData.h"
#include "LumoApi/LumoApiMessage.h"
#include "LumoApi/LumoApiObject.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumo::documents {

/// What one conversion finds around it, as its document says.
struct Surroundings {
  struct WebView {
    /// What a URL that the kit claims begins with.
    std::vector<std::string> claims;
    /// What the kit builds from it.
    std::optional<LumoApiMessage> message;
  };

  LumoApiDatastore::Values values;
  LumoApiLargeDataPtr apiLargeData;
  std::optional<LumoApiMessage> apiMessage;
  std::shared_ptr<LumoApiObject> currentObject;
  WebView webView;
};

}  // namespace lumo::documents
