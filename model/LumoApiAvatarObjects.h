#pragma once

#include "LumoApi/LumoApiObject.h"

// One thread at a time may use an object of these, like every LumoApiObject.

namespace lumo {

/// A picture or a video for the user's profile, with an optional preview.
class LUMOAPI_EXPORT AvatarObject : public LumoApiObject {
 public:
  /// Required; how long it may be, its class says. Staged by reference, never copied.
  const std::optional<Data>& data() const noexcept { return data_; }
  void setData(std::optional<Data> data) noexcept { data_ = std::move(data); }

  /// Optional, of whatever length.
  const std::optional<Data>& previewImageData() const noexcept { return previewImageData_; }
  void setPreviewImageData(std::optional<Data> previewImageData) noexcept {
    previewImageData_ = std::move(previewImageData);
  }

  template <class Self>
  static auto fields(Self& self) {
    return std::tuple_cat(
        std::tuple(field("data", self.data_), field("previewImageData", self.previewImageData_)),
        LumoApiObject::fields(self));
  }

 protected:
  AvatarObject() = default;

 private:
  std::optional<Data> data_;
  std::optional<Data> previewImageData_;
};

}  // namespace lumo

/// A still picture that the user is to set as profile picture: 1 to 15,728,640 bytes. One longer than
/// 5,242,880 bytes is replaced in the object by a JPEG re-encoding when it is sent (by null, if it is no
/// picture).
class LUMOAPI_EXPORT LumoApiImageForLumoAvatarObject : public lumo::AvatarObject {};

/// A video for a moving profile picture: 1 to 5,242,880 bytes.
class LUMOAPI_EXPORT LumoApiVideoForLumoAvatarObject : public lumo::AvatarObject {};

/// Pictures to add to the user's face collection.
class LUMOAPI_EXPORT LumoApiImageArrayForFaceCollectionObject : public LumoApiObject {
 public:
  /// Required: 1 to 9 pictures, each at most 1,048,576 bytes, together at most 3,145,728.
  const std::optional<std::vector<lumo::Data>>& imageDataArray() const noexcept { return imageDataArray_; }
  void setImageDataArray(std::optional<std::vector<lumo::Data>> imageDataArray) noexcept {
    imageDataArray_ = std::move(imageDataArray);
  }

  template <class Self>
  static auto fields(Self& self) {
    return std::tuple_cat(std::tuple(lumo::field("imageDataArray", self.imageDataArray_)),
                          LumoApiObject::fields(self));
  }

 private:
  std::optional<std::vector<lumo::Data>> imageDataArray_;
};
