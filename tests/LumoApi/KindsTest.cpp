// Every kind of content: what it sends, what it stages, where it leads.

#include "platform/JSON.h"
#include "platform/KeyedArchiver.h"
#include "platform/Text.h"
#include "tests/LumoApi/ConverterTest.h"

namespace {

using C = Converter;
using Text = std::optional<std::string>;

const std::pair<std::string, Value> kCard{"pasted_kiva_data", base64("kiva")};
const std::string kShare = "mlumoapi://share/to_fri";
constexpr auto kLargest = ~std::uint64_t{0};

class Kinds : public ConverterTest {
 protected:
  Kinds() { values.isLumoSupportApiGeneralPastboard = true; }

  /// Sends the object with the card, as a message and by the operation of its kind, and checks where it
  /// leads, its pairs besides the common ones, and the record; an empty record stands for a store left alone.
  void expect(auto operation, const auto& object, const std::string& target, const std::string& own,
      const LumoApiLargeData& staged = {}, std::int32_t type = 0) {
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
  expect(C::urlWithTextObject, text, kShare, hello, {kCard});
  kiva.reset();
  expect(C::urlWithTextObject, text, kShare, hello);
  EXPECT_EQ(log, Log{"pasteboarditem count: 0"});
  EXPECT_TRUE(C::urlWithTextObject(*text, 0)) << "the card may be left out";

  values.isLumoSupportUrlForShareText = true;
  values.openId = "o1";
  text->setTitle("");
  text->setDescription("D");
  text->setTagName("");
  text->setMessageExt("m");
  text->setShareDestType(1);
  expect(C::urlWithTextObject, text, kShare,
      hello + "&objectlocation=url&title=&description=RA==&tagName=&messageExt=bQ==&openId=o1&shareType=0",
      {}, 5);
  text->setTagName("\xFF");
  text->setMessageExt("\xFF");
  text->setTitle("\xFF");
  text->setDescription("\xFF");
  values = {.scheme = "", .appName = "\xFF"};
  common = "src_type=app&version=1&callback_type=scheme&callback_name=";
  expect(C::urlWithTextObject, text, kShare, hello);  // what is not UTF-8 is left out; an empty scheme is one
}

TEST_F(Kinds, AnyTextSurvivesAndLimitsCountCodeUnits) {
  using namespace std::string_literals;
  std::string emoji;
  for (int i = 0; i < 768; ++i) emoji += "😀";
  for (const std::string& content :
      {"\"a\" & b = 50%\0end"s, "中文é e\u0301"s, "a\r\n\x7F"s, emoji, letters(1536)}) {
    const auto object = LumoApiTextObject::objectWithText(content);
    object->setTitle(letters(126) + "😀");
    object->setDescription(letters(510) + "😀");
    object->setTagName(letters(126) + "😀");
    object->setMessageExt(letters(254) + "😀");
    EXPECT_EQ(lumo::base64Decoded(pairsOf(send(object))["file_data"]), content);
  }
}

TEST_F(Kinds, Links) {
  const std::pair<std::uint64_t, std::string> words[] = {
      {0, "url"}, {1, "audio"}, {2, "video"}, {3, "news"}, {4, "unknown"}, {kLargest, "unknown"}};
  for (const auto& [code, word] : words) {
    expect(C::urlWithURLObject,
        LumoApiURLObject::objectWithURL(URL::parse("https://a/?b=c"), "Hi", {}, {}, code), kShare,
        "&objectlocation=pasteboard&title=SGk=&url=aHR0cHM6Ly9hLz9iPWM=&file_type=" + word, {kCard});
  }
  const auto video = LumoApiVideoObject::objectWithURL(URL::parse("https://a/"), {}, "D", bytes(3));
  video->setCflag(8);  // goes without a title
  video->setFlashURL(URL::parse("https://f/"));
  video->setPreviewImageURL(URL::parse("https://p/"));
  video->setTagName("t");
  video->setMessageExt("m");
  common += "&file_type=video&description=RA==&tagName=dA==&messageExt=bQ==&url=" + base64("https://a/") +
            "&flashurl=" + base64("https://f/") + "&previewimageUrl=" + base64("https://p/");
  const LumoApiLargeData staged{{"previewimagedata", bytes(3)}, kCard};
  expect(C::urlWithURLObject, video, kShare, "&objectlocation=pasteboard", staged);
  values.isLumoSupportUrlInsteadPastedboard = true;
  const std::string archive = lumo::base64Encoded(lumo::archivedData(Value(staged))->joined().view());
  expect(C::urlWithURLObject, video, kShare, "&objectlocation=url&pasteboard=" + archive);
  video->setTitle("");
  video->setPreviewImageData(std::nullopt);
  kiva.reset();
  expect(C::urlWithURLObject, video, kShare, "&title=&objectlocation=url&pasteboard=");
  video->setUrl(URL::parse("https://a/" + letters(1014)));
  EXPECT_TRUE(send(video)) << "1024 code units are not too long";
}

TEST_F(Kinds, DataPicturesAndFiles) {
  const Value list(Value::Array{bytes(1), Data()});
  const Data data = bytes(5'242'880), preview = bytes(1'048'576);
  const auto fill = [&](auto& o) {
    o.setData(data);
    o.setPreviewImageData(preview);
    o.setImageDataArray(lumo::listOf<Data>(list));
  };
  const LumoApiLargeData all{
      {"previewimagedata", preview}, {"file_data", data}, {"image_data_list", list}, kCard};
  common += "&objectlocation=pasteboard";
  const auto extend = made<LumoApiExtendObject>(fill);
  extend->setTagName("t");
  expect(C::urlWithExtendObject, extend, kShare, "&file_type=file&tagName=dA==", all);
  EXPECT_EQ(record().find("file_data")->asData()->data(), data.data()) << "staged, not copied";
  expect(C::urlWithImageObject, made<LumoApiImageObject>(fill), kShare, "&file_type=img", all);
  const auto file = made<LumoApiFileObject>(fill);
  for (const Text& name : {Text("cat.png"), Text(""), Text()}) {
    file->setFileName(name);
    expect(C::urlWithFileObject, file, kShare, "&file_type=localFile&fileName=" + name.value_or(""), all);
  }
  file->setFileName("a b&file_type=text");
  EXPECT_EQ(LumoApiURLDecoder::decoderWithUrl(send(file))->queryItem().find("file_type"), "localFile");

  kiva = card(std::nullopt);
  const auto image = LumoApiImageObject::objectWithData(data, Data(), "Hi", {});
  expect(C::urlWithImageObject, image, kShare,
      "&file_type=img&title=SGk=", {{"previewimagedata", Data()}, {"file_data", data}});
}

TEST_F(Kinds, WebImageStagesNothing) {
  const auto image =
      made<LumoApiWebImageObject>([](auto& o) { o.setPreviewImageURL(URL::parse("https://p/")); });
  image->setMessageExt("m");
  expect(C::urlWithWebImageObject, image, kShare,
      "&file_type=img&objectlocation=pasteboard&messageExt=bQ==&previewimageUrl=aHR0cHM6Ly9wLw==");
}

TEST_F(Kinds, CommonContent) {
  values.isLumoSupportUrlInsteadPastedboard = true;  // which makes no difference here
  LumoApiCommonContentObject object;
  object.setPreviewImageData(bytes(1'048'576));
  object.setTextArray(std::vector{letters(1536)});
  object.setTitle("Hi");
  object.setDescription("\xFF");
  const Value::Dictionary form{
      {"previewImageData", bytes(1'048'576)}, {"textArray", Value::Array{letters(1536)}}, {"title", "Hi"}};
  EXPECT_EQ(object.toDictionary(), form) << "without what is 0 or not UTF-8";
  const Data archive = lumo::archivedData(Value(form))->joined();
  expect(C::urlWithCommonContentObject, std::make_shared<LumoApiCommonContentObject>(object), kShare,
      "&file_type=common&objectlocation=pasteboard&title=SGk=", {{"file_data", archive}, kCard});
  object.setPictureDataArray(std::vector{bytes(5'242'880)});
  EXPECT_TRUE(C::urlWithCommonContentObject(object, 0));
  object.setTextArray(std::vector<std::string>());
  EXPECT_TRUE(C::urlWithCommonContentObject(object, 0));
}

TEST_F(Kinds, ProfilePicturesAndAuthorization) {
  const Data data = bytes(5'242'880), preview = bytes(2'000'000);
  const auto fill = [&](auto& o) {
    o.setData(data);
    o.setPreviewImageData(preview);
  };
  const LumoApiLargeData staged{{"previewimagedata", preview}, {"file_data", data}};
  common += "&objectlocation=pasteboard";
  expect(C::urlWithImageObjectForAvatar, made<LumoApiImageForLumoAvatarObject>(fill),
      "mlumoapi://profile/sdk_avatar_edit", "&file_type=img&shareType=1", staged, 7);
  expect(C::urlWithVideoObjectForAvatar, made<LumoApiVideoForLumoAvatarObject>(fill),
      "mlumoapi://profile/sdk_dynamic_avatar_edit", "&file_type=video&messagetype=responsefromapp", staged,
      4);
  const auto faces = made<LumoApiImageArrayForFaceCollectionObject>(
      [](auto& o) { o.setImageDataArray(std::vector(3, bytes(1'048'576))); });
  expect(C::urlWithImageObjectForFaceCollection, faces, "mlumoapi://profile/sdk_face_collection",
      "&file_type=img", {{"image_data_list", Value::Array(3, Value(bytes(1'048'576)))}});
  const auto auth = made<LumoApiAuthObject>([](auto& o) { o.setTitle("Hi"); });
  expect(C::urlWithAuthObject, auth, "mlumoapi://auth/sdk_check_auth",
      "&file_type=video&title=SGk=&shareType=0", {}, 5);
  EXPECT_EQ(log.back(), "pasteboarditem count: 0");
}

TEST_F(Kinds, FeedPictures) {
  for (const std::size_t count : {2u, 20u, 21u, 25u}) {
    std::vector<Data> pictures;
    while (pictures.size() < count) pictures.push_back(bytes(pictures.size()));
    const auto post = LumoApiImageArrayForNimboObject::objectWithimageDataArray(pictures, {}, {});
    pictures.resize(std::min<std::size_t>(count, 20));
    values.isLumoSupportUrlInsteadPastedboard = count == 20;  // which pictures make irrelevant
    expect(C::urlWithImageArrayForNimboObject, post, kShare, "&file_type=nimbo&objectlocation=pasteboard",
        {{"image_data_list", Value::Array(pictures.begin(), pictures.end())}});
    EXPECT_EQ(post->imageDataArray(), pictures);
  }
  const auto empty =
      LumoApiImageArrayForNimboObject::objectWithimageDataArray({}, "Hi", Value(Value::Dictionary{}));
  common += "&file_type=nimbo&title=SGk=&extMap=e30=";
  values.isLumoSupportUrlInsteadPastedboard = false;
  expect(C::urlWithImageArrayForNimboObject, empty, kShare, "&objectlocation=pasteboard");
  empty->setImageDataArray(std::vector<Data>());
  values.isLumoSupportUrlInsteadPastedboard = true;
  expect(C::urlWithImageArrayForNimboObject, empty, kShare, "&objectlocation=url");
}

TEST_F(Kinds, FeedVideo) {
  struct Case {
    Text asset;
    std::optional<Data> video;
    bool inURL;
    const char* own;
  };
  const Case cases[] = {
      {{}, bytes(52'428'800), true, "&objectlocation=pasteboard"},
      {"", bytes(1), false, "&objectlocation=pasteboard"},
      {"asset://1", bytes(60'000'000), true, "&video_assetURL=YXNzZXQ6Ly8x"},
      {"asset://1", Data(), false, "&video_assetURL=YXNzZXQ6Ly8x"},
      {"asset://1", {}, true, "&video_assetURL=YXNzZXQ6Ly8x&objectlocation=url"},
  };
  common += "&file_type=nimbo&extMap=" + base64(R"({"u":18446744073709551615,"path":"a\/b"})");
  for (const auto& [asset, video, inURL, own] : cases) {
    values.isLumoSupportUrlInsteadPastedboard = inURL;
    const auto post = LumoApiVideoForNimboObject::objectWithVideoData(
        video, {}, Value(Value::Dictionary{{"u", kLargest}, {"path", "a/b"}}));
    post->setAssetURL(asset);
    LumoApiLargeData staged;
    if (!lumo::isEmpty(video)) staged.set("file_data", *video);
    expect(C::urlWithVideoForNimboObject, post, kShare, own, staged);
  }
}

TEST_F(Kinds, Services) {
  values.openId = "store";
  values.uin = Value("1");
  common = "src_type=app&version=1";
  const auto service = made<LumoApiCommonServiceObject>([](auto& o) { o.setServiceID("7"); });
  const char* channel = "mlumoapi://open_connect/common_channel";
  service->setOpenID("abc");
  expect(C::urlWithCommonServiceObject, service, channel,
      "&callback_type=scheme&exsvr_id=7&callback_name=demo&openId=abc"
      "&exsvr_userinfo=eyJvcGVuSWQiOiJhYmMifQ==&thirdAppDisplayName=RGVtbw==",
      {}, 7);
  values = {.openId = "store"};
  service->setServiceID(std::nullopt);
  service->setOpenID("");
  service->setExtendInfo(Value("ignored"));
  expect(C::urlWithCommonServiceObject, service, channel,
      "&callback_type=scheme&exsvr_id=&exsvr_userinfo=" + base64(R"({"openId":""})"));

  const auto extra = made<LumoApiExtraServiceObject>([](auto& o) { o.setOpenID("abc"); });
  const Value base(Value::Dictionary{{"openId", "x"}, {"k", "v"}, {"exsvr_touin", "y"}});
  const auto expectExtra = [&](const char* own, const std::string& userInfo) {
    expect(C::urlWithExtraServiceObject, extra, "mlumoapi://profile/sdk_extend_service",
        own + ("&exsvr_userinfo=" + base64(userInfo)), {}, 7);
  };
  extra->setExtraInfo(base);
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
        scheme + "://thirdappgroup/bindgroup", onlyBind + both, {}, 7);
    expect(C::urlWithApiThirdAppJoinGroupObject, std::make_shared<LumoApiThirdAppJoinGroupObject>(join),
        scheme + "://thirdappgroup/joingroup", both, {}, 7);
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
  const auto fill = [](auto& o) {
    o.setQueryDictionary(lumo::StringDictionary{{"b", "x y"}, {"guild_avatar", "p%2Fq"}});
    o.setSignString("s+/=");
    o.setTitle("never sent");
  };
  const std::string guild = "mlumoguild://mlumoguild/guild", signature = "sig=s%2B%2F%3D";
  const auto join = made<LumoApiJoinLumoGroupProObject>(fill);
  expect(C::urlWithCreateGroupProObject, made<LumoApiCreateLumoGroupProObject>(fill), guild + "/create",
      "b=x%20y&guild_avatar=p%2Fq&" + signature, {}, 7);
  expect(
      C::urlWithJoinGroupProObject, join, guild + "/join", "b=x%20y&guild_avatar=p%2Fq&" + signature, {}, 7);
  join->setQueryDictionary(std::nullopt);
  EXPECT_EQ(send(join)->absoluteString(), guild + "/join?&" + signature);
}

TEST_F(Kinds, MiniProgram) {
  const auto launch = made<LumoApiLaunchMiniProgramObject>([](auto& o) { o.setMiniAppID("m1"); });
  const auto expectLaunch = [&](const std::string& own) {
    expect(
        C::urlWithApiLaunchMiniProgramObject, launch, "mlumoapi://profile/sdk_launch_mini_app", own, {}, 7);
  };
  common = "src_type=app&callback_type=scheme&mini_appid=m1&version=1";
  values.uin = Value("1");
  launch->setMiniPath("pages/index");
  expectLaunch("&mini_path=cGFnZXMvaW5kZXg=&mini_type=0&callback_name=demo&thirdAppDisplayName=RGVtbw==");
  values = {.appId = "100", .openId = "o1"};
  launch->setMiniprogramType(kLargest);
  for (const Text& path : {Text(), Text(""), Text("\xFF")}) {
    launch->setMiniPath(path);
    expectLaunch(
        "&mini_type=18446744073709551615&openId=o1&appid=100" + std::string(path == "" ? "&mini_path=" : ""));
  }
}

}  // namespace
