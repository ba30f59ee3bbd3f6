#include "documents/RequestReader.h"

#include "documents/NearestName.h"
#include "documents/Words.h"
#include "model/ContentClasses.h"

#include <utility>
#include <vector>

namespace lumo::documents {

namespace {

[[noreturn]] void failWithUnknownClass(const Place& object, const std::string& name) {
  std::vector<std::string_view> names;
  std::string_view meant = name;
  anyContentClass([&](auto contentClass) {
    names.push_back(contentClass.name);
    const std::string kind = kindOf(contentClass.name);
    const bool isMeant = hyphenated(name) == kind || hyphenated(name) == kind + "-object";
    if (isMeant) meant = contentClass.name;
    return isMeant;
  });
  object.failMember("class", "no content class has this name" + suggestion(meant, names));
}

/// The user's number: a text, or an integer of either sign.
struct UserNumber {
  std::optional<Value>& value;
};

void read(const Place& place, UserNumber& number) {
  const Value& given = place.value();
  if (!given.asString() && !given.asInteger() && !given.asUnsigned()) {
    place.failExpecting("a string or a 64-bit integer");
  }
  number.value = given;
}

Value valueOf(std::string text) { return Value(std::move(text)); }
Value valueOf(Data bytes) { return Value(std::move(bytes)); }
Value valueOf(const std::vector<Data>& list) { return Value(Value::Array(list.begin(), list.end())); }

/// The members of "datastore", apart from the rest that surrounds a conversion.
struct Store {
  Surroundings& surroundings;
};

void read(const Place& place, Store& store) {
  LumoApiDatastore::Values& values = store.surroundings.values;
  UserNumber uin{values.uin};
  Members members(place);
  members.take("scheme", values.scheme);
  members.take("appName", values.appName);
  members.take("appId", values.appId);
  members.take("openId", values.openId);
  members.take("uin", uin);
  members.take("isLumoSupportUrlForShareText", values.isLumoSupportUrlForShareText);
  members.take("isLumoSupportUrlInsteadPastedboard", values.isLumoSupportUrlInsteadPastedboard);
  members.take("isLumoSupportApiGeneralPastboard", values.isLumoSupportApiGeneralPastboard);
  members.take("apiLargeData", store.surroundings.apiLargeData);
  members.take("apiMessage", store.surroundings.apiMessage);
  members.finish();
}

}  // namespace

void read(const Place& place, std::shared_ptr<LumoApiObject>& object) {
  Members members(place);
  std::optional<std::string> name;
  members.take("class", name);
  if (!name) place.failMember("class", "missing");
  const bool known = anyContentClass([&](auto contentClass) {
    if (*name != contentClass.name) return false;
    auto made = std::make_shared<typename decltype(contentClass)::Type>();
    forEachField(*made, [&members](const char* field, auto& value) { members.take(field, value); });
    object = std::move(made);
    return true;
  });
  if (!known) failWithUnknownClass(place, *name);
  members.finish();
}

void read(const Place& place, std::shared_ptr<LumoApiKivaObject>& card) {
  std::optional<std::string> kivaData;
  Members members(place);
  members.take("kivaData", kivaData);
  members.finish();
  card = std::make_shared<LumoApiKivaObject>();
  card->setKivaData(std::move(kivaData));
}

void read(const Place& place, LumoApiMessage& message) {
  std::int32_t type = 0;
  std::shared_ptr<LumoApiObject> object;
  bool isSupportKiva = false;
  std::shared_ptr<LumoApiKivaObject> card;
  Members members(place);
  members.take("type", type);
  members.take("object", object);
  members.take("isSupportKiva", isSupportKiva);
  members.take("kivaObject", card);
  members.finish();
  message.setType(type);
  message.setObject(std::move(object));
  message.setIsSupportKiva(isSupportKiva);
  message.setKivaObject(std::move(card));
}

void read(const Place& place, LumoApiLargeDataPtr& record) {
  auto entries = std::make_shared<LumoApiLargeData>();
  Members members(place);
  const auto take = [&members, &entries](RecordKey key, auto content) {
    members.take(key.text, content);
    if (content) entries->set(std::string(key.text), valueOf(*std::move(content)));
  };
  take(record::kFileData, std::optional<Data>());
  take(record::kPreviewImageData, std::optional<Data>());
  take(record::kImageDataList, std::optional<std::vector<Data>>());
  take(record::kKivaData, std::optional<std::string>());
  members.finish();
  record = std::move(entries);
}

void read(const Place& place, Surroundings::WebView& webView) {
  Members members(place);
  members.take("claims", webView.claims);
  members.take("message", webView.message);
  members.finish();
}

void takeSurroundings(Members& request, Surroundings& surroundings) {
  Store store{surroundings};
  request.take("datastore", store);
  request.take("currentObject", surroundings.currentObject);
  request.take("webView", surroundings.webView);
}

void read(const Place& place, Entry& entry) {
  const std::string* name = nullptr;
  read(place, name);
  if (*name == "messageWithUrl") {
    entry = Entry::MessageWithUrl;
  } else if (*name == "messageWithUrlNoClipboard") {
    entry = Entry::MessageWithUrlNoClipboard;
  } else if (*name == "messageWithUrlUsedClipboard") {
    entry = Entry::MessageWithUrlUsedClipboard;
  } else {
    place.fail("none of messageWithUrl, messageWithUrlNoClipboard, messageWithUrlUsedClipboard");
  }
}

EncodeRequest readEncodeRequest(const Place& document) {
  EncodeRequest request;
  Members members(document);
  const bool hasMessage = members.take("message", request.message);
  takeSurroundings(members, request.surroundings);
  members.finish();
  if (!hasMessage) document.failMember("message", "missing");
  return request;
}

DecodeRequest readDecodeRequest(const Place& document) {
  DecodeRequest request;
  Members members(document);
  const bool hasURL = members.take("url", request.url);
  members.take("entry", request.entry);
  takeSurroundings(members, request.surroundings);
  members.finish();
  if (!hasURL) document.failMember("url", "missing");
  return request;
}

}  // namespace lumo::documents
