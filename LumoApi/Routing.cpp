// The URL builders: one per destination in the messenger, and the signed group URL.

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "LumoApi/internal/Keys.h"
#include "LumoApi/internal/LaunchURL.h"
#include "LumoApi/internal/Skeleton.h"
#include "platform/text/PercentEncoding.h"
#include "platform/text/Text.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace lumo {

namespace {

using Pair = std::pair<std::string_view, const QueryValue*>;

std::vector<Pair> sortedByKey(const LumoApiQueryDictionary& query) {
  std::vector<Pair> pairs;
  pairs.reserve(query.size());
  for (const auto& entry : query) pairs.emplace_back(std::string_view(entry.key), &entry.value);
  std::sort(pairs.begin(), pairs.end(), [](const Pair& a, const Pair& b) { return a.first < b.first; });
  return pairs;
}

/// The keys as one text: "(a, b)".
std::string keyList(const std::vector<Pair>& pairs) {
  std::string list = "(";
  for (const auto& [key, value] : pairs) {
    if (list.size() > 1) list += ", ";
    list += key;
  }
  return list += ')';
}

/// Appends the text with everything but letters, marks and numbers escaped; false where it is not UTF-8.
bool appendEncoded(std::string& out, std::string_view text) {
  const std::optional<std::string> encoded = percentEncoded(text, CharacterSet::Alphanumeric);
  if (encoded) out += *encoded;
  return encoded.has_value();
}

std::optional<std::string> signedText(const LumoApiQueryDictionary& query, std::string_view path,
                                      std::string_view signature, Collaborators& collaborators) {
  const std::vector<Pair> pairs = sortedByKey(query);
  if (collaborators.isListening()) {
    const std::string list = keyList(pairs);
    collaborators.log("%s, sortedKey:%s.",
                      {"+[LumoApiMessageAndUrlConverter appendSigURLWith:andPath:sig:]", list});
  }
  std::string text(kGroupProBase);
  (text += path) += '?';
  for (bool first = true; const auto& [key, value] : pairs) {
    if (!std::exchange(first, false)) text += '&';
    (text += key) += '=';
    // The avatar comes ready-made: it holds escapes of its own.
    if (key == keys::kGuildAvatar.text()) {
      text += value->asText();
    } else if (!appendEncoded(text, value->asText())) {
      return std::nullopt;
    }
  }
  text += "&sig=";
  if (!appendEncoded(text, signature) || !isValidUTF8(text)) return std::nullopt;
  return text;
}

}  // namespace

void setCommonKeys(LumoApiQueryDictionary& query, const Conversion& conversion) {
  const std::int32_t type = conversion.type;
  const StoreValues& store = conversion.store;
  if (type == 7) {
    query.set(keys::kShareType, "1");
  } else if (type == 5) {
    query.set(keys::kShareType, "0");
  } else if (type == 4) {
    query.set(keys::kMessageType, "responsefromapp");
  }
  setStoreText(query, keys::kOpenId, store, store->openId);
  if (store->uin && !store->uin->isNull()) query.set(keys::kUin, QueryValue::number(*store->uin));
  if (store->isLumoSupportApiGeneralPastboard) query.set(keys::kGeneralPasteboard, "1");
  if (const auto object = conversion.collaborators.currentObject()) {
    query.set(keys::kCflag, QueryValue::number(Value(object->cflag())));
  }
}

namespace {

/// The member that is no UTF-8 text, of those that are sent as they are.
std::string_view memberWithoutUTF8(const LumoApiQueryDictionary& query) noexcept {
  constexpr std::pair<std::string_view, std::string_view> kPlainMembers[] = {
      {keys::kCallbackName, "scheme"}, {keys::kOpenId, "openId"},       {keys::kUin, "uin"},
      {keys::kAppId, "appId"},         {keys::kFileName, "fileName"},   {keys::kServiceId, "serviceID"},
      {keys::kUnionId, "unionID"},     {keys::kMiniAppId, "miniAppID"},
  };
  for (const auto& [key, member] : kPlainMembers) {
    const QueryValue* value = query.find(key);
    if (value && !isValidUTF8(value->asText())) return member;
  }
  return "query";  // an entry of a caller's own
}

}  // namespace

Result<URL> route(const Destination& destination, LumoApiQueryDictionary& query, const Conversion& conversion,
                  std::uint64_t shareDestType) {
  if (destination.commonKeys) setCommonKeys(query, conversion);
  std::optional<URL> url = launchURL(destination, shareDestType, query);
  if (!url) return refused(LumoApiRefusal::Code::NotUTF8, memberWithoutUTF8(query), kSilent);
  return *std::move(url);
}

Result<URL> routeSigned(const LumoApiQueryDictionary& query, std::string_view path,
                        std::string_view signature, Collaborators& collaborators) {
  std::optional<std::string> text = signedText(query, path, signature, collaborators);
  if (!text) {
    return refused(LumoApiRefusal::Code::NotUTF8, isValidUTF8(signature) ? "queryDictionary" : "signString",
                   kSilent);
  }
  std::optional<URL> url = URL::parse(Data(*std::move(text)));
  if (!url) return refused(LumoApiRefusal::Code::InvalidURL, "queryDictionary", kSilent);
  return *std::move(url);
}

}  // namespace lumo

using lumo::Conversion;
using lumo::URL;
namespace destinations = lumo::destinations;

namespace {

std::optional<URL> routed(const lumo::Destination& destination, LumoApiQueryDictionary& query,
                          std::int32_t type, std::uint64_t shareDestType) noexcept {
  Conversion conversion{.type = type};
  return lumo::concluded(lumo::converted(conversion,
                                         [&](const Conversion& current) {
                                           return lumo::route(destination, query, current, shareDestType);
                                         }),
                         conversion.collaborators);
}

/// For the destinations without common keys, where the dictionary stays as it is.
std::optional<URL> routed(const lumo::Destination& destination, const LumoApiQueryDictionary& query,
                          std::uint64_t shareDestType) noexcept try {
  return lumo::launchURL(destination, shareDestType, query);
} catch (...) {  // memory is exhausted
  return std::nullopt;
}

/// For a path of the caller's, which may be any text.
std::optional<URL> routed(const lumo::Destination& destination, std::string_view path,
                          LumoApiQueryDictionary& query, std::int32_t type,
                          std::uint64_t shareDestType) noexcept try {
  lumo::setCommonKeys(query, {.type = type});
  return LumoApiURLEncoder::urlWithScheme(destination.schemeFor(shareDestType), destination.host, path,
                                          &query);
} catch (...) {  // memory is exhausted: a URL without some of the keys would be another request
  return std::nullopt;
}

}  // namespace

// updateQueryItemInfo:type:shareDestType:
void LumoApiMessageAndUrlConverter::updateQueryItemInfo(LumoApiQueryDictionary& queryItem, std::int32_t type,
                                                        std::uint64_t /*shareDestType*/) noexcept {
  try {
    lumo::setCommonKeys(queryItem, {.type = type});
  } catch (...) {  // memory is exhausted: the keys that are missing are left out
  }
}

// urlWithQueryItem:type:shareDestType:
std::optional<URL> LumoApiMessageAndUrlConverter::urlWithQueryItem(LumoApiQueryDictionary& queryItem,
                                                                   std::int32_t type,
                                                                   std::uint64_t shareDestType) noexcept {
  return routed(destinations::kShareToFriend, queryItem, type, shareDestType);
}

// urlWithQueryItemForAvatar:type:shareDestType:path:
std::optional<URL> LumoApiMessageAndUrlConverter::urlWithQueryItemForAvatar(LumoApiQueryDictionary& queryItem,
                                                                            std::int32_t type,
                                                                            std::uint64_t shareDestType,
                                                                            std::string_view path) noexcept {
  return routed(destinations::kAvatarPicture, path, queryItem, type, shareDestType);
}

// urlWithQueryItemForAuth:type:shareDestType:path:
std::optional<URL> LumoApiMessageAndUrlConverter::urlWithQueryItemForAuth(LumoApiQueryDictionary& queryItem,
                                                                          std::int32_t type,
                                                                          std::uint64_t shareDestType,
                                                                          std::string_view path) noexcept {
  return routed(destinations::kAuth, path, queryItem, type, shareDestType);
}

// urlWithQueryItemForFaceCollection:type:shareDestType:
std::optional<URL> LumoApiMessageAndUrlConverter::urlWithQueryItemForFaceCollection(
    LumoApiQueryDictionary& queryItem, std::int32_t type, std::uint64_t shareDestType) noexcept {
  return routed(destinations::kFaceCollection, queryItem, type, shareDestType);
}

// urlWithQueryItemForExtraService:type:shareType:
std::optional<URL> LumoApiMessageAndUrlConverter::urlWithQueryItemForExtraService(
    const LumoApiQueryDictionary& queryItem, std::int32_t /*type*/, std::uint64_t shareType) noexcept {
  return routed(destinations::kExtraService, queryItem, shareType);
}

// urlWithQueryItemForCommonService:type:shareType:
std::optional<URL> LumoApiMessageAndUrlConverter::urlWithQueryItemForCommonService(
    const LumoApiQueryDictionary& queryItem, std::int32_t /*type*/, std::uint64_t shareType) noexcept {
  return routed(destinations::kCommonService, queryItem, shareType);
}

// urlWithQueryItemForLaunchMiniProgram:type:shareType:
std::optional<URL> LumoApiMessageAndUrlConverter::urlWithQueryItemForLaunchMiniProgram(
    const LumoApiQueryDictionary& queryItem, std::int32_t /*type*/, std::uint64_t shareType) noexcept {
  return routed(destinations::kMiniProgram, queryItem, shareType);
}

// urlWithQueryItemForThirdAppBindGroup:type:shareType:
std::optional<URL> LumoApiMessageAndUrlConverter::urlWithQueryItemForThirdAppBindGroup(
    const LumoApiQueryDictionary& queryItem, std::int32_t /*type*/, std::uint64_t shareType) noexcept {
  return routed(destinations::kBindGroup, queryItem, shareType);
}

// urlWithQueryItemForThirdAppJoinBroup:type:shareType: (sic)
std::optional<URL> LumoApiMessageAndUrlConverter::urlWithQueryItemForThirdAppJoinBroup(
    const LumoApiQueryDictionary& queryItem, std::int32_t /*type*/, std::uint64_t shareType) noexcept {
  return routed(destinations::kJoinGroup, queryItem, shareType);
}

// urlWithQueryItemForAddFriend:type:shareType:
std::optional<URL> LumoApiMessageAndUrlConverter::urlWithQueryItemForAddFriend(
    const LumoApiQueryDictionary& queryItem, std::int32_t /*type*/, std::uint64_t shareType) noexcept {
  return routed(destinations::kAddFriend, queryItem, shareType);
}

// urlWithQueryItemForGameBindingGroup:type:shareType:
std::optional<URL> LumoApiMessageAndUrlConverter::urlWithQueryItemForGameBindingGroup(
    const LumoApiQueryDictionary& queryItem, std::int32_t /*type*/, std::uint64_t shareType) noexcept {
  return routed(destinations::kBindGameGroup, queryItem, shareType);
}

// urlWithQueryItemForJoinBroup:type:shareType: (sic)
std::optional<URL> LumoApiMessageAndUrlConverter::urlWithQueryItemForJoinBroup(
    const LumoApiQueryDictionary& queryItem, std::int32_t /*type*/, std::uint64_t shareType) noexcept {
  return routed(destinations::kShowCard, queryItem, shareType);
}

// urlWithQueryItemForGroupPro:type:shareType:path:sig:
std::optional<URL> LumoApiMessageAndUrlConverter::urlWithQueryItemForGroupPro(
    const LumoApiQueryDictionary& queryItem, std::int32_t type, std::uint64_t /*shareType*/,
    std::string_view path, std::string_view sig) noexcept {
  Conversion conversion{.type = type};
  return lumo::concluded(lumo::converted(conversion,
                                         [&](Conversion& current) {
                                           return lumo::routeSigned(queryItem, path, sig,
                                                                    current.collaborators);
                                         }),
                         conversion.collaborators);
}

// appendSigURLWith:andPath:sig:
std::optional<std::string> LumoApiMessageAndUrlConverter::appendSigURLWith(
    const LumoApiQueryDictionary& queryItem, std::string_view path, std::string_view sig) noexcept try {
  return lumo::signedText(queryItem, path, sig, lumo::processCollaborators());
} catch (...) {  // memory is exhausted
  return std::nullopt;
}
