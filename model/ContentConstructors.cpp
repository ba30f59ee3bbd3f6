// The constructors under their own names; each keeps null as an absent field.

#include "LumoApi/LumoApiModel.h"

using lumo::Data;
using lumo::URL;
using Text = std::optional<std::string>;

namespace {

template <class Object>
std::shared_ptr<Object> withTexts(Text&& title, Text&& description) {
  auto object = std::make_shared<Object>();
  object->setTitle(std::move(title));
  object->setDescription(std::move(description));
  return object;
}

template <class Object>
std::shared_ptr<Object> withData(std::optional<Data>&& data, std::optional<Data>&& preview, Text&& title,
                                 Text&& description) {
  auto object = withTexts<Object>(std::move(title), std::move(description));
  object->setData(std::move(data));
  object->setPreviewImageData(std::move(preview));
  return object;
}

template <class Object>
std::shared_ptr<Object> withURL(std::optional<URL>&& url, Text&& title, Text&& description,
                                std::optional<Data>&& preview) {
  auto object = withTexts<Object>(std::move(title), std::move(description));
  object->setUrl(std::move(url));
  object->setPreviewImageData(std::move(preview));
  return object;
}

}  // namespace

// objectWithText:
std::shared_ptr<LumoApiTextObject> LumoApiTextObject::objectWithText(Text text) {
  auto object = std::make_shared<LumoApiTextObject>();
  object->setText(std::move(text));
  return object;
}

// objectWithData:previewImageData:title:description:
std::shared_ptr<LumoApiExtendObject> LumoApiExtendObject::objectWithData(std::optional<Data> data,
                                                                         std::optional<Data> previewImageData,
                                                                         Text title, Text description) {
  return withData<LumoApiExtendObject>(std::move(data), std::move(previewImageData), std::move(title),
                                       std::move(description));
}

// objectWithData:previewImageData:title:description:
std::shared_ptr<LumoApiImageObject> LumoApiImageObject::objectWithData(std::optional<Data> data,
                                                                       std::optional<Data> previewImageData,
                                                                       Text title, Text description) {
  return withData<LumoApiImageObject>(std::move(data), std::move(previewImageData), std::move(title),
                                      std::move(description));
}

// objectWithURL:title:description:previewImageData:targetContentType:
std::shared_ptr<LumoApiURLObject> LumoApiURLObject::objectWithURL(std::optional<URL> url, Text title,
                                                                  Text description,
                                                                  std::optional<Data> previewImageData,
                                                                  std::uint64_t targetContentType) {
  auto object = withURL<LumoApiURLObject>(std::move(url), std::move(title), std::move(description),
                                          std::move(previewImageData));
  object->setTargetContentType(targetContentType);
  return object;
}

// objectWithURL:title:description:previewImageData:
std::shared_ptr<LumoApiNewsObject> LumoApiNewsObject::objectWithURL(std::optional<URL> url, Text title,
                                                                    Text description,
                                                                    std::optional<Data> previewImageData) {
  return withURL<LumoApiNewsObject>(std::move(url), std::move(title), std::move(description),
                                    std::move(previewImageData));
}

// objectWithURL:title:description:previewImageData:
std::shared_ptr<LumoApiAudioObject> LumoApiAudioObject::objectWithURL(std::optional<URL> url, Text title,
                                                                      Text description,
                                                                      std::optional<Data> previewImageData) {
  return withURL<LumoApiAudioObject>(std::move(url), std::move(title), std::move(description),
                                     std::move(previewImageData));
}

// objectWithURL:title:description:previewImageData:
std::shared_ptr<LumoApiVideoObject> LumoApiVideoObject::objectWithURL(std::optional<URL> url, Text title,
                                                                      Text description,
                                                                      std::optional<Data> previewImageData) {
  return withURL<LumoApiVideoObject>(std::move(url), std::move(title), std::move(description),
                                     std::move(previewImageData));
}

// objectWithAssetURL:title:extMap:
std::shared_ptr<LumoApiVideoForNimboObject> LumoApiVideoForNimboObject::objectWithAssetURL(
    Text assetURL, Text title, std::optional<lumo::Value> extMap) {
  auto object = withTexts<LumoApiVideoForNimboObject>(std::move(title), std::nullopt);
  object->setAssetURL(std::move(assetURL));
  object->setExtMap(std::move(extMap));
  return object;
}

// objectWithVideoData:title:extMap:
std::shared_ptr<LumoApiVideoForNimboObject> LumoApiVideoForNimboObject::objectWithVideoData(
    std::optional<Data> videoData, Text title, std::optional<lumo::Value> extMap) {
  auto object = withTexts<LumoApiVideoForNimboObject>(std::move(title), std::nullopt);
  object->setVideoData(std::move(videoData));
  object->setExtMap(std::move(extMap));
  return object;
}

// objectWithimageDataArray:title:extMap: (sic)
std::shared_ptr<LumoApiImageArrayForNimboObject> LumoApiImageArrayForNimboObject::objectWithimageDataArray(
    std::optional<std::vector<Data>> imageDataArray, Text title, std::optional<lumo::Value> extMap) {
  auto object = withTexts<LumoApiImageArrayForNimboObject>(std::move(title), std::nullopt);
  object->setImageDataArray(std::move(imageDataArray));
  object->setExtMap(std::move(extMap));
  return object;
}

// newWithAppParameter:
std::shared_ptr<LumoApiMiniProgramLaunchObject> LumoApiMiniProgramLaunchObject::newWithAppParameter(
    Text appParameter) {
  auto object = std::make_shared<LumoApiMiniProgramLaunchObject>();
  object->setAppParameter(std::move(appParameter));
  return object;
}
