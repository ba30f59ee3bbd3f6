#pragma once

#include "LumoApi/LumoApiObject.h"

// One thread at a time may use such an object, like every LumoApiObject.

/// The messenger's answer to an earlier request.
class LUMOAPI_EXPORT LumoApiResultObject : public LumoApiObject {
 public:
  /// The error value as the messenger wrote it, not decoded and not converted to a number.
  const std::optional<std::string>& error() const noexcept { return error_; }
  void setError(std::optional<std::string> error) noexcept { error_ = std::move(error); }

  /// The readable description.
  const std::optional<std::string>& errorDescription() const noexcept { return errorDescription_; }
  void setErrorDescription(std::optional<std::string> errorDescription) noexcept {
    errorDescription_ = std::move(errorDescription);
  }

  /// Further information about the error.
  const std::optional<std::string>& extendInfo() const noexcept { return extendInfo_; }
  void setExtendInfo(std::optional<std::string> extendInfo) noexcept { extendInfo_ = std::move(extendInfo); }

  /// The whole query of the answer, with raw (still percent-encoded) values.
  const std::optional<lumo::StringDictionary>& otherInfo() const noexcept { return otherInfo_; }
  void setOtherInfo(std::optional<lumo::StringDictionary> otherInfo) noexcept {
    otherInfo_ = std::move(otherInfo);
  }

  template <class Self>
  static auto fields(Self& self) {
    return std::tuple_cat(
        std::tuple(lumo::field("error", self.error_), lumo::field("errorDescription", self.errorDescription_),
                   lumo::field("extendInfo", self.extendInfo_), lumo::field("otherInfo", self.otherInfo_)),
        LumoApiObject::fields(self));
  }

 private:
  std::optional<std::string> error_;
  std::optional<std::string> errorDescription_;
  std::optional<std::string> extendInfo_;
  std::optional<lumo::StringDictionary> otherInfo_;
};
