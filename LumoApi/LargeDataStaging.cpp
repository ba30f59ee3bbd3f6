// The large-data record: how it is built, and the two ways on which it travels beside a launch URL.

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "LumoApi/internal/Keys.h"
#include "LumoApi/internal/Skeleton.h"
#include "platform/archive/KeyedArchiver.h"
#include "platform/text/Text.h"

namespace lumo {

namespace {

bool given(const auto* part) noexcept { return part && part->has_value(); }

bool anyGiven(const LargeDataParts& parts) noexcept {
  return given(parts.previewImage) || given(parts.fileData) || given(parts.imageList) ||
         given(parts.kivaData);
}

void set(LumoApiLargeData& record, RecordKey key, Value value) {
  record.set(std::string(key.text), std::move(value));
}

}  // namespace

std::shared_ptr<LumoApiLargeData> largeData(const LargeDataParts& parts) {
  auto made = std::make_shared<LumoApiLargeData>();
  if (given(parts.previewImage)) set(*made, record::kPreviewImageData, **parts.previewImage);
  if (given(parts.fileData)) set(*made, record::kFileData, **parts.fileData);
  if (given(parts.imageList)) {
    const std::vector<Data>& images = **parts.imageList;
    set(*made, record::kImageDataList, Value::Array(images.begin(), images.end()));
  }
  if (given(parts.kivaData) && isValidUTF8(**parts.kivaData)) {
    set(*made, record::kKivaData, base64Encoded(**parts.kivaData));
  }
  return made;
}

void stage(const LargeDataParts& parts, Conversion& conversion) {
  if (!anyGiven(parts)) return conversion.collaborators.log("pasteboarditem count: %d", {std::int64_t{0}});
  auto record = largeData(parts);
  conversion.collaborators.log("pasteboarditem count: %d", {static_cast<std::int64_t>(record->size())});
  if (!record->empty()) conversion.staged = std::move(record);
}

void stageByLocation(const LargeDataParts& parts, LumoApiQueryDictionary& query, Conversion& conversion) {
  const std::optional<std::string> location = query.text(keys::kObjectLocation);
  conversion.collaborators.log("large data's location is 「%s」",
                               {std::string_view(location ? *location : "")});
  if (location != "url") return stage(parts, conversion);
  auto record = largeData(parts);
  if (record->empty()) return query.set(keys::kPasteboard, "");
  std::optional<DataChain> archive = archivedData(Value(std::move(*record)));
  conversion.collaborators.log("large data's length:%lu",
                               {static_cast<std::uint64_t>(archive ? archive->size() : 0)});
  if (archive) query.set(keys::kPasteboard, QueryValue::base64(*std::move(archive)));
}

}  // namespace lumo

using lumo::LargeDataParts;
using Bytes = std::optional<lumo::Data>;
using List = std::optional<std::vector<lumo::Data>>;
using Text = std::optional<std::string>;

namespace {

/// Runs a staging step and hands its record over; false where that could not be done.
template <class Step>
bool staged(const Step& step) noexcept try {
  lumo::Conversion conversion;
  step(conversion);
  return !conversion.staged || conversion.collaborators.setRecord(std::move(conversion.staged));
} catch (...) {  // memory is exhausted: nothing is staged
  return false;
}

}  // namespace

// setupDataWith:filedata:dataArray:kivaData:
LumoApiLargeDataPtr LumoApiMessageAndUrlConverter::setupDataWith(const Bytes& prevImageData,
                                                                 const Bytes& filedata, const List& dataArray,
                                                                 const Text& kivaData) noexcept try {
  return lumo::largeData({&prevImageData, &filedata, &dataArray, &kivaData});
} catch (...) {  // memory is exhausted
  return nullptr;
}

// setPasteBoardPrevImageData:filedata:dataArray:kivaData:
bool LumoApiMessageAndUrlConverter::setPasteBoardPrevImageData(const Bytes& prevImageData,
                                                               const Bytes& filedata, const List& dataArray,
                                                               const Text& kivaData) noexcept {
  const LargeDataParts parts{&prevImageData, &filedata, &dataArray, &kivaData};
  return staged([&parts](lumo::Conversion& conversion) { lumo::stage(parts, conversion); });
}

// setLargeDataWith:filedata:dataArray:kivaData:toDic:
bool LumoApiMessageAndUrlConverter::setLargeDataWith(const Bytes& prevImageData, const Bytes& filedata,
                                                     const List& dataArray, const Text& kivaData,
                                                     LumoApiQueryDictionary& dic) noexcept {
  const LargeDataParts parts{&prevImageData, &filedata, &dataArray, &kivaData};
  return staged([&](lumo::Conversion& conversion) { lumo::stageByLocation(parts, dic, conversion); });
}
