#pragma once

#include "LumoApi/internal/Collaborators.h"
#include "documents/Surroundings.h"

#include <string>
#include <vector>

namespace lumo::documents {

/// The collaborators of one document's conversion: what its document says, and nothing of the process's.
class OwnCollaborators final : public Collaborators {
 public:
  /// The record lives in the pasteboard, where there is one, and that of the surroundings is not looked at.
  OwnCollaborators(Surroundings surroundings, LumoApiPasteboard* pasteboard);

  StoreValues values() const noexcept override;
  LumoApiLargeDataPtr record() const noexcept override;
  bool setRecord(LumoApiLargeDataPtr record) noexcept override;
  std::optional<LumoApiMessage> storedMessage() const noexcept override;
  std::shared_ptr<const LumoApiObject> currentObject() const noexcept override;
  bool claims(const URL& url) const noexcept override;
  std::optional<LumoApiMessage> messageOfKit(const URL& url) const noexcept override;
  bool isListening() const noexcept override { return true; }
  void log(std::string_view format, std::initializer_list<LumoApiLog::Argument> arguments,
           int line) noexcept override;

  /// The message texts that were logged; the caller may move them away.
  std::vector<std::string>& log() noexcept { return log_; }

 private:
  Surroundings surroundings_;
  LumoApiPasteboard* pasteboard_;
  std::vector<std::string> log_;
};

}  // namespace lumo::documents
