#pragma once

#include "LumoApi/LumoApiObject.h"

// One thread at a time may use an object of these, like every LumoApiObject.

/// A request for one of the messenger's extended services.
class LUMOAPI_EXPORT LumoApiExtraServiceObject : public LumoApiObject {
 public:
  /// Sent unchanged; absent is sent as empty.
  const std::optional<std::string>& serviceID() const noexcept { return serviceID_; }
  void setServiceID(std::optional<std::string> serviceID) noexcept { serviceID_ = std::move(serviceID); }

  /// The user's open identifier, sent in the user info; absent is sent as empty.
  const std::optional<std::string>& openID() const noexcept { return openID_; }
  void setOpenID(std::optional<std::string> openID) noexcept { openID_ = std::move(openID); }

  /// The other user's number, sent in the user info; absent is sent as empty.
  const std::optional<std::string>& toUin() const noexcept { return toUin_; }
  void setToUin(std::optional<std::string> toUin) noexcept { toUin_ = std::move(toUin); }

  /// The base of the user info when it is a dictionary; anything else is ignored.
  const std::optional<lumo::Value>& extraInfo() const noexcept { return extraInfo_; }
  void setExtraInfo(std::optional<lumo::Value> extraInfo) noexcept { extraInfo_ = std::move(extraInfo); }

  template <class Self>
  static auto fields(Self& self) {
    return std::tuple_cat(
        std::tuple(lumo::field("serviceID", self.serviceID_), lumo::field("openID", self.openID_),
                   lumo::field("toUin", self.toUin_), lumo::field("extraInfo", self.extraInfo_)),
        LumoApiObject::fields(self));
  }

 private:
  std::optional<std::string> serviceID_;
  std::optional<std::string> openID_;
  std::optional<std::string> toUin_;
  std::optional<lumo::Value> extraInfo_;
};

/// A request through the messenger's common channel.
class LUMOAPI_EXPORT LumoApiCommonServiceObject : public LumoApiObject {
 public:
  /// Sent unchanged; absent is sent as empty.
  const std::optional<std::string>& serviceID() const noexcept { return serviceID_; }
  void setServiceID(std::optional<std::string> serviceID) noexcept { serviceID_ = std::move(serviceID); }

  /// The user's open identifier, sent in the user info; absent is sent as empty.
  const std::optional<std::string>& openID() const noexcept { return openID_; }
  void setOpenID(std::optional<std::string> openID) noexcept { openID_ = std::move(openID); }

  /// The base of the user info when it is a dictionary; anything else is ignored.
  const std::optional<lumo::Value>& extendInfo() const noexcept { return extendInfo_; }
  void setExtendInfo(std::optional<lumo::Value> extendInfo) noexcept { extendInfo_ = std::move(extendInfo); }

  template <class Self>
  static auto fields(Self& self) {
    return std::tuple_cat(
        std::tuple(lumo::field("serviceID", self.serviceID_), lumo::field("openID", self.openID_),
                   lumo::field("extendInfo", self.extendInfo_)),
        LumoApiObject::fields(self));
  }

 private:
  std::optional<std::string> serviceID_;
  std::optional<std::string> openID_;
  std::optional<lumo::Value> extendInfo_;
};
