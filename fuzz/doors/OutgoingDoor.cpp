// Messages of every class, converted under whatever the store holds.

#include "LumoApi/Base64.h"
#include "LumoApi/LumoApiCurrentObject.h"
#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "LumoApi/internal/Destinations.h"
#include "fuzz/Door.h"
#include "fuzz/Messages.h"
#include "model/ContentClasses.h"
#include "platform/text/Text.h"

#include <algorithm>
#include <concepts>
#include <string>
#include <utility>

namespace lumo::fuzz {

namespace {

using Converter = LumoApiMessageAndUrlConverter;

/// Null for an object of the base class, which cannot be copied.
std::shared_ptr<LumoApiObject> copyOf(const LumoApiObject* object) {
  std::shared_ptr<LumoApiObject> copy;
  if (!object) return copy;
  visitContent(*object, [&copy](const char*, const auto& content) {
    using Content = std::remove_cvref_t<decltype(content)>;
    if constexpr (std::copy_constructible<Content>) copy = std::make_shared<Content>(content);
  });
  return copy;
}

/// Takes over what a conversion may change: an avatar's picture, and a post's pictures beyond the first 20.
void allowChanges(LumoApiObject& before, const LumoApiObject& after) {
  if (auto* avatar = dynamic_cast<LumoApiImageForLumoAvatarObject*>(&before)) {
    avatar->setData(static_cast<const LumoApiImageForLumoAvatarObject&>(after).data());
  }
  auto* post = dynamic_cast<LumoApiImageArrayForNimboObject*>(&before);
  if (!post || !post->imageDataArray()) return;
  std::vector<Data> pictures = *post->imageDataArray();
  const auto& left = static_cast<const LumoApiImageArrayForNimboObject&>(after).imageDataArray();
  if (left && left->size() == 20 && pictures.size() > 20) pictures.resize(20);
  post->setImageDataArray(std::move(pictures));
}

/// How many bytes a URL may need for a field, in any encoding.
struct Weight {
  std::size_t bytes = 0;

  void add(std::string_view text) { bytes += 8 * text.size() + 64; }
  void add(const std::string& text) { add(std::string_view(text)); }
  void add(const Data& data) { add(data.view()); }
  void add(const URL& url) { add(url.absoluteString()); }
  void add(std::uint64_t) { add(std::string_view()); }
  void add(const StringDictionary& entries) {
    for (const auto& [key, text] : entries) add(key), add(text);
  }
  void add(const Value& value) {
    add(std::string_view());
    if (const std::string* text = value.asString()) add(*text);
    if (const Value::Array* array = value.asArray()) add(*array);
    if (const Value::Dictionary* entries = value.asDictionary()) {
      for (const auto& [key, element] : *entries) add(key), add(element);
    }
  }
  template <class T>
  void add(const std::vector<T>& list) {
    for (const T& element : list) add(element);
  }
  template <class T>
  void add(const std::optional<T>& field) {
    if (field) add(*field);
  }
};

std::size_t mostBytesFor(const LumoApiMessage& message, const LumoApiDatastore::Values& values) {
  Weight weight{4096};
  for (const auto& text : {values.scheme, values.appName, values.appId, values.openId}) weight.add(text);
  weight.add(values.uin);
  if (message.kivaObject()) weight.add(message.kivaObject()->kivaData());
  visitContent(std::as_const(*message.object()), [&weight](const char*, const auto& content) {
    forEachField(content, [&weight](const char*, const auto& field) { weight.add(field); });
  });
  return weight.bytes;
}

bool leadsToTheMessenger(const URL& url) {
  if (url.absoluteString().starts_with(kGroupProBase)) return true;
  using namespace destinations;
  const Destination kAll[] = {kShareToFriend, kAvatarPicture, kAvatarVideo, kAuth,      kFaceCollection,
                              kExtraService,  kCommonService, kMiniProgram, kBindGroup, kJoinGroup};
  return std::any_of(std::begin(kAll), std::end(kAll), [&url](const Destination& d) {
    const bool isScheme = url.scheme() == d.scheme.text() || url.scheme() == d.siblingScheme.text();
    return isScheme && url.host() == d.host.text() && url.path() == d.path.text();
  });
}

void checkURL(const URL& url, const LumoApiObject& object) {
  require(leadsToTheMessenger(url), "a launch URL leads to the messenger");
  const std::optional<URL> parsed = URL::parse(url.absoluteString());
  require(parsed && parsed->scheme() == url.scheme() && parsed->host() == url.host() &&
              parsed->path() == url.path() && parsed->query() == url.query() && !parsed->fragment(),
          "it is a URL, of the same parts");
  if (url.host() != "share" || isEmpty(object.title()) || !isValidUTF8(*object.title())) return;
  const auto decoder = LumoApiURLDecoder::decoderWithUrl(url);
  const auto title = decoder->queryItem().find("title");
  require(title == base64Encoded(*object.title()), "no other value takes the title's place");
}

}  // namespace

void door(std::string_view input) {
  Input bytes(input);
  const LumoApiMessage message = fuzz::message(bytes);
  const LumoApiDatastore::Values values = storeValues(bytes);
  LumoApiDatastore& store = LumoApiDatastore::instance();
  store.setValues(values);
  const auto record = std::make_shared<const LumoApiLargeData>();
  store.setApiLargeData(record);
  const LumoApiCurrentObject::Scope current(bytes.flag() ? message.object() : nullptr);
  const std::shared_ptr<LumoApiObject> before = copyOf(message.object().get());

  LumoApiRefusal refusal;
  const std::optional<URL> url = Converter::urlWithMessage(message, &refusal);
  require(url.has_value() != static_cast<bool>(refusal), "a URL, or why there is none");
  const bool isChanged = before && !(*before == *message.object());
  if (before) {
    allowChanges(*before, *message.object());
    require(*before == *message.object(), "the object is as it was");
  }
  if (!url) {
    require(!refusal.description().empty(), "a refusal has words");
    require(store.getApiLargeData() == record, "a refusal stages nothing");
    return;
  }
  checkURL(*url, *message.object());
  require(url->absoluteString().size() <= mostBytesFor(message, values), "no URL out of proportion");
  if (!isChanged) require(Converter::urlWithMessage(message) == url, "the same message gives the same URL");
}

}  // namespace lumo::fuzz
