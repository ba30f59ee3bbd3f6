#pragma once

#include "LumoApi/LumoApiObject.h"

// One thread at a time may use an object of these, like every LumoApiObject.

/// Asks to bind a group to the app.
class LUMOAPI_EXPORT LumoApiThirdAppBindGroupObject : public LumoApiObject {
 public:
  /// The union identifier, sent unchanged (an empty one too).
  const std::optional<std::string>& unionID() const noexcept { return unionID_; }
  void setUnionID(std::optional<std::string> unionID) noexcept { unionID_ = std::move(unionID); }

  /// Shown instead of the app's own name.
  const std::optional<std::string>& appDisplayName() const noexcept { return appDisplayName_; }
  void setAppDisplayName(std::optional<std::string> appDisplayName) noexcept {
    appDisplayName_ = std::move(appDisplayName);
  }

  template <class Self>
  static auto fields(Self& self) {
    return std::tuple_cat(std::tuple(lumo::field("unionID", self.unionID_),
                                     lumo::field("appDisplayName", self.appDisplayName_)),
                          LumoApiObject::fields(self));
  }

 private:
  std::optional<std::string> unionID_;
  std::optional<std::string> appDisplayName_;
};

/// Asks to let the user join one of the app's groups.
class LUMOAPI_EXPORT LumoApiThirdAppJoinGroupObject : public LumoApiObject {
 public:
  /// The union identifier, sent unchanged unless it is empty.
  const std::optional<std::string>& unionID() const noexcept { return unionID_; }
  void setUnionID(std::optional<std::string> unionID) noexcept { unionID_ = std::move(unionID); }

  template <class Self>
  static auto fields(Self& self) {
    return std::tuple_cat(std::tuple(lumo::field("unionID", self.unionID_)), LumoApiObject::fields(self));
  }

 private:
  std::optional<std::string> unionID_;
};

namespace lumo {

/// A request about a group-pro, made and signed by whoever built the object.
class LUMOAPI_EXPORT GroupProObject : public LumoApiObject {
 public:
  /// The whole query of the request.
  const std::optional<StringDictionary>& queryDictionary() const noexcept { return queryDictionary_; }
  void setQueryDictionary(std::optional<StringDictionary> queryDictionary) noexcept {
    queryDictionary_ = std::move(queryDictionary);
  }

  /// The signature of the query. Required.
  const std::optional<std::string>& signString() const noexcept { return signString_; }
  void setSignString(std::optional<std::string> signString) noexcept { signString_ = std::move(signString); }

  template <class Self>
  static auto fields(Self& self) {
    return std::tuple_cat(
        std::tuple(field("queryDictionary", self.queryDictionary_), field("signString", self.signString_)),
        LumoApiObject::fields(self));
  }

 protected:
  GroupProObject() = default;

 private:
  std::optional<StringDictionary> queryDictionary_;
  std::optional<std::string> signString_;
};

}  // namespace lumo

/// Asks to create a group-pro.
class LUMOAPI_EXPORT LumoApiCreateLumoGroupProObject : public lumo::GroupProObject {};

/// Asks to join a group-pro.
class LUMOAPI_EXPORT LumoApiJoinLumoGroupProObject : public lumo::GroupProObject {};
