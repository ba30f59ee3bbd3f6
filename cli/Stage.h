#pragma once

#include "LumoApi/LumoApiFilePasteboard.h"
#include "LumoApi/LumoApiLargeData.h"
#include "documents/Surroundings.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumo::cli {

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
  void set(documents::Surroundings surroundings);
  /// The record that the store holds now.
  LumoApiLargeDataPtr record() const;
  /// To be called after a conversion, to which a store that failed was one without a record.
  void checkStore() const;

  /// The message texts that were logged since set().
  const std::vector<std::string>& log() const noexcept { return log_; }

 private:
  bool claims(const URL& url) const;

  std::shared_ptr<LumoApiFilePasteboard> storeFile_;
  documents::Surroundings::WebView webView_;
  std::vector<std::string> log_;
};

}  // namespace lumo::cli
