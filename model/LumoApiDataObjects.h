#pragma once

#include "LumoApi/LumoApiObject.h"

// One thread at a time may use an object of these, like every LumoApiObject.

namespace lumo {

/// Bytes with an optional preview and an optional list of images, added to the fields of `Base`.
template <class Base>
class LUMOAPI_EXPORT DataFields : public Base {
 public:
  /// Required: 1 to 5,242,880 bytes. Staged by reference, never copied.
  const std::optional<Data>& data() const noexcept { return data_; }
  void setData(std::optional<Data> data) noexcept { data_ = std::move(data); }

  /// Optional: at most 1,048,576 bytes.
  const std::optional<Data>& previewImageData() const noexcept { return previewImageData_; }
  void setPreviewImageData(std::optional<Data> previewImageData) noexcept {
    previewImageData_ = std::move(previewImageData);
  }

  /// Optional: staged as it is.
  const std::optional<std::vector<Data>>& imageDataArray() const noexcept { return imageDataArray_; }
  void setImageDataArray(std::optional<std::vector<Data>> imageDataArray) noexcept {
    imageDataArray_ = std::move(imageDataArray);
  }

 protected:
  DataFields() = default;

  /// What a class lists first in its `fields`.
  template <class Self>
  static auto dataFields(Self& self) {
    return std::tuple(field("data", self.data_), field("previewImageData", self.previewImageData_),
                      field("imageDataArray", self.imageDataArray_));
  }

 private:
  std::optional<Data> data_;
  std::optional<Data> previewImageData_;
  std::optional<std::vector<Data>> imageDataArray_;
};

/// What data and image objects share.
class LUMOAPI_EXPORT DataObject : public DataFields<TaggedObject> {
 public:
  template <class Self>
  static auto fields(Self& self) {
    return std::tuple_cat(dataFields(self), TaggedObject::fields(self));
  }

 protected:
  DataObject() = default;
};

}  // namespace lumo

/// A data payload.
class LUMOAPI_EXPORT LumoApiExtendObject : public lumo::DataObject {
 public:
  /// A new object with these fields.
  static std::shared_ptr<LumoApiExtendObject> objectWithData(std::optional<lumo::Data> data,
                                                             std::optional<lumo::Data> previewImageData,
                                                             std::optional<std::string> title,
                                                             std::optional<std::string> description);
};

/// A picture, given as its encoded bytes.
class LUMOAPI_EXPORT LumoApiImageObject : public lumo::DataObject {
 public:
  /// A new object with these fields.
  static std::shared_ptr<LumoApiImageObject> objectWithData(std::optional<lumo::Data> data,
                                                            std::optional<lumo::Data> previewImageData,
                                                            std::optional<std::string> title,
                                                            std::optional<std::string> description);
};

/// A picture, given by its URL.
class LUMOAPI_EXPORT LumoApiWebImageObject : public lumo::TaggedObject {
 public:
  /// Required, with a text that is not empty.
  const std::optional<lumo::URL>& previewImageURL() const noexcept { return previewImageURL_; }
  void setPreviewImageURL(std::optional<lumo::URL> previewImageURL) noexcept {
    previewImageURL_ = std::move(previewImageURL);
  }

  template <class Self>
  static auto fields(Self& self) {
    return std::tuple_cat(std::tuple(lumo::field("previewImageURL", self.previewImageURL_)),
                          lumo::TaggedObject::fields(self));
  }

 private:
  std::optional<lumo::URL> previewImageURL_;
};

/// A local file's bytes with its name.
class LUMOAPI_EXPORT LumoApiFileObject : public lumo::DataFields<LumoApiObject> {
 public:
  /// Sent unchanged, of whatever length; absent and empty are sent alike.
  const std::optional<std::string>& fileName() const noexcept { return fileName_; }
  void setFileName(std::optional<std::string> fileName) noexcept { fileName_ = std::move(fileName); }

  template <class Self>
  static auto fields(Self& self) {
    return std::tuple_cat(dataFields(self), std::tuple(lumo::field("fileName", self.fileName_)),
                          LumoApiObject::fields(self));
  }

 private:
  std::optional<std::string> fileName_;
};
