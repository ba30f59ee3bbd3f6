#include "bench/plain/Plain.h"

namespace plain {

namespace {

using Values = LumoApiDatastore::Values;
using Text = std::optional<std::string>;

bool isLonger(const Text& text, std::size_t limit) { return text && utf16Length(*text) > limit; }

bool isRefused(const lumo::TaggedObject& object) {
  return isLonger(object.title(), 128) || isLonger(object.description(), 512) ||
         isLonger(object.tagName(), 128) || isLonger(object.messageExt(), 256);
}

void setBase64(Query& query, const std::string& key, const Text& text) {
  if (text && isValidUTF8(*text)) query[key] = base64(*text);
}

Query commonQuery(const std::string& kind, const lumo::TaggedObject& object, std::int32_t type,
                  const Values& store) {
  Query query;
  query["src_type"] = "app";
  query["version"] = "1";
  query["file_type"] = kind;
  query["callback_type"] = "scheme";
  if (store.scheme) query["callback_name"] = *store.scheme;
  setBase64(query, "tagName", object.tagName());
  setBase64(query, "messageExt", object.messageExt());
  setBase64(query, "title", object.title());
  setBase64(query, "description", object.description());
  setBase64(query, "thirdAppDisplayName", store.appName);
  if (type == 7) query["shareType"] = "1";
  if (type == 5) query["shareType"] = "0";
  if (type == 4) query["messagetype"] = "responsefromapp";
  if (store.openId) query["openId"] = *store.openId;
  return query;
}

Text shareURL(const Query& query) {
  std::string text = "mlumoapi://share/to_fri?";
  for (const auto& [key, value] : query) {
    if (text.back() != '?') text += "&";
    text += key + "=" + value;
  }
  if (!isValidUTF8(text)) return std::nullopt;
  return percentEncoded(text);
}

}  // namespace

Text textShare(const LumoApiTextObject& object, std::int32_t type, const Values& store) {
  const Text& text = object.text();
  if (isRefused(object) || !text || text->empty() || isLonger(text, 1536) || !isValidUTF8(*text))
    return std::nullopt;
  Query query = commonQuery("text", object, type, store);
  query["file_data"] = base64(*text);
  if (store.isLumoSupportUrlForShareText) query["objectlocation"] = "url";
  return shareURL(query);
}

Text linkShare(const LumoApiURLObject& object, std::int32_t type, const Values& store) {
  const auto& preview = object.previewImageData();
  if (isRefused(object) || (preview && preview->size() > 1048576) || !object.title() || !object.url())
    return std::nullopt;
  const Text link = std::string(object.url()->absoluteString());
  if (link->empty() || isLonger(link, 1024)) return std::nullopt;
  Query query = commonQuery("url", object, type, store);
  setBase64(query, "url", link);
  query["objectlocation"] = "url";
  query["pasteboard"] = preview ? base64(archived("previewimagedata", *preview)) : "";
  return shareURL(query);
}

Query splitQuery(const std::string& url) {
  Query query;
  std::size_t place = url.find('?');
  while (place != std::string::npos) {
    const std::size_t end = url.find('&', place + 1);
    const std::string piece = url.substr(place + 1, end == std::string::npos ? end : end - place - 1);
    const std::size_t equals = piece.find('=');
    if (equals != std::string::npos) query[piece.substr(0, equals)] = piece.substr(equals + 1);
    place = end;
  }
  return query;
}

}  // namespace plain
