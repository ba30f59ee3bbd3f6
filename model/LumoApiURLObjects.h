#pragma once

#include "LumoApi/LumoApiObject.h"

// One thread at a time may use an object of these, like every LumoApiObject.

namespace lumo {

/// Offered by the link kinds that have a flash URL; the converter asks an object for this interface.
class LUMOAPI_EXPORT OffersFlashURL {
 public:
  /// The address of a player.
  virtual const std::optional<URL>& flashURL() const noexcept = 0;

 protected:
  ~OffersFlashURL() = default;
};

}  // namespace lumo

/// A link. Objects of every class derived from this one are sent as links too.
class LUMOAPI_EXPORT LumoApiURLObject : public lumo::TaggedObject {
 public:
  /// A new link with these fields.
  static std::shared_ptr<LumoApiURLObject> objectWithURL(std::optional<lumo::URL> url,
                                                         std::optional<std::string> title,
                                                         std::optional<std::string> description,
                                                         std::optional<lumo::Data> previewImageData,
                                                         std::uint64_t targetContentType);

  /// Required: an absolute text of 1 to 1024 UTF-16 code units.
  const std::optional<lumo::URL>& url() const noexcept { return url_; }
  void setUrl(std::optional<lumo::URL> url) noexcept { url_ = std::move(url); }

  /// 0 link, 1 audio, 2 video, 3 news; other values are sent as an unknown kind.
  std::uint64_t targetContentType() const noexcept { return targetContentType_; }
  void setTargetContentType(std::uint64_t targetContentType) noexcept {
    targetContentType_ = targetContentType;
  }

  /// Optional: at most 1,048,576 bytes.
  const std::optional<lumo::Data>& previewImageData() const noexcept { return previewImageData_; }
  void setPreviewImageData(std::optional<lumo::Data> previewImageData) noexcept {
    previewImageData_ = std::move(previewImageData);
  }

  /// Optional.
  const std::optional<lumo::URL>& previewImageURL() const noexcept { return previewImageURL_; }
  void setPreviewImageURL(std::optional<lumo::URL> previewImageURL) noexcept {
    previewImageURL_ = std::move(previewImageURL);
  }

  template <class Self>
  static auto fields(Self& self) {
    return std::tuple_cat(
        std::tuple(lumo::field("url", self.url_), lumo::field("targetContentType", self.targetContentType_),
                   lumo::field("previewImageData", self.previewImageData_),
                   lumo::field("previewImageURL", self.previewImageURL_)),
        lumo::TaggedObject::fields(self));
  }

 private:
  std::optional<lumo::URL> url_;
  std::uint64_t targetContentType_ = 0;
  std::optional<lumo::Data> previewImageData_;
  std::optional<lumo::URL> previewImageURL_;
};

/// A news page: a link whose target content type is 3 unless set otherwise.
class LUMOAPI_EXPORT LumoApiNewsObject : public LumoApiURLObject {
 public:
  LumoApiNewsObject() noexcept { setTargetContentType(3); }
  /// A new link with these fields.
  static std::shared_ptr<LumoApiNewsObject> objectWithURL(std::optional<lumo::URL> url,
                                                          std::optional<std::string> title,
                                                          std::optional<std::string> description,
                                                          std::optional<lumo::Data> previewImageData);
};

namespace lumo {

/// A link to a page that plays something, and perhaps to the flash film in it.
class LUMOAPI_EXPORT FlashLinkObject : public LumoApiURLObject, public OffersFlashURL {
 public:
  /// Optional.
  const std::optional<lumo::URL>& flashURL() const noexcept override { return flashURL_; }
  void setFlashURL(std::optional<lumo::URL> flashURL) noexcept { flashURL_ = std::move(flashURL); }

  template <class Self>
  static auto fields(Self& self) {
    return std::tuple_cat(std::tuple(lumo::field("flashURL", self.flashURL_)),
                          LumoApiURLObject::fields(self));
  }

 private:
  std::optional<lumo::URL> flashURL_;
};

}  // namespace lumo

/// An audio page: a link whose target content type is 1 unless set otherwise.
class LUMOAPI_EXPORT LumoApiAudioObject : public lumo::FlashLinkObject {
 public:
  LumoApiAudioObject() noexcept { setTargetContentType(1); }
  /// A new link with these fields.
  static std::shared_ptr<LumoApiAudioObject> objectWithURL(std::optional<lumo::URL> url,
                                                           std::optional<std::string> title,
                                                           std::optional<std::string> description,
                                                           std::optional<lumo::Data> previewImageData);
};

/// A video page: a link whose target content type is 2 unless set otherwise.
class LUMOAPI_EXPORT LumoApiVideoObject : public lumo::FlashLinkObject {
 public:
  LumoApiVideoObject() noexcept { setTargetContentType(2); }
  /// A new link with these fields.
  static std::shared_ptr<LumoApiVideoObject> objectWithURL(std::optional<lumo::URL> url,
                                                           std::optional<std::string> title,
                                                           std::optional<std::string> description,
                                                           std::optional<lumo::Data> previewImageData);
};
