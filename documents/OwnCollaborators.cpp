#include "documents/OwnCollaborators.h"

#include "model/LogMessage.h"

#include <algorithm>
#include <utility>

namespace lumo::documents {

OwnCollaborators::OwnCollaborators(Surroundings surroundings, LumoApiPasteboard* pasteboard)
    : surroundings_(std::move(surroundings)), pasteboard_(pasteboard) {}

// The conversion ends before its collaborators do, so the values need no owner of their own.
StoreValues OwnCollaborators::values() const noexcept {
  return {std::shared_ptr<void>(), &surroundings_.values};
}

LumoApiLargeDataPtr OwnCollaborators::record() const noexcept {
  return pasteboard_ ? pasteboard_->read() : surroundings_.apiLargeData;
}

bool OwnCollaborators::setRecord(LumoApiLargeDataPtr record) noexcept {
  if (pasteboard_) return pasteboard_->write(std::move(record));
  surroundings_.apiLargeData = std::move(record);
  return true;
}

std::optional<LumoApiMessage> OwnCollaborators::storedMessage() const noexcept {
  return surroundings_.apiMessage;
}

std::shared_ptr<const LumoApiObject> OwnCollaborators::currentObject() const noexcept {
  return surroundings_.currentObject;
}

bool OwnCollaborators::claims(const URL& url) const noexcept {
  return std::any_of(surroundings_.webView.claims.begin(), surroundings_.webView.claims.end(),
                     [&url](const std::string& prefix) { return url.absoluteString().starts_with(prefix); });
}

std::optional<LumoApiMessage> OwnCollaborators::messageOfKit(const URL&) const noexcept {
  return surroundings_.webView.message;
}

void OwnCollaborators::log(std::string_view format, std::initializer_list<LumoApiLog::Argument> arguments,
                           int /*line*/) noexcept {
  try {
    log_.push_back(logMessage(format, arguments));
  } catch (...) {  // a log line is never worth a conversion
  }
}

}  // namespace lumo::documents
