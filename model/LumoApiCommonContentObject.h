#pragma once

#include "LumoApi/LumoApiLargeData.h"
#include "LumoApi/LumoApiObject.h"

// One thread at a time may use such an object, like every LumoApiObject.

/// A preview image with at most one text and at most one picture; it travels as an archive of its dictionary
/// form.
class LUMOAPI_EXPORT LumoApiCommonContentObject : public lumo::TaggedObject {
 public:
  /// Rebuilds the object from a large-data record, whose "file_data" is the archive of a toDictionary().
  /// Fields that the record does not give, or gives in another type, stay absent; a null record gives an
  /// object without any. Never null.
  static std::shared_ptr<LumoApiCommonContentObject> objectWithDictionary(const LumoApiLargeData* record);

  /// The object's dictionary form: each field that is not absent (each number that is not 0) under its own
  /// name.
  lumo::Value::Dictionary toDictionary() const;

  /// Required: 1 to 1,048,576 bytes.
  const std::optional<lumo::Data>& previewImageData() const noexcept { return previewImageData_; }
  void setPreviewImageData(std::optional<lumo::Data> previewImageData) noexcept {
    previewImageData_ = std::move(previewImageData);
  }

  /// At most one text, of at most 1536 UTF-16 code units. A text or a picture is required.
  const std::optional<std::vector<std::string>>& textArray() const noexcept { return textArray_; }
  void setTextArray(std::optional<std::vector<std::string>> textArray) noexcept {
    textArray_ = std::move(textArray);
  }

  /// At most one picture, of at most 5,242,880 bytes.
  const std::optional<std::vector<lumo::Data>>& pictureDataArray() const noexcept {
    return pictureDataArray_;
  }
  void setPictureDataArray(std::optional<std::vector<lumo::Data>> pictureDataArray) noexcept {
    pictureDataArray_ = std::move(pictureDataArray);
  }

  template <class Self>
  static auto fields(Self& self) {
    return std::tuple_cat(std::tuple(lumo::field("previewImageData", self.previewImageData_),
                                     lumo::field("textArray", self.textArray_),
                                     lumo::field("pictureDataArray", self.pictureDataArray_)),
                          lumo::TaggedObject::fields(self));
  }

 private:
  std::optional<lumo::Data> previewImageData_;
  std::optional<std::vector<std::string>> textArray_;
  std::optional<std::vector<lumo::Data>> pictureDataArray_;
};
