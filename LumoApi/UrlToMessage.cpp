// The incoming entries: who reads a URL that opened the app.

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "LumoApi/LumoOpenApiUtility.h"
#include "LumoApi/internal/Entries.h"
#include "LumoApi/internal/Incoming.h"
#include "LumoApi/internal/Keys.h"

using lumo::Result;
using lumo::URL;
using Code = LumoApiRefusal::Code;
using MaybeURL = std::optional<URL>;

namespace lumo::incoming {

std::optional<std::string> decodedText(const LumoApiURLDecoder& decoder, std::string_view key) {
  return LumoOpenApiUtility::UTF8StringWithBase64String(decoder.queryItem().find(key));
}

namespace {

bool isClaimed(const MaybeURL& url, const Collaborators& collaborators) noexcept {
  return url && collaborators.claims(*url);
}

Result<LumoApiMessage> messageOfWebViewKit(const URL& url, const Collaborators& collaborators) {
  if (auto message = collaborators.messageOfKit(url)) return *std::move(message);
  return refused(Code::NotBuilt, "webView", kSilent);
}

Result<LumoApiMessage> messageWithLaunchFromLumoMiniApp(const LumoApiURLDecoder& decoder) {
  const std::string_view parameter = decoder.queryItem().find(keys::kAppParameter).value_or("");
  return LumoApiMessage::messageWithObject(
      LumoApiMiniProgramLaunchObject::newWithAppParameter(URLDecodedString(parameter)), 1);
}

Result<LumoApiMessage> messageWithUrlNoClipboard(const MaybeURL& url, Collaborators& collaborators) {
  if (isClaimed(url, collaborators)) {
    collaborators.log("YES == [LumoWebViewKit canHanleOpenUrlFromSafari:url]");
    return messageOfWebViewKit(*url, collaborators);
  }
  const auto decoder = LumoApiURLDecoder::decoderWithUrl(url);
  if (!decoder) return missing("url", kSilent);
  const auto host = decoder->host();
  if (!host) return missing("host", kSilent);
  if (decoder->queryItem().empty()) return missing("query", kSilent);
  if (*host == "request_from_lumo") return messageWithRequestFromLumo(*decoder, collaborators);
  if (*host == "response_from_lumo") return messageWithResponseFromLumo(*decoder);
  if (*host == "maLaunchApp") return messageWithLaunchFromLumoMiniApp(*decoder);
  return refused(Code::UnknownHost, "host", "LumoApiMessageAndUrlCoverter,LumoApiMessage = nil");  // sic
}

Result<LumoApiMessage> messageWithUrlUsedClipboard(const MaybeURL& url, const Collaborators& collaborators) {
  if (isClaimed(url, collaborators)) return messageOfWebViewKit(*url, collaborators);
  const auto decoder = LumoApiURLDecoder::decoderWithUrl(url);
  if (!decoder) return missing("url", kSilent);
  if (decoder->queryItem().find(keys::kNeedToGetData) != "true") {
    return refused(Code::Unannounced, keys::kNeedToGetData, kSilent);
  }
  auto message = collaborators.storedMessage();
  if (!message) return missing("apiMessage", kSilent);
  return *std::move(message);
}

}  // namespace
}  // namespace lumo::incoming

namespace incoming = lumo::incoming;
namespace entries = lumo::entries;

std::optional<LumoApiMessage> entries::messageWithUrl(const MaybeURL& url, Collaborators& collaborators,
                                                      LumoApiRefusal* refusal) noexcept {
  return concluded(guarded([&] { return incoming::messageWithUrlNoClipboard(url, collaborators); }),
                   collaborators, refusal);
}

std::optional<LumoApiMessage> entries::messageWithUrlUsedClipboard(const MaybeURL& url,
                                                                   Collaborators& collaborators,
                                                                   LumoApiRefusal* refusal) noexcept {
  return concluded(guarded([&] { return incoming::messageWithUrlUsedClipboard(url, collaborators); }),
                   collaborators, refusal);
}

// messageWithUrl:
std::optional<LumoApiMessage> LumoApiMessageAndUrlConverter::messageWithUrl(const MaybeURL& url) noexcept {
  return messageWithUrlNoClipboard(url);
}

std::optional<LumoApiMessage> LumoApiMessageAndUrlConverter::messageWithUrl(
    const MaybeURL& url, LumoApiRefusal* refusal) noexcept {
  return entries::messageWithUrl(url, lumo::processCollaborators(), refusal);
}

// messageWithUrlNoClipboard:
std::optional<LumoApiMessage> LumoApiMessageAndUrlConverter::messageWithUrlNoClipboard(
    const MaybeURL& url) noexcept {
  return messageWithUrl(url, nullptr);
}

// messageWithUrlUsedClipboard:
std::optional<LumoApiMessage> LumoApiMessageAndUrlConverter::messageWithUrlUsedClipboard(
    const MaybeURL& url) noexcept {
  return messageWithUrlUsedClipboard(url, nullptr);
}

std::optional<LumoApiMessage> LumoApiMessageAndUrlConverter::messageWithUrlUsedClipboard(
    const MaybeURL& url, LumoApiRefusal* refusal) noexcept {
  return entries::messageWithUrlUsedClipboard(url, lumo::processCollaborators(), refusal);
}

// messageWithLaunchFromLumoMiniApp:
std::optional<LumoApiMessage> LumoApiMessageAndUrlConverter::messageWithLaunchFromLumoMiniApp(
    const LumoApiURLDecoder& decoder) noexcept {
  return lumo::concluded(
      lumo::guarded([&decoder] { return incoming::messageWithLaunchFromLumoMiniApp(decoder); }),
      lumo::processCollaborators());
}
