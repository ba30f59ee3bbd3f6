#include "LumoApi/internal/Collaborators.h"

#include "LumoApi/LumoApiCurrentObject.h"
#include "LumoApi/LumoWebViewKit.h"

#include <utility>

namespace lumo {

namespace {

class OfTheProcess final : public Collaborators {
 public:
  StoreValues values() const noexcept override { return LumoApiDatastore::instance().values(); }

  LumoApiLargeDataPtr record() const noexcept override {
    return LumoApiDatastore::instance().getApiLargeData();
  }

  bool setRecord(LumoApiLargeDataPtr record) noexcept override {
    return LumoApiDatastore::instance().setApiLargeData(std::move(record));
  }

  std::optional<LumoApiMessage> storedMessage() const noexcept override {
    return LumoApiDatastore::instance().getApiMessageWithClass<LumoApiMessage>();
  }

  std::shared_ptr<const LumoApiObject> currentObject() const noexcept override {
    return LumoApiCurrentObject::get();
  }

  bool claims(const URL& url) const noexcept override {
    return LumoWebViewKit::canHanleOpenUrlFromSafari(url);
  }

  std::optional<LumoApiMessage> messageOfKit(const URL& url) const noexcept override {
    return LumoWebViewKit::messageWithSafariUrl(url);
  }

  bool isListening() const noexcept override { return LumoApiLog::isListening(); }

  void log(std::string_view format, std::initializer_list<LumoApiLog::Argument> arguments,
           int line) noexcept override {
    LumoApiLog::log(format, arguments, line);
  }
};

}  // namespace

Collaborators& processCollaborators() noexcept {
  static constinit OfTheProcess collaborators;
  return collaborators;
}

}  // namespace lumo
