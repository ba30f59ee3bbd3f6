// URLs that open the app. The input is a byte of flags, a piece for the store's record, and the URL.

#include "LumoApi/LumoApiDatastore.h"
#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "LumoApi/LumoOpenApiUtility.h"
#include "LumoApi/LumoWebViewKit.h"
#include "fuzz/Door.h"
#include "fuzz/Input.h"
#include "model/ContentClasses.h"
#include "platform/archive/KeyedUnarchiver.h"

#include <string>

namespace lumo::fuzz {

namespace {

using Converter = LumoApiMessageAndUrlConverter;
using MaybeMessage = std::optional<LumoApiMessage>;

constexpr unsigned kHasMessage = 1, kIsClaimed = 2, kIsArchived = 4, kIsDirect = 8;

LumoApiLargeDataPtr recordOf(unsigned flags, std::string_view piece) {
  const Data bytes = Data::copy(piece);
  if ((flags & kIsArchived) != 0) {
    const std::optional<Value> value = unarchivedValue(bytes);
    const Value::Dictionary* entries = value ? value->asDictionary() : nullptr;
    return entries ? std::make_shared<LumoApiLargeData>(*entries) : nullptr;
  }
  if ((flags & kIsDirect) == 0) return nullptr;
  return std::make_shared<LumoApiLargeData>(LumoApiLargeData{
      {"file_data", bytes}, {"previewimagedata", bytes}, {"image_data_list", Value::Array{bytes, Data()}}});
}

bool areEqual(const MaybeMessage& a, const MaybeMessage& b) {
  if (!a || !b) return !a && !b;
  if (!a->object() || !b->object()) return a->type() == b->type() && !a->object() && !b->object();
  return a->type() == b->type() && *a->object() == *b->object();
}

/// No text that came out of the URL is longer than the URL.
struct TextsFit {
  std::size_t most;

  void operator()(const char*, const std::optional<std::string>& text) const {
    require(!text || text->size() <= most, "no text is longer than what it comes from");
  }
  void operator()(const char*, const auto&) const {}
};

void checkResponse(const RawQuery& query, const LumoApiMessage& message) {
  const auto* result = dynamic_cast<const LumoApiResultObject*>(message.object().get());
  require(message.type() == 6 && result, "a response has a result");
  require(result->otherInfo() == query.dictionary(), "with the whole query");
  require(result->error() == query.find("error"), "and the raw error");
}

void checkRequest(const URL& url, const RawQuery& query, const LumoApiMessage& message) {
  const bool isPick = url.path() == "/pick";
  require(message.type() == (isPick ? 3 : 1) && (!isPick || !message.object()), "the path tells the type");
  const LumoApiObject* object = message.object().get();
  if (!object) return;
  if (const auto* text = dynamic_cast<const LumoApiTextObject*>(object)) {
    const auto decode = LumoOpenApiUtility::UTF8StringWithBase64String;
    require(text->text() == decode(query.find("file_data")) && text->title() == decode(query.find("title")),
            "a text is the query's");
  }
  if (dynamic_cast<const LumoApiCommonContentObject*>(object)) return;  // comes from the record
  visitContent(*object, [&url](const char*, const auto& content) {
    forEachField(content, TextsFit{url.absoluteString().size()});
  });
}

void checkMessage(const URL& url, const MaybeMessage& message) {
  const auto decoder = LumoApiURLDecoder::decoderWithUrl(url);
  const RawQuery& query = decoder->queryItem();
  if (!message) return;
  require(url.host() && !query.empty(), "a message has a host and a query");
  if (url.host() == "response_from_lumo") return checkResponse(query, *message);
  if (url.host() == "request_from_lumo") return checkRequest(url, query, *message);
  require(url.host() == "maLaunchApp" && message->type() == 1, "there is no other host");
  require(dynamic_cast<const LumoApiMiniProgramLaunchObject*>(message->object().get()), "it is a launch");
}

}  // namespace

void door(std::string_view input) {
  Input bytes(input);
  const unsigned flags = bytes.byte();
  const LumoApiLargeDataPtr record = recordOf(flags, bytes.piece());
  LumoApiDatastore& store = LumoApiDatastore::instance();
  store.setApiLargeData(record);
  const MaybeMessage stored = LumoApiMessage::messageWithObject(nullptr, 42);
  store.setApiMessage((flags & kHasMessage) != 0 ? stored : std::nullopt);
  const bool isClaimed = (flags & kIsClaimed) != 0;
  LumoWebViewKit::setHandler({.claims = [isClaimed](const URL&) { return isClaimed; },
                              .message = [](const URL&) { return std::nullopt; }});

  const std::optional<URL> url = URL::parse(bytes.rest());
  LumoApiRefusal refusal;
  const MaybeMessage message = Converter::messageWithUrl(url, &refusal);
  require(message.has_value() != static_cast<bool>(refusal), "a message, or why there is none");
  require(areEqual(message, Converter::messageWithUrlNoClipboard(url)), "under both names");
  if (url && isClaimed)
    require(refusal.code == LumoApiRefusal::Code::NotBuilt, "what is claimed is not read");
  if (url && !isClaimed) checkMessage(*url, message);

  const MaybeMessage waiting = Converter::messageWithUrlUsedClipboard(url, &refusal);
  require(waiting.has_value() != static_cast<bool>(refusal), "a stored message, or why there is none");
  if (waiting) {
    const auto decoder = LumoApiURLDecoder::decoderWithUrl(url);
    require(decoder->queryItem().find("NeedToGetData") == "true" && areEqual(waiting, stored),
            "the stored message is handed out when the URL announces it");
  }
  require(store.getApiLargeData() == record, "reading changes no record");
}

}  // namespace lumo::fuzz
