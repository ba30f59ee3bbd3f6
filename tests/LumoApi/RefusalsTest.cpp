// What each kind refuses, in which order, with which log line; and that a refusal leaves the store alone.

#include "tests/LumoApi/ConverterTest.h"

namespace {

class Refusals : public ConverterTest {};

using Spoil = std::function<void(LumoApiObject&)>;

/// Spoils an object of one class.
template <class Object>
Spoil on(std::function<void(Object&)> spoil) {
  return [spoil](LumoApiObject& object) { spoil(static_cast<Object&>(object)); };
}

struct Fault {
  Spoil spoil;
  std::optional<const char*> logged;  // null: refused in silence
  const char* description;
};

constexpr std::size_t kMiB = 1'048'576;

template <class Object>
std::vector<Fault> tagFaults() {
  return {{on<Object>([](auto& o) { o.setTagName(letters(129)); }), "param error: tag name data is too big",
              "tagName: 129 UTF-16 code units, at most 128"},
      {on<Object>([](auto& o) { o.setMessageExt(letters(257)); }), "param error: message ext data is too big",
          "messageExt: 257 UTF-16 code units, at most 256"}};
}

template <class Object>
Fault bigPreview() {
  return {on<Object>([](auto& o) { o.setPreviewImageData(bytes(kMiB + 1)); }),
      "param error: preview image data is too big", "previewImageData: 1048577 bytes, at most 1048576"};
}

template <class Object>
std::vector<Fault> dataFaults(const char* nil, const char* tooBig) {
  return {{on<Object>([](auto& o) { o.setData(std::nullopt); }), nil, "data: missing or empty"},
      {on<Object>([](auto& o) { o.setData(Data()); }), nil, "data: missing or empty"},
      {on<Object>([](auto& o) { o.setData(bytes(5 * kMiB + 1)); }), tooBig,
          "data: 5242881 bytes, at most 5242880"}};
}

std::vector<Fault> operator+(std::vector<Fault> a, const std::vector<Fault>& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

/// The faults of one kind in the order in which they are looked for.
struct Kind {
  std::function<std::shared_ptr<LumoApiObject>()> fine;
  std::vector<Fault> faults;
};

const Value kNotJSON(Value::Dictionary{{"bytes", Data()}});

std::vector<Kind> kinds() {
  using Link = LumoApiURLObject;
  using Common = LumoApiCommonContentObject;
  using Faces = LumoApiImageArrayForFaceCollectionObject;
  using FeedVideo = LumoApiVideoForNimboObject;
  const char* nil = "param error: image data is nil";
  const char* tooBig = "param error: image data is too big";
  return {{[] { return Link::objectWithURL(URL::parse("https://a/"), "T", {}, {}, 0); },
              std::vector<Fault>{bigPreview<Link>(),
                  {on<Link>([](auto& o) { o.setTitle(std::nullopt); }), "param error: title is nil",
                      "title: missing or empty"},
                  {on<Link>([](auto& o) { o.setTitle(""), o.setCflag(9); }), "param error: title is nil",
                      "title: missing or empty"},
                  {on<Link>([](auto& o) { o.setUrl(std::nullopt); }), "param error: url is nil",
                      "url: missing or empty"},
                  {on<Link>([](auto& o) { o.setUrl(URL::parse("")); }), "param error: url is nil",
                      "url: missing or empty"},
                  {on<Link>([](auto& o) { o.setUrl(URL::parse(letters(1025))); }),
                      "param error: url is too long", "url: 1025 UTF-16 code units, at most 1024"}} +
                  tagFaults<Link>()},
      {[] { return LumoApiExtendObject::objectWithData(bytes(1), {}, {}, {}); },
          dataFaults<LumoApiExtendObject>("param error: data is nil", "param error: data is too big") +
              std::vector{bigPreview<LumoApiExtendObject>()} + tagFaults<LumoApiExtendObject>()},
      {[] { return LumoApiImageObject::objectWithData(bytes(1), {}, {}, {}); },
          dataFaults<LumoApiImageObject>(nil, tooBig) + std::vector{bigPreview<LumoApiImageObject>()} +
              tagFaults<LumoApiImageObject>()},
      {[] {
         auto image = std::make_shared<LumoApiWebImageObject>();
         image->setPreviewImageURL(URL::parse("https://a/"));
         return image;
       },
          std::vector<Fault>{
              {on<LumoApiWebImageObject>([](auto& o) { o.setPreviewImageURL(std::nullopt); }),
                  "param error: preview image url is nil", "previewImageURL: missing or empty"},
              {on<LumoApiWebImageObject>([](auto& o) { o.setPreviewImageURL(URL::parse("")); }),
                  "param error: preview image url is nil", "previewImageURL: missing or empty"}} +
              tagFaults<LumoApiWebImageObject>()},
      {[] {
         auto file = std::make_shared<LumoApiFileObject>();
         file->setData(bytes(1));
         return file;
       },
          dataFaults<LumoApiFileObject>(nil, "param error: file data is too big") +
              std::vector{bigPreview<LumoApiFileObject>()}},
      {[] {
         auto common = std::make_shared<Common>();
         common->setPreviewImageData(bytes(1));
         common->setTextArray(std::vector<std::string>{"t"});
         common->setPictureDataArray(std::vector{bytes(1)});
         return common;
       },
          std::vector<Fault>{{on<Common>([](auto& o) { o.setPreviewImageData(Data()); }), nil,
                                 "previewImageData: missing or empty"},
              {on<Common>([](auto& o) { o.setTextArray({}), o.setPictureDataArray(std::vector<Data>{}); }),
                  nil, "textArray: missing or empty"},
              bigPreview<Common>(),
              {on<Common>([](auto& o) { o.setTextArray(std::vector<std::string>(2)); }), {},
                  "textArray: 2 entries, at most 1"},
              {on<Common>([](auto& o) { o.setPictureDataArray(std::vector<Data>(2)); }), {},
                  "pictureDataArray: 2 entries, at most 1"},
              {on<Common>([](auto& o) { o.setTextArray(std::vector{letters(1537)}); }), {},
                  "textArray: 1537 UTF-16 code units, at most 1536"},
              {on<Common>([](auto& o) { o.setPictureDataArray(std::vector{bytes(5 * kMiB + 1)}); }), {},
                  "pictureDataArray: 5242881 bytes, at most 5242880"}} +
              tagFaults<Common>() +
              std::vector<Fault>{
                  {on<Common>([](auto& o) { o.setTextArray(std::vector<std::string>{"\xFF"}); }), {},
                      "textArray: holds something that cannot be serialised"}}},
      {[] {
         auto picture = std::make_shared<LumoApiImageForLumoAvatarObject>();
         picture->setData(bytes(1));
         return picture;
       },
          {{on<LumoApiImageForLumoAvatarObject>([](auto& o) { o.setData(Data()); }), nil,
               "data: missing or empty"},
              {on<LumoApiImageForLumoAvatarObject>([](auto& o) { o.setData(bytes(15 * kMiB + 1)); }), tooBig,
                  "data: 15728641 bytes, at most 15728640"}}},
      {[] {
         auto video = std::make_shared<LumoApiVideoForLumoAvatarObject>();
         video->setData(bytes(1));
         return video;
       },
          dataFaults<LumoApiVideoForLumoAvatarObject>(
              "param error: video data is nil", "param error: video data is too big than 5M.")},
      {[] {
         auto faces = std::make_shared<Faces>();
         faces->setImageDataArray(std::vector{bytes(1)});
         return faces;
       },
          {{on<Faces>([](auto& o) { o.setImageDataArray(std::nullopt); }), nil,
               "imageDataArray: missing or empty"},
              {on<Faces>([](auto& o) { o.setImageDataArray(std::vector<Data>{}); }),
                  "param error: image count <= 0", "imageDataArray: missing or empty"},
              {on<Faces>([](auto& o) { o.setImageDataArray(std::vector(10, bytes(2 * kMiB))); }),
                  "param error: image count > 9", "imageDataArray: 10 entries, at most 9"},
              {on<Faces>([](auto& o) {
                 o.setImageDataArray(std::vector{bytes(1), bytes(kMiB + 1), bytes(3 * kMiB)});
               }),
                  tooBig, "imageDataArray: 1048577 bytes, at most 1048576"},
              {on<Faces>([](auto& o) {
                 o.setImageDataArray(std::vector{bytes(kMiB), bytes(kMiB), bytes(kMiB), bytes(1)});
               }),
                  "param error: all image data is too big",
                  "imageDataArray: 3145729 bytes, at most 3145728"}}},
      {[] { return std::make_shared<LumoApiImageArrayForNimboObject>(); },
          {{on<LumoApiImageArrayForNimboObject>([](auto& o) { o.setExtMap(kNotJSON); }), {},
              "extMap: holds something that cannot be serialised"}}},
      {[] { return FeedVideo::objectWithVideoData(bytes(1), {}, {}); },
          {{on<FeedVideo>([](auto& o) { o.setAssetURL(std::nullopt), o.setVideoData(std::nullopt); }), {},
               "videoData: missing or empty"},
              {on<FeedVideo>([](auto& o) { o.setAssetURL(""), o.setVideoData(Data()); }), {},
                  "videoData: missing or empty"},
              {on<FeedVideo>([](auto& o) { o.setAssetURL("\xFF"); }), {}, "assetURL: not valid UTF-8"},
              {on<FeedVideo>([](auto& o) { o.setVideoData(bytes(50 * kMiB + 1)); }),
                  "param error: video data is too big", "videoData: 52428801 bytes, at most 52428800"},
              {on<FeedVideo>([](auto& o) { o.setExtMap(kNotJSON); }), {},
                  "extMap: holds something that cannot be serialised"}}},
      {[] { return std::make_shared<LumoApiExtraServiceObject>(); },
          {{on<LumoApiExtraServiceObject>([](auto& o) { o.setExtraInfo(kNotJSON); }), {},
              "extraInfo: holds something that cannot be serialised"}}},
      {[] { return std::make_shared<LumoApiCommonServiceObject>(); },
          {{on<LumoApiCommonServiceObject>([](auto& o) { o.setExtendInfo(kNotJSON); }), {},
              "extendInfo: holds something that cannot be serialised"}}},
      {[] {
         auto group = std::make_shared<LumoApiCreateLumoGroupProObject>();
         group->setSignString("s");
         return group;
       },
          {{on<lumo::GroupProObject>([](auto& o) { o.setSignString(std::nullopt); }), {},
               "signString: missing or empty"},
              {on<lumo::GroupProObject>([](auto& o) {
                 o.setQueryDictionary(lumo::StringDictionary{{"k", "\xFF"}});
               }),
                  {}, "queryDictionary: not valid UTF-8"},
              {on<lumo::GroupProObject>([](auto& o) {
                 o.setQueryDictionary(lumo::StringDictionary{{"a b", ""}});
               }),
                  {}, "queryDictionary: not a valid URL"}}},
      {[] {
         auto launch = std::make_shared<LumoApiLaunchMiniProgramObject>();
         launch->setMiniAppID("m");
         return launch;
       },
          {{on<LumoApiLaunchMiniProgramObject>([](auto& o) { o.setMiniAppID(""); }),
               "param error: miniAppID is nil", "miniAppID: missing or empty"},
              {on<LumoApiLaunchMiniProgramObject>([](auto& o) { o.setMiniAppID("\xFF"); }), {},
                  "miniAppID: not valid UTF-8"}}}};
}

TEST_F(Refusals, EachFaultAndEachPairOfFaults) {
  for (const Kind& kind : kinds()) {
    ASSERT_TRUE(send(kind.fine())) << log.front();
    store().setApiLargeData(before);
    for (std::size_t first = 0; first < kind.faults.size(); ++first) {
      for (std::size_t second = first; second < kind.faults.size(); ++second) {
        const auto object = kind.fine();
        // The earlier fault is planted last, so that two faults of one field leave that one.
        kind.faults[second].spoil(*object);
        kind.faults[first].spoil(*object);
        const Fault& expected = kind.faults[first];
        SCOPED_TRACE(std::string(expected.description) + " before " + kind.faults[second].description);
        EXPECT_FALSE(send(object));
        ASSERT_FALSE(log.empty());
        EXPECT_EQ(log.front().find("urlWithMessage, share with :"), 0u);
        std::erase_if(log, [](const std::string& line) { return line.find("param error") != 0; });
        EXPECT_EQ(log, expected.logged ? Log{*expected.logged} : Log{});
        EXPECT_EQ(refusal.description(), expected.description);
        EXPECT_TRUE(storeUntouched());
      }
    }
  }
}

TEST_F(Refusals, CommonContentCalledDirectlyChecksItsTitle) {
  LumoApiCommonContentObject common;
  common.setPreviewImageData(bytes(1));
  common.setTextArray(std::vector<std::string>{"t"});
  common.setTitle(letters(128));
  EXPECT_TRUE(Converter::urlWithCommonContentObject(common, 0, nullptr));
  store().setApiLargeData(before);
  log.clear();
  common.setTitle(letters(129));
  common.setTextArray(std::vector<std::string>(2));
  EXPECT_FALSE(Converter::urlWithCommonContentObject(common, 0, nullptr));
  EXPECT_EQ(log, Log{});
  EXPECT_TRUE(storeUntouched());
}

}  // namespace
