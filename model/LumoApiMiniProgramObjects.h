#pragma once

#include "LumoApi/LumoApiObject.h"

// One thread at a time may use an object of these, like every LumoApiObject.

/// Asks the messenger to launch a mini-program.
class LUMOAPI_EXPORT LumoApiLaunchMiniProgramObject : public LumoApiObject {
 public:
  /// Required, at least 1 character; sent unchanged.
  const std::optional<std::string>& miniAppID() const noexcept { return miniAppID_; }
  void setMiniAppID(std::optional<std::string> miniAppID) noexcept { miniAppID_ = std::move(miniAppID); }

  /// The path to open inside the mini-program.
  const std::optional<std::string>& miniPath() const noexcept { return miniPath_; }
  void setMiniPath(std::optional<std::string> miniPath) noexcept { miniPath_ = std::move(miniPath); }

  /// Sent untested.
  std::uint64_t miniprogramType() const noexcept { return miniprogramType_; }
  void setMiniprogramType(std::uint64_t miniprogramType) noexcept { miniprogramType_ = miniprogramType; }

  template <class Self>
  static auto fields(Self& self) {
    return std::tuple_cat(
        std::tuple(lumo::field("miniAppID", self.miniAppID_), lumo::field("miniPath", self.miniPath_),
                   lumo::field("miniprogramType", self.miniprogramType_)),
        LumoApiObject::fields(self));
  }

 private:
  std::optional<std::string> miniAppID_;
  std::optional<std::string> miniPath_;
  std::uint64_t miniprogramType_ = 0;
};

/// Made for a launch of the app from a mini-app inside the messenger.
class LUMOAPI_EXPORT LumoApiMiniProgramLaunchObject : public LumoApiObject {
 public:
  /// A new object with that parameter.
  static std::shared_ptr<LumoApiMiniProgramLaunchObject> newWithAppParameter(
      std::optional<std::string> appParameter);

  /// The launch parameter.
  const std::optional<std::string>& appParameter() const noexcept { return appParameter_; }
  void setAppParameter(std::optional<std::string> appParameter) noexcept {
    appParameter_ = std::move(appParameter);
  }

  template <class Self>
  static auto fields(Self& self) {
    return std::tuple_cat(std::tuple(lumo::field("appParameter", self.appParameter_)),
                          LumoApiObject::fields(self));
  }

 private:
  std::optional<std::string> appParameter_;
};
