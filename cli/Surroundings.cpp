#include "cli/Surroundings.h"

#include "model/LumoApiCurrentObject.h"
#include "model/LumoApiLog.h"
#include "model/LumoWebViewKit.h"

#include <algorithm>
#include <utility>

namespace lumo::cli {

Stage::Stage() {
  LumoApiLog::setHandler([this](const LumoApiLog::Line& line) { log_.emplace_back(line.message); });
  LumoWebViewKit::setHandler({.claims = [this](const URL& url) { return claims(url); },
                              .message = [this](const URL&) { return webView_.message; }});
}

Stage::~Stage() {
  set({});
  LumoWebViewKit::removeHandler();
  LumoApiLog::removeHandler();
}

void Stage::set(Surroundings surroundings) {
  LumoApiDatastore& store = LumoApiDatastore::instance();
  store.setValues(std::move(surroundings.values));
  store.setApiLargeData(std::move(surroundings.apiLargeData));
  store.setApiMessage(std::move(surroundings.apiMessage));
  LumoApiCurrentObject::set(std::move(surroundings.currentObject));
  webView_ = std::move(surroundings.webView);
  log_.clear();
}

bool Stage::claims(const URL& url) const {
  return std::any_of(webView_.claims.begin(), webView_.claims.end(),
                     [&url](const std::string& prefix) { return url.absoluteString().starts_with(prefix); });
}

}  // namespace lumo::cli
