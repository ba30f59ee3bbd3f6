// Requests of the messenger: to let the user pick content, or to show content that is rebuilt here from the
// query and from the large-data record.

#include "LumoApi/LumoApiLargeData.h"
#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "LumoApi/internal/Incoming.h"
#include "LumoApi/internal/Keys.h"
#include "platform/values/JSON.h"

#include <utility>

namespace lumo::incoming {

namespace {

/// The large-data record as it is at this moment; entries that are missing or of another type read as null.
class Record {
 public:
  explicit Record(const Collaborators& collaborators) noexcept : held_(collaborators.record()) {}

  std::optional<Data> bytes(RecordKey key) const {
    const Value* value = find(key);
    const Data* data = value ? value->asData() : nullptr;
    return data ? std::optional(*data) : std::nullopt;
  }

  std::optional<std::vector<Data>> list(RecordKey key) const {
    const Value* value = find(key);
    return value ? listOf<Data>(*value) : std::nullopt;
  }

  const LumoApiLargeData* whole() const noexcept { return held_.get(); }

 private:
  const Value* find(RecordKey key) const noexcept { return held_ ? held_->find(key.text) : nullptr; }

  LumoApiLargeDataPtr held_;
};

std::optional<std::string> titleOf(const LumoApiURLDecoder& decoder) {
  return decodedText(decoder, keys::kTitle);
}

std::optional<std::string> descriptionOf(const LumoApiURLDecoder& decoder) {
  return decodedText(decoder, keys::kDescription);
}

/// The link, parsed and no more; null where its text is no URL.
std::optional<URL> linkOf(const LumoApiURLDecoder& decoder) {
  const std::optional<std::string> text = decodedText(decoder, keys::kURL);
  return text ? URL::parse(*text) : std::nullopt;
}

std::shared_ptr<LumoApiObject> text(const LumoApiURLDecoder& decoder) {
  auto object = LumoApiTextObject::objectWithText(decodedText(decoder, keys::kFileData));
  object->setTitle(titleOf(decoder));
  object->setDescription(descriptionOf(decoder));
  return object;
}

/// Data or a picture, whose bytes come from the record.
template <class Object>
std::shared_ptr<LumoApiObject> data(const LumoApiURLDecoder& decoder, const Record& record) {
  return Object::objectWithData(record.bytes(record::kFileData), record.bytes(record::kPreviewImageData),
                                titleOf(decoder), descriptionOf(decoder));
}

/// A link, whose preview picture comes from the record; a plain link takes its kind as a further argument.
template <class Object, class... Kind>
std::shared_ptr<LumoApiObject> link(const LumoApiURLDecoder& decoder, const Record& record, Kind... kind) {
  return Object::objectWithURL(linkOf(decoder), titleOf(decoder), descriptionOf(decoder),
                               record.bytes(record::kPreviewImageData), kind...);
}

/// The extra map; null where its text is not JSON, or a lone number, text or word, which the messenger's
/// platform does not take for a document either.
std::optional<Value> extMapOf(const LumoApiURLDecoder& decoder) {
  const std::optional<std::string> json = decodedText(decoder, keys::kExtMap);
  std::optional<Value> map = json ? parseJSON(*json) : std::nullopt;
  if (map && !map->asDictionary() && !map->asArray()) map.reset();
  return map;
}

/// A post of the social feed: a video by its asset URL, else a video by its bytes, else pictures.
std::shared_ptr<LumoApiObject> feedPost(const LumoApiURLDecoder& decoder,
                                        const Collaborators& collaborators) {
  std::optional<std::string> assetURL = decodedText(decoder, keys::kVideoAssetURL);
  std::optional<Value> extMap = extMapOf(decoder);
  if (assetURL) {
    return LumoApiVideoForNimboObject::objectWithAssetURL(std::move(assetURL), titleOf(decoder),
                                                          std::move(extMap));
  }
  const Record record(collaborators);
  if (std::optional<Data> video = record.bytes(record::kFileData)) {
    return LumoApiVideoForNimboObject::objectWithVideoData(std::move(video), titleOf(decoder),
                                                           std::move(extMap));
  }
  return LumoApiImageArrayForNimboObject::objectWithimageDataArray(record.list(record::kImageDataList),
                                                                   titleOf(decoder), std::move(extMap));
}

}  // namespace

std::shared_ptr<LumoApiObject> getObjectByUrl(const LumoApiURLDecoder& decoder,
                                              const Collaborators& collaborators) {
  const auto kind = decoder.queryItem().find(keys::kFileType);
  if (!kind) return nullptr;
  if (*kind == "text") return text(decoder);
  if (*kind == "img" || *kind == "image") return data<LumoApiImageObject>(decoder, Record(collaborators));
  if (*kind == "nimbo") return feedPost(decoder, collaborators);
  if (*kind == "audio") return link<LumoApiAudioObject>(decoder, Record(collaborators));
  if (*kind == "video") return link<LumoApiVideoObject>(decoder, Record(collaborators));
  if (*kind == "news") return link<LumoApiNewsObject>(decoder, Record(collaborators));
  if (*kind == "url") return link<LumoApiURLObject>(decoder, Record(collaborators), std::uint64_t{0});
  if (*kind == "file") return data<LumoApiExtendObject>(decoder, Record(collaborators));
  if (*kind == "common")
    return LumoApiCommonContentObject::objectWithDictionary(Record(collaborators).whole());
  return nullptr;
}

Result<LumoApiMessage> messageWithRequestFromLumo(const LumoApiURLDecoder& decoder,
                                                  const Collaborators& collaborators) {
  const auto path = decoder.path();
  if (path == "/pick") return LumoApiMessage::messageWithObject(nullptr, 3);
  if (path == "/view") return LumoApiMessage::messageWithObject(getObjectByUrl(decoder, collaborators), 1);
  return refused(LumoApiRefusal::Code::UnknownPath, "path", kSilent);
}

}  // namespace lumo::incoming

// messageWithRequestFromLumo:
std::optional<LumoApiMessage> LumoApiMessageAndUrlConverter::messageWithRequestFromLumo(
    const LumoApiURLDecoder& decoder) noexcept {
  lumo::Collaborators& collaborators = lumo::processCollaborators();
  return lumo::concluded(
      lumo::guarded([&] { return lumo::incoming::messageWithRequestFromLumo(decoder, collaborators); }),
      collaborators);
}

// getObjectByUrl:
std::shared_ptr<LumoApiObject> LumoApiMessageAndUrlConverter::getObjectByUrl(
    const LumoApiURLDecoder& decoder) noexcept try {
  return lumo::incoming::getObjectByUrl(decoder, lumo::processCollaborators());
} catch (...) {  // memory is exhausted
  return nullptr;
}
