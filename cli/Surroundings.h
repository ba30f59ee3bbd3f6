#pragma once

#include "model/LumoApiDatastore.h"
#include "model/LumoApiFilePasteboard.h"
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
/// lives as long as the command runs and is set anew for each conversion, so that nothing is carried over but
/// the large-data record that a store file holds.
class Stage {
 public:
  /// With a store, the large-data record lives in that file, where other processes meet it.
  explicit Stage(const std::optional<std::string>& store = std::nullopt);
  ~Stage();
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  /// A record among the surroundings replaces the store's; without one, a store file keeps its own. This and
  /// what follows throw a FileError where the store file could not be read or written.
  void set(Surroundings surroundings);
  /// The record that the store holds now.
  LumoApiLargeDataPtr record() const;
  /// To be called after a conversion, to which a store that failed was one without a record.
  void checkStore() const;

  /// The message texts that were logged since set().
  const std::vector<std::string>& log() const noexcept { return log_; }

 private:
  bool claims(const URL& url) const;

  std::shared_ptr<LumoApiFilePasteboard> storeFile_;
  Surroundings::WebView webView_;
  std::vector<std::string> log_;
};

}  // namespace lumo::cli
