#pragma once

#include "LumoApi/LumoApiObject.h"

// One thread at a time may use an object of these, like every LumoApiObject.

/// A social-feed post of pictures.
class LUMOAPI_EXPORT LumoApiImageArrayForNimboObject : public LumoApiObject {
 public:
  /// A new object with these fields.
  static std::shared_ptr<LumoApiImageArrayForNimboObject> objectWithimageDataArray(  // sic
      std::optional<std::vector<lumo::Data>> imageDataArray, std::optional<std::string> title,
      std::optional<lumo::Value> extMap);

  /// Pictures as their encoded bytes; a longer list is cut to its first 20 here when it is sent.
  const std::optional<std::vector<lumo::Data>>& imageDataArray() const noexcept { return imageDataArray_; }
  void setImageDataArray(std::optional<std::vector<lumo::Data>> imageDataArray) noexcept {
    imageDataArray_ = std::move(imageDataArray);
  }

  /// Free-form, sent as JSON.
  const std::optional<lumo::Value>& extMap() const noexcept { return extMap_; }
  void setExtMap(std::optional<lumo::Value> extMap) noexcept { extMap_ = std::move(extMap); }

  template <class Self>
  static auto fields(Self& self) {
    return std::tuple_cat(
        std::tuple(lumo::field("imageDataArray", self.imageDataArray_), lumo::field("extMap", self.extMap_)),
        LumoApiObject::fields(self));
  }

 private:
  std::optional<std::vector<lumo::Data>> imageDataArray_;
  std::optional<lumo::Value> extMap_;
};

/// A social-feed post of one video, by its asset URL on the device or as its bytes; one of both is required.
class LUMOAPI_EXPORT LumoApiVideoForNimboObject : public LumoApiObject {
 public:
  /// A new post of a video by its address on the device.
  static std::shared_ptr<LumoApiVideoForNimboObject> objectWithAssetURL(std::optional<std::string> assetURL,
                                                                        std::optional<std::string> title,
                                                                        std::optional<lumo::Value> extMap);
  /// A new post of a video by its bytes.
  static std::shared_ptr<LumoApiVideoForNimboObject> objectWithVideoData(std::optional<lumo::Data> videoData,
                                                                         std::optional<std::string> title,
                                                                         std::optional<lumo::Value> extMap);

  /// The video's asset URL on the device.
  const std::optional<std::string>& assetURL() const noexcept { return assetURL_; }
  void setAssetURL(std::optional<std::string> assetURL) noexcept { assetURL_ = std::move(assetURL); }

  /// At most 52,428,800 bytes where there is no asset URL.
  const std::optional<lumo::Data>& videoData() const noexcept { return videoData_; }
  void setVideoData(std::optional<lumo::Data> videoData) noexcept { videoData_ = std::move(videoData); }

  /// Free-form, sent as JSON.
  const std::optional<lumo::Value>& extMap() const noexcept { return extMap_; }
  void setExtMap(std::optional<lumo::Value> extMap) noexcept { extMap_ = std::move(extMap); }

  template <class Self>
  static auto fields(Self& self) {
    return std::tuple_cat(
        std::tuple(lumo::field("assetURL", self.assetURL_), lumo::field("videoData", self.videoData_),
                   lumo::field("extMap", self.extMap_)),
        LumoApiObject::fields(self));
  }

 private:
  std::optional<std::string> assetURL_;
  std::optional<lumo::Data> videoData_;
  std::optional<lumo::Value> extMap_;
};
