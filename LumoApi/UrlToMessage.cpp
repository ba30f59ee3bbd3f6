// The incoming entries: who reads a URL that opened the app.

#include "LumoApi/LumoApiDatastore.h"
#include "LumoApi/LumoApiLog.h"
#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "LumoApi/LumoOpenApiUtility.h"
#include "LumoApi/LumoWebViewKit.h"
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

bool isClaimed(const MaybeURL& url) noexcept {
  return url && LumoWebViewKit::canHanleOpenUrlFromSafari(*url);
}

Result<LumoApiMessage> messageOfWebViewKit(const URL& url) {
  if (auto message = LumoWebViewKit::messageWithSafariUrl(url)) return *std::move(message);
  return refused(Code::NotBuilt, "webView", kSilent);
}

Result<LumoApiMessage> messageWithLaunchFromLumoMiniApp(const LumoApiURLDecoder& decoder) {
  const std::string_view parameter = decoder.queryItem().find(keys::kAppParameter).value_or("");
  return LumoApiMessage::messageWithObject(
      LumoApiMiniProgramLaunchObject::newWithAppParameter(URLDecodedString(parameter)), 1);
}

Result<LumoApiMessage> messageWithUrlNoClipboard(const MaybeURL& url) {
  if (isClaimed(url)) {
    LumoApiLog::log("YES == [LumoWebViewKit canHanleOpenUrlFromSafari:url]");
    return messageOfWebViewKit(*url);
  }
  const auto decoder = LumoApiURLDecoder::decoderWithUrl(url);
  if (!decoder) return missing("url", kSilent);
  const auto host = decoder->host();
  if (!host) return missing("host", kSilent);
  if (decoder->queryItem().empty()) return missing("query", kSilent);
  if (*host == "request_from_lumo") return messageWithRequestFromLumo(*decoder);
  if (*host == "response_from_lumo") return messageWithResponseFromLumo(*decoder);
  if (*host == "maLaunchApp") return messageWithLaunchFromLumoMiniApp(*decoder);
  return refused(Code::UnknownHost, "host", "LumoApiMessageAndUrlCoverter,LumoApiMessage = nil");  // sic
}

Result<LumoApiMessage> messageWithUrlUsedClipboard(const MaybeURL& url) {
  if (isClaimed(url)) return messageOfWebViewKit(*url);
  const auto decoder = LumoApiURLDecoder::decoderWithUrl(url);
  if (!decoder) return missing("url", kSilent);
  if (decoder->queryItem().find(keys::kNeedToGetData) != "true") {
    return refused(Code::Unannounced, keys::kNeedToGetData, kSilent);
  }
  auto message = LumoApiDatastore::instance().getApiMessageWithClass<LumoApiMessage>();
  if (!message) return missing("apiMessage", kSilent);
  return *std::move(message);
}

}  // namespace
}  // namespace lumo::incoming

namespace incoming = lumo::incoming;

// messageWithUrl:
std::optional<LumoApiMessage> LumoApiMessageAndUrlConverter::messageWithUrl(const MaybeURL& url) noexcept {
  return messageWithUrlNoClipboard(url);
}

std::optional<LumoApiMessage> LumoApiMessageAndUrlConverter::messageWithUrl(
    const MaybeURL& url, LumoApiRefusal* refusal) noexcept {
  return lumo::concluded(lumo::guarded([&url] { return incoming::messageWithUrlNoClipboard(url); }), refusal);
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
  return lumo::concluded(lumo::guarded([&url] { return incoming::messageWithUrlUsedClipboard(url); }),
                         refusal);
}

// messageWithLaunchFromLumoMiniApp:
std::optional<LumoApiMessage> LumoApiMessageAndUrlConverter::messageWithLaunchFromLumoMiniApp(
    const LumoApiURLDecoder& decoder) noexcept {
  return lumo::concluded(
      lumo::guarded([&decoder] { return incoming::messageWithLaunchFromLumoMiniApp(decoder); }));
}
