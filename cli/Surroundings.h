#pragma once

#include "model/LumoApiDatastore.h"
#include "model/LumoApiLargeData.h"
#include "model/LumoApiMessage.h"
#include "model/LumoApiObject.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumo::cli {

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

/// The process's datastore, current object, web-view kit and log, while the tool converts. One at a time; it
/// lives as long as the command runs and is set anew for each conversion, so that nothing is carried over.
class Stage {
 public:
  Stage();
  ~Stage();
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  void set(Surroundings surroundings);

  /// The message texts that were logged since set().
  const std::vector<std::string>& log() const noexcept { return log_; }

 private:
  bool claims(const URL& url) const;

  Surroundings::WebView webView_;
  std::vector<std::string> log_;
};

}  // namespace lumo::cli
