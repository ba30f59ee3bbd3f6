#pragma once

#include "LumoApi/Data.h"
#include "LumoApi/Export.h"
#include "LumoApi/LumoApiCurrentObject.h"
#include "LumoApi/LumoApiDatastore.h"
#include "LumoApi/LumoApiFilePasteboard.h"
#include "LumoApi/LumoApiLog.h"
#include "LumoApi/LumoApiModel.h"
#include "LumoApi/LumoApiQueryDictionary.h"
#include "LumoApi/LumoApiRefusal.h"
#include "LumoApi/LumoApiURLDecoder.h"
#include "LumoApi/LumoApiURLEncoder.h"
#include "LumoApi/LumoOpenApiUtility.h"
#include "LumoApi/LumoWebViewKit.h"
#include "LumoApi/URL.h"
#include "LumoApi/Version.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Turns messages into launch URLs and URLs that opened the app into messages.
///
/// Every operation is class-level, keeps no state and reports a refusal by a null result, never by an
/// exception, not even where memory is exhausted. A refusal leaves the datastore and the object as they were;
/// two conversions change their object, as their classes say (an avatar picture's `data`, a feed post's
/// `imageDataArray`). Any thread may call at any time; a message, an object or a query dictionary may be used
/// by one thread at a time. The current object is the calling thread's.
///
/// Null results: a URL, text or message that is `std::nullopt`.
class LUMOAPI_EXPORT LumoApiMessageAndUrlConverter {
 public:
  // --- From a message to its launch URL
  // -------------------------------------------------------------------------

  /// The launch URL of the message. Checked are, in this order: the message (null without a log line), its
  /// object, its card where one is announced, the title (at most 128 UTF-16 code units) and the description
  /// (at most 512); then the object's class is logged and the converter of its class does the rest. An object
  /// of an unknown class gives null.
  static std::optional<lumo::URL> urlWithMessage(const std::optional<LumoApiMessage>& message) noexcept;
  /// The same, and the reason of a null result in `refusal` (its code None where there is a URL); it may be
  /// null.
  static std::optional<lumo::URL> urlWithMessage(const std::optional<LumoApiMessage>& message,
                                                 LumoApiRefusal* refusal) noexcept;

  // --- From a URL that opened the app to its message
  // ---------------------------------------------------------------
  //
  // What such a URL says is unauthenticated: any app on the device may open another one with any URL.

  /// The message of a URL that opened the app: a request of the messenger to show (type 1) or to pick (type
  /// 3) content, its response to an earlier request (type 6), or a launch from a mini-app (type 1). The
  /// web-view kit may claim the URL first. Null for a URL without host or query pair, for an unknown host
  /// (which is logged) and for an unknown path of a request. The same as messageWithUrlNoClipboard(): the
  /// stored message is never read.
  static std::optional<LumoApiMessage> messageWithUrl(const std::optional<lumo::URL>& url) noexcept;
  /// The same, and the reason of a null result in `refusal` (its code None where there is a message); it may
  /// be null.
  static std::optional<LumoApiMessage> messageWithUrl(const std::optional<lumo::URL>& url,
                                                      LumoApiRefusal* refusal) noexcept;
  /// The same as messageWithUrl().
  static std::optional<LumoApiMessage> messageWithUrlNoClipboard(
      const std::optional<lumo::URL>& url) noexcept;

  /// The message that the datastore holds, for a URL whose query has "NeedToGetData" with exactly the value
  /// "true", whatever its host; null for every other URL. The web-view kit may claim the URL first.
  static std::optional<LumoApiMessage> messageWithUrlUsedClipboard(
      const std::optional<lumo::URL>& url) noexcept;
  /// The same with the reason of a null result.
  static std::optional<LumoApiMessage> messageWithUrlUsedClipboard(const std::optional<lumo::URL>& url,
                                                                   LumoApiRefusal* refusal) noexcept;

  /// The launch from a mini-app: a LumoApiMiniProgramLaunchObject with the decoded "appParameter" (empty
  /// where the query has none, null where its escapes are bad). Null only where memory is exhausted.
  static std::optional<LumoApiMessage> messageWithLaunchFromLumoMiniApp(
      const LumoApiURLDecoder& decoder) noexcept;
  /// A request of the messenger, by the path: "/pick" gives a message without object, "/view" one with the
  /// object of getObjectByUrl(), which may be null; any other path gives null.
  static std::optional<LumoApiMessage> messageWithRequestFromLumo(const LumoApiURLDecoder& decoder) noexcept;
  /// The content object that the query describes, bytes taken from the datastore's large-data record; null
  /// for a "file_type" that is absent or unknown. Fields that are absent or do not decode are null. A link is
  /// parsed and never opened or resolved.
  static std::shared_ptr<LumoApiObject> getObjectByUrl(const LumoApiURLDecoder& decoder) noexcept;
  /// The response of the messenger: a LumoApiResultObject. Null only where memory is exhausted.
  static std::optional<LumoApiMessage> messageWithResponseFromLumo(const LumoApiURLDecoder& decoder) noexcept;

  // --- One converter per kind of content
  // ------------------------------------------------------------------------
  //
  // What urlWithMessage() calls by the object's class. `type` is the message type, `kivaObj` the card or
  // null. The limits of title and description are urlWithMessage()'s and not checked here.

  /// A text.
  static std::optional<lumo::URL> urlWithTextObject(const LumoApiTextObject& object, std::int32_t type,
                                                    const LumoApiKivaObject* kivaObj = nullptr) noexcept;
  /// A link of whatever class.
  static std::optional<lumo::URL> urlWithURLObject(const LumoApiURLObject& object, std::int32_t type,
                                                   const LumoApiKivaObject* kivaObj = nullptr) noexcept;
  /// A preview with a text or a picture.
  static std::optional<lumo::URL> urlWithCommonContentObject(
      const LumoApiCommonContentObject& object, std::int32_t type,
      const LumoApiKivaObject* kivaObj = nullptr) noexcept;
  /// Data of the app's own.
  static std::optional<lumo::URL> urlWithExtendObject(const LumoApiExtendObject& object, std::int32_t type,
                                                      const LumoApiKivaObject* kivaObj = nullptr) noexcept;
  /// A picture by its bytes.
  static std::optional<lumo::URL> urlWithImageObject(const LumoApiImageObject& object, std::int32_t type,
                                                     const LumoApiKivaObject* kivaObj = nullptr) noexcept;
  /// A picture by its URL.
  static std::optional<lumo::URL> urlWithWebImageObject(const LumoApiWebImageObject& object,
                                                        std::int32_t type) noexcept;
  /// A file.
  static std::optional<lumo::URL> urlWithFileObject(const LumoApiFileObject& object, std::int32_t type,
                                                    const LumoApiKivaObject* kivaObj = nullptr) noexcept;
  /// A profile picture, which may be re-encoded in the object.
  static std::optional<lumo::URL> urlWithImageObjectForAvatar(LumoApiImageForLumoAvatarObject& object,
                                                              std::int32_t type) noexcept;
  /// A moving profile picture.
  static std::optional<lumo::URL> urlWithVideoObjectForAvatar(const LumoApiVideoForLumoAvatarObject& object,
                                                              std::int32_t type) noexcept;
  /// Pictures for the face collection.
  static std::optional<lumo::URL> urlWithImageObjectForFaceCollection(
      const LumoApiImageArrayForFaceCollectionObject& object, std::int32_t type) noexcept;
  /// A check of the app's authorization.
  static std::optional<lumo::URL> urlWithAuthObject(const LumoApiAuthObject& object,
                                                    std::int32_t type) noexcept;
  /// Pictures for the social feed, whose list may be cut in the object.
  static std::optional<lumo::URL> urlWithImageArrayForNimboObject(LumoApiImageArrayForNimboObject& object,
                                                                  std::int32_t type) noexcept;
  /// A video for the social feed.
  static std::optional<lumo::URL> urlWithVideoForNimboObject(const LumoApiVideoForNimboObject& object,
                                                             std::int32_t type) noexcept;
  /// One of the messenger's extra services.
  static std::optional<lumo::URL> urlWithExtraServiceObject(const LumoApiExtraServiceObject& object,
                                                            std::int32_t type) noexcept;
  /// A service by the common channel.
  static std::optional<lumo::URL> urlWithCommonServiceObject(const LumoApiCommonServiceObject& object,
                                                             std::int32_t type) noexcept;
  /// Binding a group to the app.
  static std::optional<lumo::URL> urlWithApiThirdAppBindGroupObject(
      const LumoApiThirdAppBindGroupObject& object, std::int32_t type) noexcept;
  /// Joining one of the app's groups.
  static std::optional<lumo::URL> urlWithApiThirdAppJoinGroupObject(
      const LumoApiThirdAppJoinGroupObject& object, std::int32_t type) noexcept;
  /// Creating a guild.
  static std::optional<lumo::URL> urlWithCreateGroupProObject(const LumoApiCreateLumoGroupProObject& object,
                                                              std::int32_t type) noexcept;
  /// Joining a guild.
  static std::optional<lumo::URL> urlWithJoinGroupProObject(const LumoApiJoinLumoGroupProObject& object,
                                                            std::int32_t type) noexcept;
  /// Launching a mini-program.
  static std::optional<lumo::URL> urlWithApiLaunchMiniProgramObject(
      const LumoApiLaunchMiniProgramObject& object, std::int32_t type) noexcept;

  // --- Fields of a query
  // ----------------------------------------------------------------------------------------
  //
  // Each replaces an entry of the same key. A null value, and a text that is not UTF-8, leaves the dictionary
  // as it was for that key.

  /// "title", "description" and "thirdAppDisplayName", each as base64. A null or empty `appName` is replaced
  /// by the datastore's.
  static void setTitle(std::optional<std::string_view> title, std::optional<std::string_view> description,
                       std::optional<std::string_view> appName, LumoApiQueryDictionary& queryItem) noexcept;
  /// The same with the datastore's `appName`.
  static void setTitle(std::optional<std::string_view> title, std::optional<std::string_view> description,
                       LumoApiQueryDictionary& queryItem) noexcept;
  /// "previewimageData": the base64 of the bytes.
  static void setPreviewImageData(const std::optional<lumo::Data>& previewImageData,
                                  LumoApiQueryDictionary& queryItem) noexcept;
  /// The key with the base64 of the string; a null key changes nothing.
  static void setString(std::optional<std::string_view> string, std::optional<std::string_view> key,
                        LumoApiQueryDictionary& queryItem) noexcept;
  /// The key with the base64 of the URL's absolute text; a null key changes nothing.
  static void setURL(const std::optional<lumo::URL>& url, std::optional<std::string_view> key,
                     LumoApiQueryDictionary& queryItem) noexcept;
  /// The URL's absolute text; null for null.
  static std::optional<std::string> smartURLString(const std::optional<lumo::URL>& url) noexcept;

  // --- The large-data record
  // ------------------------------------------------------------------------------------

  /// A record of what is not null: "previewimagedata", "file_data", "image_data_list" and "pasted_kiva_data"
  /// (the base64 of the card's text). Never null, save where memory is exhausted. Shares the bytes, copies
  /// none.
  static LumoApiLargeDataPtr setupDataWith(const std::optional<lumo::Data>& prevImageData,
                                           const std::optional<lumo::Data>& filedata,
                                           const std::optional<std::vector<lumo::Data>>& dataArray,
                                           const std::optional<std::string>& kivaData) noexcept;
  /// Hands the record of these parts to the datastore; an empty one is not handed over. False where it could
  /// not be: the pasteboard did not take it, or memory is exhausted.
  static bool setPasteBoardPrevImageData(const std::optional<lumo::Data>& prevImageData,
                                         const std::optional<lumo::Data>& filedata,
                                         const std::optional<std::vector<lumo::Data>>& dataArray,
                                         const std::optional<std::string>& kivaData) noexcept;
  /// Where the query's "objectlocation" is "url", writes the archived record into the query under
  /// "pasteboard" (empty for an empty record); hands it to the datastore otherwise. False where that could
  /// not be done.
  static bool setLargeDataWith(const std::optional<lumo::Data>& prevImageData,
                               const std::optional<lumo::Data>& filedata,
                               const std::optional<std::vector<lumo::Data>>& dataArray,
                               const std::optional<std::string>& kivaData,
                               LumoApiQueryDictionary& dic) noexcept;

  // --- Destinations
  // ---------------------------------------------------------------------------------------------
  //
  // One builder per destination in the messenger. `type` is the message type and `shareDestType` (or
  // `shareType`) the destination code: 1 selects the sibling messenger app where a destination has two
  // schemes.

  /// Adds the common keys: the share or message type, the datastore's `openId` and `uin`, its general
  /// pasteboard flag, and the `cflag` of the calling thread's current object.
  static void updateQueryItemInfo(LumoApiQueryDictionary& queryItem, std::int32_t type,
                                  std::uint64_t shareDestType) noexcept;

  // With the common keys, which are added to the caller's dictionary; `path` begins with "/".
  /// Sharing to a contact.
  static std::optional<lumo::URL> urlWithQueryItem(LumoApiQueryDictionary& queryItem, std::int32_t type,
                                                   std::uint64_t shareDestType) noexcept;
  /// The profile picture, still or moving by its path.
  static std::optional<lumo::URL> urlWithQueryItemForAvatar(LumoApiQueryDictionary& queryItem,
                                                            std::int32_t type, std::uint64_t shareDestType,
                                                            std::string_view path) noexcept;
  /// Checking the app's authorization.
  static std::optional<lumo::URL> urlWithQueryItemForAuth(LumoApiQueryDictionary& queryItem,
                                                          std::int32_t type, std::uint64_t shareDestType,
                                                          std::string_view path) noexcept;
  /// The face collection.
  static std::optional<lumo::URL> urlWithQueryItemForFaceCollection(LumoApiQueryDictionary& queryItem,
                                                                    std::int32_t type,
                                                                    std::uint64_t shareDestType) noexcept;
  // Without.
  /// An extra service.
  static std::optional<lumo::URL> urlWithQueryItemForExtraService(const LumoApiQueryDictionary& queryItem,
                                                                  std::int32_t type,
                                                                  std::uint64_t shareType) noexcept;
  /// The common channel.
  static std::optional<lumo::URL> urlWithQueryItemForCommonService(const LumoApiQueryDictionary& queryItem,
                                                                   std::int32_t type,
                                                                   std::uint64_t shareType) noexcept;
  /// A mini-program.
  static std::optional<lumo::URL> urlWithQueryItemForLaunchMiniProgram(
      const LumoApiQueryDictionary& queryItem, std::int32_t type, std::uint64_t shareType) noexcept;
  /// Binding a group.
  static std::optional<lumo::URL> urlWithQueryItemForThirdAppBindGroup(
      const LumoApiQueryDictionary& queryItem, std::int32_t type, std::uint64_t shareType) noexcept;
  /// Joining a group.
  static std::optional<lumo::URL> urlWithQueryItemForThirdAppJoinBroup(  // sic
      const LumoApiQueryDictionary& queryItem, std::int32_t type, std::uint64_t shareType) noexcept;
  /// Adding a friend.
  static std::optional<lumo::URL> urlWithQueryItemForAddFriend(const LumoApiQueryDictionary& queryItem,
                                                               std::int32_t type,
                                                               std::uint64_t shareType) noexcept;
  /// Binding a group to a game.
  static std::optional<lumo::URL> urlWithQueryItemForGameBindingGroup(const LumoApiQueryDictionary& queryItem,
                                                                      std::int32_t type,
                                                                      std::uint64_t shareType) noexcept;
  /// Showing a card.
  static std::optional<lumo::URL> urlWithQueryItemForJoinBroup(  // sic
      const LumoApiQueryDictionary& queryItem, std::int32_t type, std::uint64_t shareType) noexcept;

  /// The signed group URL of appendSigURLWith(); null also where the parser refuses the text.
  static std::optional<lumo::URL> urlWithQueryItemForGroupPro(const LumoApiQueryDictionary& queryItem,
                                                              std::int32_t type, std::uint64_t shareType,
                                                              std::string_view path,
                                                              std::string_view sig) noexcept;
  /// The text of a signed group URL: the pairs in ascending order of their keys, each value but
  /// "guild_avatar"'s percent-encoded down to letters, marks and numbers, and the signature, encoded alike,
  /// as the last pair. Null where any of it is not UTF-8.
  static std::optional<std::string> appendSigURLWith(const LumoApiQueryDictionary& queryItem,
                                                     std::string_view path, std::string_view sig) noexcept;
};
