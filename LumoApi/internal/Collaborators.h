#pragma once

#include "LumoApi/LumoApiDatastore.h"
#include "LumoApi/LumoApiLargeData.h"
#include "LumoApi/LumoApiLog.h"
#include "LumoApi/LumoApiMessage.h"
#include "LumoApi/LumoApiObject.h"
#include "LumoApi/URL.h"

#include <initializer_list>
#include <memory>
#include <optional>
#include <string_view>

namespace lumo {

using StoreValues = std::shared_ptr<const LumoApiDatastore::Values>;

/// What a conversion finds around it, and where it leaves its record and its log lines: a datastore, a
/// current object, a web-view kit and a log. Of the whole process for the public operations, or of one
/// conversion.
class Collaborators {
 public:
  Collaborators() = default;
  Collaborators(const Collaborators&) = delete;
  Collaborators& operator=(const Collaborators&) = delete;

  /// The store's values; never null.
  virtual StoreValues values() const noexcept = 0;
  virtual LumoApiLargeDataPtr record() const noexcept = 0;
  /// False where the record could not be handed over.
  virtual bool setRecord(LumoApiLargeDataPtr record) noexcept = 0;
  virtual std::optional<LumoApiMessage> storedMessage() const noexcept = 0;
  virtual std::shared_ptr<const LumoApiObject> currentObject() const noexcept = 0;

  /// Whether the web-view kit claims the URL, and the message that it then builds.
  virtual bool claims(const URL& url) const noexcept = 0;
  virtual std::optional<LumoApiMessage> messageOfKit(const URL& url) const noexcept = 0;

  /// Whether anybody listens, for arguments that cost something to make.
  virtual bool isListening() const noexcept = 0;
  /// Logs a line, as LumoApiLog does.
  virtual void log(std::string_view format, std::initializer_list<LumoApiLog::Argument> arguments = {},
                   int line = __builtin_LINE()) noexcept = 0;

 protected:
  ~Collaborators() = default;
};

/// The process's own.
Collaborators& processCollaborators() noexcept;

}  // namespace lumo
