// Every kind of content: what it sends, what it stages, where it leads.

#include "platform/archive/KeyedArchiver.h"
#include "platform/text/Text.h"
#include "platform/values/JSON.h"
#include "tests/LumoApi/ConverterTest.h"

namespace {

using C = Converter;
using Text = std::optional<std::string>;

const std::pair<std::string, Value> kCard{"pasted_kiva_data", base64("kiva")};
constexpr auto kLargest = ~std::uint64_t{0};

class Kinds : public ConverterTest {
 protected:
  Kinds() { values.isLumoSupportApiGeneralPastboard = true; }

  /// Sends the object with the card, as a message and by the operation of its kind, and checks where it
  /// leads, its pairs besides the common ones, and the record; an empty record stands for a store left alone.
  void expect(auto operation, const auto& object, const std::string& own, const LumoApiLargeData& staged = {},
      std::int32_t type = 0, const std::string& target = "mlumoapi://share/to_fri") {
    SCOPED_TRACE(own);
    const auto viaMessage = send(object, type, kiva);
    store().setApiLargeData(before);
    log.clear();
    std::optional<URL> url;
    if constexpr (requires { operation(*object, type, kiva.get()); }) {
      url = operation(*object, type, kiva.get());
    } else {
      url = operation(*object, type);
    }
    EXPECT_EQ(url, viaMessage) << "the same message gives the same URL, byte for byte";
    EXPECT_EQ(targetOf(url), target) << refusal.description();
    EXPECT_EQ(pairsOf(url), pairs(common + own));
    EXPECT_EQ(record(), staged.empty() ? *before : staged);
    if (!staged.empty()) {
      EXPECT_EQ(log.back(), "pasteboarditem count: " + std::to_string(staged.size()));
    }
  }

  std::shared_ptr<LumoApiKivaObject> kiva = card("kiva");
  std::string common =
      "src_type=app&version=1&callback_type=scheme&callback_name=demo"
      "&thirdAppDisplayName=RGVtbw==&generalpastboard=1";
};

TEST_F(Kinds, Texts) {
  const auto text = LumoApiTextObject::objectWithText("hello");
  const std::string hello = "&file_type=text&file_data=aGVsbG8=";
  expect(C::urlWithTextObject, text, hello, {kCard});
  kiva.reset();
  expect(C::urlWithTextObject, text, hello);
  EXPECT_EQ(log, Log{"pasteboarditem count: 0"});
  EXPECT_TRUE(C::urlWithTextObject(*text, 0)) << "the card may be left out";

  values.isLumoSupportUrlForShareText = true;
  values.openId = "o1";
  fill(*text,
      {{"title", ""}, {"description", "D"}, {"tagName", ""}, {"messageExt", "m"}, {"shareDestType", 1}});
  expect(C::urlWithTextObject, text,
      hello + "&objectlocation=url&title=&description=RA==&tagName=&messageExt=bQ==&openId=o1&shareType=0",
      {}, 5);
  const char* none = "\xFF";
  fill(*text, {{"title", none}, {"description", none}, {"tagName", none}, {"messageExt", none}});
  values = {.scheme = "", .appName = "\xFF"};
  common = "src_type=app&version=1&callback_type=scheme&callback_name=";
  expect(C::urlWithTextObject, text, hello);  // what is not UTF-8 is left out; an empty scheme is one
}

TEST_F(Kinds, AnyTextSurvivesAndLimitsCountCodeUnits) {
  using namespace std::string_literals;
  std::string emoji;
  for (int i = 0; i < 768; ++i) emoji += "😀";
  for (const std::string& content :
      {"\"a\" & b = 50%\0end"s, "中文é e\u0301"s, "a\r\n\x7F"s, emoji, letters(1536)}) {
    const auto object =
        filled<LumoApiTextObject>({{"title", letters(126) + "😀"}, {"description", letters(510) + "😀"},
            {"tagName", letters(126) + "😀"}, {"messageExt", letters(254) + "😀"}, {"text", content}});
    EXPECT_EQ(lumo::base64Decoded(pairsOf(send(object))["file_data"]), content);
  }
}

TEST_F(Kinds, Links) {
  const std::pair<std::uint64_t, std::string> words[] = {
      {0, "url"}, {1, "audio"}, {2, "video"}, {3, "news"}, {4, "unknown"}, {kLargest, "unknown"}};
  for (const auto& [code, word] : words) {
    expect(C::urlWithURLObject,
        LumoApiURLObject::objectWithURL(URL::parse("https://a/?b=c"), "Hi", {}, {}, code),
        "&objectlocation=pasteboard&title=SGk=&url=aHR0cHM6Ly9hLz9iPWM=&file_type=" + word, {kCard});
  }
  const auto video = LumoApiVideoObject::objectWithURL(URL::parse("https://a/"), {}, "D", bytes(3));
  fill(*video, {{"cflag", 8}, {"tagName", "t"}, {"messageExt", "m"}});  // these flags go without a title
  video->setFlashURL(URL::parse("https://f/"));
  video->setPreviewImageURL(URL::parse("https://p/"));
  common += "&file_type=video&description=RA==&tagName=dA==&messageExt=bQ==&url=" + base64("https://a/") +
            "&flashurl=" + base64("https://f/") + "&previewimageUrl=" + base64("https://p/");
  const LumoApiLargeData staged{{"previewimagedata", bytes(3)}, kCard};
  expect(C::urlWithURLObject, video, "&objectlocation=pasteboard", staged);
  values.isLumoSupportUrlInsteadPastedboard = true;
  const std::string archive = lumo::base64Encoded(lumo::archivedData(Value(staged))->joined().view());
  expect(C::urlWithURLObject, video, "&objectlocation=url&pasteboard=" + archive);
  video->setTitle("");
  video->setPreviewImageData(std::nullopt);
  kiva.reset();
  expect(C::urlWithURLObject, video, "&title=&objectlocation=url&pasteboard=");
  video->setUrl(URL::parse("https://a/" + letters(1014)));
  EXPECT_TRUE(send(video)) << "1024 code units are not too long";
}

TEST_F(Kinds, DataPicturesAndFiles) {
  const Data data = bytes(5'242'880), preview = bytes(1'048'576);
  const Value list(Value::Array{bytes(1), Data()});
  const Fields fields{{"data", data}, {"previewImageData", preview}, {"imageDataArray", list}};
  const LumoApiLargeData all{
      {"previewimagedata", preview}, {"file_data", data}, {"image_data_list", list}, kCard};
  common += "&objectlocation=pasteboard";
  const auto extend = filled<LumoApiExtendObject>(fields);
  extend->setTagName("t");
  expect(C::urlWithExtendObject, extend, "&file_type=file&tagName=dA==", all);
  EXPECT_EQ(record().find("file_data")->asData()->data(), data.data()) << "staged, not copied";
  const auto image = filled<LumoApiImageObject>(fields);
  expect(C::urlWithImageObject, image, "&file_type=img", all);
  const auto file = filled<LumoApiFileObject>(fields);
  for (const Text& name : {Text("cat.png"), Text(""), Text()}) {
    file->setFileName(name);
    expect(C::urlWithFileObject, file, "&file_type=localFile&fileName=" + name.value_or(""), all);
  }
  file->setFileName("a b&file_type=text");
  EXPECT_EQ(LumoApiURLDecoder::decoderWithUrl(send(file))->queryItem().find("file_type"), "localFile");
  kiva = card(std::nullopt);
  image->setImageDataArray(std::nullopt);
  image->setPreviewImageData(Data());
  expect(C::urlWithImageObject, image, "&file_type=img", {{"previewimagedata", Data()}, {"file_data", data}});
}

TEST_F(Kinds, WebImageStagesNothing) {
  const auto image = filled<LumoApiWebImageObject>({{"previewImageURL", "https://p/"}, {"messageExt", "m"}});
  expect(C::urlWithWebImageObject, image,
      "&file_type=img&objectlocation=pasteboard&messageExt=bQ==&previewimageUrl=aHR0cHM6Ly9wLw==");
}

TEST_F(Kinds, CommonContent) {
  values.isLumoSupportUrlInsteadPastedboard = true;  // which makes no difference here
  const Fields form{
      {"previewImageData", bytes(1'048'576)}, {"textArray", Value::Array{letters(1536)}}, {"title", "Hi"}};
  const auto object = filled<LumoApiCommonContentObject>(form);
  object->setDescription("\xFF");
  EXPECT_EQ(object->toDictionary(), form) << "without what is 0 or not UTF-8";
  expect(C::urlWithCommonContentObject, object, "&file_type=common&objectlocation=pasteboard&title=SGk=",
      {{"file_data", lumo::archivedData(Value(form))->joined()}, kCard});
  object->setPictureDataArray(std::vector{bytes(5'242'880)});
  EXPECT_TRUE(send(object));
  object->setTextArray(std::vector<std::string>());
  EXPECT_TRUE(send(object));
}

TEST_F(Kinds, ProfilePicturesAndAuthorization) {
  const Data data = bytes(5'242'880), preview = bytes(2'000'000);
  const Fields fields{{"data", data}, {"previewImageData", preview}, {"title", "Hi"}};
  const LumoApiLargeData staged{{"previewimagedata", preview}, {"file_data", data}};
  common += "&objectlocation=pasteboard&title=SGk=";
  expect(C::urlWithImageObjectForAvatar, filled<LumoApiImageForLumoAvatarObject>(fields),
      "&file_type=img&shareType=1", staged, 7, "mlumoapi://profile/sdk_avatar_edit");
  expect(C::urlWithVideoObjectForAvatar, filled<LumoApiVideoForLumoAvatarObject>(fields),
      "&file_type=video&messagetype=responsefromapp", staged, 4,
      "mlumoapi://profile/sdk_dynamic_avatar_edit");
  const Value list(Value::Array(3, bytes(1'048'576)));
  expect(C::urlWithImageObjectForFaceCollection,
      filled<LumoApiImageArrayForFaceCollectionObject>({{"imageDataArray", list}, {"title", "Hi"}}),
      "&file_type=img", {{"image_data_list", list}}, 0, "mlumoapi://profile/sdk_face_collection");
  expect(C::urlWithAuthObject, filled<LumoApiAuthObject>({{"title", "Hi"}}), "&file_type=video&shareType=0",
      {}, 5, "mlumoapi://auth/sdk_check_auth");
  EXPECT_EQ(log.back(), "pasteboarditem count: 0");
}

TEST_F(Kinds, FeedPictures) {
  for (const std::size_t count : {2u, 20u, 21u, 25u}) {
    std::vector<Data> pictures;
    while (pictures.size() < count) pictures.push_back(bytes(pictures.size()));
    const auto post = LumoApiImageArrayForNimboObject::objectWithimageDataArray(pictures, {}, {});
    pictures.resize(std::min<std::size_t>(count, 20));
    values.isLumoSupportUrlInsteadPastedboard = count == 20;  // which pictures make irrelevant
    expect(C::urlWithImageArrayForNimboObject, post, "&file_type=nimbo&objectlocation=pasteboard",
        {{"image_data_list", Value::Array(pictures.begin(), pictures.end())}});
    EXPECT_EQ(post->imageDataArray(), pictures);
  }
  const auto empty =
      LumoApiImageArrayForNimboObject::objectWithimageDataArray({}, "Hi", Value(Value::Dictionary{}));
  common += "&file_type=nimbo&title=SGk=&extMap=e30=";
  expect(C::urlWithImageArrayForNimboObject, empty, "&objectlocation=pasteboard");
  empty->setImageDataArray(std::vector<Data>());
  values.isLumoSupportUrlInsteadPastedboard = true;
  expect(C::urlWithImageArrayForNimboObject, empty, "&objectlocation=url");
}

TEST_F(Kinds, FeedVideo) {
  struct Case {
    Text asset;
    std::optional<Data> video;
    bool inURL;
    const char* own;
  };
  const Case cases[] = {{{}, bytes(52'428'800), true, "&objectlocation=pasteboard"},
      {"", bytes(1), false, "&objectlocation=pasteboard"},
      {"asset://1", bytes(60'000'000), true, "&video_assetURL=YXNzZXQ6Ly8x"},
      {"asset://1", Data(), false, "&video_assetURL=YXNzZXQ6Ly8x"},
      {"asset://1", {}, true, "&video_assetURL=YXNzZXQ6Ly8x&objectlocation=url"}};
  common += "&file_type=nimbo&extMap=" + base64(R"({"u":18446744073709551615,"path":"a\/b"})");
  for (const auto& [asset, video, inURL, own] : cases) {
    values.isLumoSupportUrlInsteadPastedboard = inURL;
    const auto post = LumoApiVideoForNimboObject::objectWithVideoData(
        video, {}, Value(Value::Dictionary{{"u", kLargest}, {"path", "a/b"}}));
    post->setAssetURL(asset);
    LumoApiLargeData staged;
    if (!lumo::isEmpty(video)) staged.set("file_data", *video);
    expect(C::urlWithVideoForNimboObject, post, own, staged);
  }
}

TEST_F(Kinds, Services) {
  values.openId = "store";
  values.uin = Value("1");
  common = "src_type=app&version=1";
  const auto service = filled<LumoApiCommonServiceObject>({{"serviceID", "7"}, {"openID", "abc"}});
  const auto expectService = [&](const std::string& own) {
    expect(C::urlWithCommonServiceObject, service, own, {}, 7, "mlumoapi://open_connect/common_channel");
  };
  expectService(
      "&callback_type=scheme&exsvr_id=7&callback_name=demo&openId=abc&thirdAppDisplayName=RGVtbw=="
      "&exsvr_userinfo=eyJvcGVuSWQiOiJhYmMifQ==");
  values = {.openId = "store"};
  service->setServiceID(std::nullopt);
  service->setOpenID("");
  service->setExtendInfo(Value("ignored"));
  expectService("&callback_type=scheme&exsvr_id=&exsvr_userinfo=" + base64(R"({"openId":""})"));

  const Value base(Value::Dictionary{{"openId", "x"}, {"k", "v"}, {"exsvr_touin", "y"}});
  const auto extra = filled<LumoApiExtraServiceObject>({{"openID", "abc"}, {"extraInfo", base}});
  const auto expectExtra = [&](const char* own, const std::string& userInfo) {
    expect(C::urlWithExtraServiceObject, extra, own + ("&exsvr_userinfo=" + base64(userInfo)), {}, 7,
        "mlumoapi://profile/sdk_extend_service");
  };
  expectExtra("&exsvr_id=&openId=store", R"({"openId":"abc","k":"v","exsvr_touin":""})");
  extra->setServiceID("8");
  extra->setToUin("u");
  expectExtra("&exsvr_id=8&openId=store", R"({"openId":"abc","k":"v","exsvr_touin":"u"})");
  EXPECT_EQ(extra->extraInfo(), base) << "the object's own stays";
  values = {};
  extra->setExtraInfo(Value(Value::Array{1}));
  expectExtra("&exsvr_id=8", R"({"openId":"abc","exsvr_touin":"u"})");
}

TEST_F(Kinds, ThirdAppGroups) {
  LumoApiThirdAppBindGroupObject bind;
  LumoApiThirdAppJoinGroupObject join;
  const auto expectBoth = [&](const std::string& scheme, const std::string& onlyBind,
                              const std::string& both) {
    expect(C::urlWithApiThirdAppBindGroupObject, std::make_shared<LumoApiThirdAppBindGroupObject>(bind),
        onlyBind + both, {}, 7, scheme + "://thirdappgroup/bindgroup");
    expect(C::urlWithApiThirdAppJoinGroupObject, std::make_shared<LumoApiThirdAppJoinGroupObject>(join), both,
        {}, 7, scheme + "://thirdappgroup/joingroup");
  };
  values = {.uin = Value("1"), .isLumoSupportApiGeneralPastboard = true};
  common = "";
  expectBoth("mlumothirdappgroup", "", "");
  values = {.scheme = "demo", .appName = "Demo", .appId = "100", .openId = "o1"};
  common = "openId=o1&appid=100&thirdAppDisplayName=RGVtbw==";
  bind.setUnionID("u1");
  join.setUnionID("u1");
  const std::string source = "&source=external&callback_type=scheme&src_type=app&version=1&callback_name=";
  expectBoth("mlumothirdappgroup", "&displayName=RGVtbw==", "&unionid=u1" + source + "demo");
  values.scheme = "";
  bind.setShareDestType(1);
  join.setShareDestType(1);
  bind.setAppDisplayName("App");
  expectBoth("teskthirdappgroup", "&displayName=QXBw", "&unionid=u1" + source);
  values.scheme.reset();
  bind.setUnionID("");
  join.setUnionID("");
  bind.setAppDisplayName("");
  expectBoth("teskthirdappgroup", "&unionid=&displayName=", "");
}

TEST_F(Kinds, GroupPro) {
  values.appId = values.openId = "never sent";
  common = "";
  const Fields fields{{"queryDictionary", Fields{{"b", "x y"}, {"guild_avatar", "p%2Fq"}}},
      {"signString", "s+/="}, {"title", "never sent"}};
  const std::string guild = "mlumoguild://mlumoguild/guild", signature = "sig=s%2B%2F%3D";
  const std::string query = "b=x%20y&guild_avatar=p%2Fq&" + signature;
  const auto create = filled<LumoApiCreateLumoGroupProObject>(fields);
  const auto join = filled<LumoApiJoinLumoGroupProObject>(fields);
  expect(C::urlWithCreateGroupProObject, create, query, {}, 7, guild + "/create");
  expect(C::urlWithJoinGroupProObject, join, query, {}, 7, guild + "/join");
  join->setQueryDictionary(std::nullopt);
  EXPECT_EQ(send(join)->absoluteString(), guild + "/join?&" + signature);
  join->setSignString("");
  EXPECT_EQ(send(join)->absoluteString(), guild + "/join?&sig=");
}

TEST_F(Kinds, MiniProgram) {
  const auto launch =
      filled<LumoApiLaunchMiniProgramObject>({{"miniAppID", "m1"}, {"miniPath", "pages/index"}});
  const auto expectLaunch = [&](const std::string& own) {
    expect(
        C::urlWithApiLaunchMiniProgramObject, launch, own, {}, 7, "mlumoapi://profile/sdk_launch_mini_app");
  };
  common = "src_type=app&callback_type=scheme&mini_appid=m1&version=1";
  values.uin = Value("1");
  expectLaunch("&mini_path=cGFnZXMvaW5kZXg=&mini_type=0&callback_name=demo&thirdAppDisplayName=RGVtbw==");
  values = {.appId = "100", .openId = "o1"};
  launch->setMiniprogramType(2);
  for (const Text& path : {Text(), Text(""), Text("\xFF")}) {
    launch->setMiniPath(path);
    expectLaunch(std::string("&mini_type=2&openId=o1&appid=100") + (path == "" ? "&mini_path=" : ""));
  }
}

}  // namespace
