#pragma once

#include "LumoApi/Export.h"
#include "LumoApi/LumoApiLargeData.h"
#include "LumoApi/LumoApiMessage.h"
#include "LumoApi/Value.h"

#include <concepts>
#include <memory>
#include <optional>
#include <string>

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
  void setScheme(std::optional<std::string> scheme);

  /// The app's display name.
  std::optional<std::string> appName() const { return values()->appName; }
  void setAppName(std::optional<std::string> appName);

  /// The app's identifier.
  std::optional<std::string> appId() const { return values()->appId; }
  void setAppId(std::optional<std::string> appId);

  /// The user's open identifier for the app.
  std::optional<std::string> openId() const { return values()->openId; }
  void setOpenId(std::optional<std::string> openId);

  /// The user's number in the messenger.
  std::optional<lumo::Value> uin() const { return values()->uin; }
  void setUin(std::optional<lumo::Value> uin);

  /// Whether the messenger reads a text share's object from the URL.
  bool isLumoSupportUrlForShareText() const noexcept { return values()->isLumoSupportUrlForShareText; }
  void setIsLumoSupportUrlForShareText(bool is);

  /// Whether the messenger reads any other request's object from the URL.
  bool isLumoSupportUrlInsteadPastedboard() const noexcept {
    return values()->isLumoSupportUrlInsteadPastedboard;
  }
  void setIsLumoSupportUrlInsteadPastedboard(bool is);

  /// Whether the messenger reads the general pasteboard.
  bool isLumoSupportApiGeneralPastboard() const noexcept {
    return values()->isLumoSupportApiGeneralPastboard;
  }
  void setIsLumoSupportApiGeneralPastboard(bool is);

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
  std::optional<LumoApiMessage> apiMessage() const noexcept;
};
