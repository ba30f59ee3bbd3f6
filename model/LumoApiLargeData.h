#pragma once

#include "LumoApi/Value.h"

#include <concepts>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The large-data record: the bulky parts of a request, which travel beside its URL.
///
/// Its entries are found under lumo::record; another app's record may hold whatever it likes.
using LumoApiLargeData = lumo::Value::Dictionary;

/// A record as the datastore holds and hands it out: shared and never changed, so
/// that any thread may read it; null where there is none.
using LumoApiLargeDataPtr = std::shared_ptr<const LumoApiLargeData>;

namespace lumo {

/// A key of the large-data record; a type of its own, since several query keys differ from these only in
/// case.
struct RecordKey {
  /// The key as it stands in the record.
  std::string_view text;
};

namespace record {

/// The preview picture: a byte buffer.
inline constexpr RecordKey kPreviewImageData{"previewimagedata"};
/// The main bytes: a picture, file or video, or the archived common content.
inline constexpr RecordKey kFileData{"file_data"};
/// A list of pictures: an array of byte buffers.
inline constexpr RecordKey kImageDataList{"image_data_list"};
/// The card: base64 of its text.
inline constexpr RecordKey kKivaData{"pasted_kiva_data"};

}  // namespace record

/// What the value holds where that is a text or bytes, as asked; a null pointer otherwise.
template <class T>
requires std::same_as<T, std::string> || std::same_as<T, Data>
const T* contentOf(const Value& value) noexcept {
  if constexpr (std::same_as<T, Data>) {
    return value.asData();
  } else {
    return value.asString();
  }
}

/// A list of texts or of byte buffers; null where the value is none, or where an element is anything else.
template <class T>
std::optional<std::vector<T>> listOf(const Value& value) {
  const Value::Array* array = value.asArray();
  if (!array) return std::nullopt;
  std::vector<T> list;
  list.reserve(array->size());
  for (const Value& element : *array) {
    const T* content = contentOf<T>(element);
    if (!content) return std::nullopt;
    list.push_back(*content);
  }
  return list;
}

}  // namespace lumo
