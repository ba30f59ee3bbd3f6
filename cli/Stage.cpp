#include "cli/Stage.h"

#include "LumoApi/LumoApiCurrentObject.h"
#include "LumoApi/LumoApiLog.h"
#include "LumoApi/LumoWebViewKit.h"
#include "cli/Files.h"

#include <algorithm>
#include <utility>

namespace lumo::cli {

using namespace documents;

Stage::Stage(const std::optional<std::string>& store) {
  if (store) storeFile_ = std::make_shared<LumoApiFilePasteboard>(*store);
  LumoApiDatastore::instance().setPasteboard(storeFile_);
  LumoApiLog::setHandler([this](const LumoApiLog::Line& line) { log_.emplace_back(line.message); });
  LumoWebViewKit::setHandler({.claims = [this](const URL& url) { return claims(url); },
                              .message = [this](const URL&) { return webView_.message; }});
}

Stage::~Stage() {
  storeFile_.reset();
  LumoApiDatastore::instance().setPasteboard(nullptr);
  set({});
  LumoWebViewKit::removeHandler();
  LumoApiLog::removeHandler();
}

void Stage::set(documents::Surroundings surroundings) {
  LumoApiDatastore& store = LumoApiDatastore::instance();
  store.setValues(std::move(surroundings.values));
  if (storeFile_) record();  // a file that holds something else must not be replaced
  if (!storeFile_ || surroundings.apiLargeData) store.setApiLargeData(std::move(surroundings.apiLargeData));
  checkStore();
  store.setApiMessage(std::move(surroundings.apiMessage));
  LumoApiCurrentObject::set(std::move(surroundings.currentObject));
  webView_ = std::move(surroundings.webView);
  log_.clear();
}

LumoApiLargeDataPtr Stage::record() const {
  LumoApiLargeDataPtr held = LumoApiDatastore::instance().getApiLargeData();
  checkStore();
  return held;
}

void Stage::checkStore() const {
  const std::string error = storeFile_ ? storeFile_->lastError() : "";
  if (!error.empty()) throw FileError(error);
}

bool Stage::claims(const URL& url) const {
  return std::any_of(webView_.claims.begin(), webView_.claims.end(),
                     [&url](const std::string& prefix) { return url.absoluteString().starts_with(prefix); });
}

}  // namespace lumo::cli
