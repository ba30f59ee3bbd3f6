#pragma once

#include "LumoApi/Export.h"
#include "LumoApi/LumoApiLargeData.h"
#include "LumoApi/LumoApiMessage.h"
#include "LumoApi/Value.h"

#include <concepts>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

/// Where the datastore keeps its large-data record. By default that is the process's memory; another
/// pasteboard lets two processes meet. Called by several threads at once.
class LUMOAPI_EXPORT LumoApiPasteboard {
 public:
  virtual ~LumoApiPasteboard();

  /// Replaces the record (null: none). False where that was not possible; the record from before then stays.
  virtual bool write(LumoApiLargeDataPtr record) noexcept = 0;

  /// The record that the pasteboard holds at this moment; null where there is none, or none that can be read.
  virtual LumoApiLargeDataPtr read() noexcept = 0;
};

/// What the converter needs to know of its app and of the installed messenger, and the large-data record that
/// travels beside a launch URL: one store for the whole process.
///
/// The app sets the values; the converter reads each of them once in a conversion. Every operation may be
/// called from any thread at any time. A record handed out is immutable and stays valid as long as it is
/// held.
class LUMOAPI_EXPORT LumoApiDatastore {
 public:
  /// What the app sets.
  struct Values {
    /// The URL scheme under which the messenger opens the app again.
    std::optional<std::string> scheme = std::nullopt;
    /// The app's display name.
    std::optional<std::string> appName = std::nullopt;
    /// The app's identifier.
    std::optional<std::string> appId = std::nullopt;
    /// The user's open identifier for the app.
    std::optional<std::string> openId = std::nullopt;
    /// The user's number in the messenger: a string or a number, sent as its text.
    std::optional<lumo::Value> uin = std::nullopt;
    /// The installed messenger reads a text share's object from the URL …
    bool isLumoSupportUrlForShareText = false;
    /// … any other request's object from the URL instead of from the large-data record …
    bool isLumoSupportUrlInsteadPastedboard = false;
    /// … and the general pasteboard.
    bool isLumoSupportApiGeneralPastboard = false;
  };

  /// The one store of the process.
  static LumoApiDatastore& instance() noexcept;

  /// All values as they are at this moment; never null.
  std::shared_ptr<const Values> values() const noexcept;
  /// Replaces all values at once.
  void setValues(Values values);

  // Single values. A setter replaces its own value and keeps all others, whoever sets them meanwhile.

  /// The URL scheme under which the messenger opens the app again.
  std::optional<std::string> scheme() const { return values()->scheme; }
  void setScheme(std::optional<std::string> scheme) { set(&Values::scheme, std::move(scheme)); }

  /// The app's display name.
  std::optional<std::string> appName() const { return values()->appName; }
  void setAppName(std::optional<std::string> appName) { set(&Values::appName, std::move(appName)); }

  /// The app's identifier.
  std::optional<std::string> appId() const { return values()->appId; }
  void setAppId(std::optional<std::string> appId) { set(&Values::appId, std::move(appId)); }

  /// The user's open identifier for the app.
  std::optional<std::string> openId() const { return values()->openId; }
  void setOpenId(std::optional<std::string> openId) { set(&Values::openId, std::move(openId)); }

  /// The user's number in the messenger.
  std::optional<lumo::Value> uin() const { return values()->uin; }
  void setUin(std::optional<lumo::Value> uin) { set(&Values::uin, std::move(uin)); }

  /// Whether the messenger reads a text share's object from the URL.
  bool isLumoSupportUrlForShareText() const noexcept { return values()->isLumoSupportUrlForShareText; }
  void setIsLumoSupportUrlForShareText(bool is) { set(&Values::isLumoSupportUrlForShareText, is); }

  /// Whether the messenger reads any other request's object from the URL.
  bool isLumoSupportUrlInsteadPastedboard() const noexcept {
    return values()->isLumoSupportUrlInsteadPastedboard;
  }
  void setIsLumoSupportUrlInsteadPastedboard(bool is) {
    set(&Values::isLumoSupportUrlInsteadPastedboard, is);
  }

  /// Whether the messenger reads the general pasteboard.
  bool isLumoSupportApiGeneralPastboard() const noexcept {
    return values()->isLumoSupportApiGeneralPastboard;
  }
  void setIsLumoSupportApiGeneralPastboard(bool is) { set(&Values::isLumoSupportApiGeneralPastboard, is); }

  /// Replaces the large-data record (null: none). False where the pasteboard could not take it; the one in
  /// memory always can.
  bool setApiLargeData(LumoApiLargeDataPtr record) noexcept;
  /// The large-data record at this moment; null where there is none.
  LumoApiLargeDataPtr getApiLargeData() const noexcept;

  /// The message held for the messenger's answer.
  void setApiMessage(std::optional<LumoApiMessage> message);
  /// The message held for the messenger's answer; null where there is none.
  template <std::same_as<LumoApiMessage> Message>
  std::optional<Message> getApiMessageWithClass() const noexcept {
    return apiMessage();
  }

  /// Keeps the record elsewhere from now on; null: in memory again. The record is not carried over.
  void setPasteboard(std::shared_ptr<LumoApiPasteboard> pasteboard) noexcept;

  LumoApiDatastore(const LumoApiDatastore&) = delete;
  LumoApiDatastore& operator=(const LumoApiDatastore&) = delete;

 private:
  LumoApiDatastore() noexcept = default;
  template <class T>
  void set(T Values::*member, T value);
  std::optional<LumoApiMessage> apiMessage() const noexcept;
  std::shared_ptr<LumoApiPasteboard> pasteboard() const noexcept;

  mutable std::mutex lock_;
  std::shared_ptr<const Values> values_;  // null until they are set
  std::optional<LumoApiMessage> message_;
  std::shared_ptr<LumoApiPasteboard> pasteboard_;  // null: record_ is the pasteboard
  LumoApiLargeDataPtr record_;
};

template <class T>
void LumoApiDatastore::set(T Values::*member, T value) {
  auto replacement = std::make_shared<Values>();
  std::shared_ptr<const Values> former;  // destroyed after the lock is released
  const std::lock_guard guard(lock_);
  if (values_) *replacement = *values_;
  (*replacement).*member = std::move(value);
  former = std::exchange(values_, std::move(replacement));
}
