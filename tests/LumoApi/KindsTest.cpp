// Every kind of content but texts: what it sends, what it stages, where it leads.

#include "platform/JSON.h"
#include "platform/KeyedArchiver.h"
#include "platform/Text.h"
#include "tests/LumoApi/ConverterTest.h"

namespace {

class Kinds : public ConverterTest {
 protected:
  Kinds() { values.isLumoSupportApiGeneralPastboard = true; }

  /// The pairs without what every share carries here.
  static Pairs own(Pairs pairs) {
    for (const char* key : {"src_type", "version", "callback_type", "callback_name", "thirdAppDisplayName",
             "generalpastboard"}) {
      EXPECT_EQ(pairs.erase(key), 1u) << key;
    }
    return pairs;
  }
};

template <class Object>
std::shared_ptr<Object> titled(const char* title = "Hi") {
  auto object = std::make_shared<Object>();
  if (title) object->setTitle(title);
  return object;
}

TEST_F(Kinds, Links) {
  const std::pair<std::uint64_t, const char*> words[] = {
      {0, "url"}, {1, "audio"}, {2, "video"}, {3, "news"}, {4, "unknown"}, {~std::uint64_t{0}, "unknown"}};
  for (const auto& [code, word] : words) {
    const auto link =
        LumoApiURLObject::objectWithURL(URL::parse("https://a.example/?b=c"), "Hi", {}, {}, code);
    EXPECT_EQ(own(pairsOf(send(link))), (Pairs{{"file_type", word}, {"url", base64("https://a.example/?b=c")},
                                            {"objectlocation", "pasteboard"}, {"title", "SGk="}}));
    EXPECT_TRUE(storeUntouched());
  }
  const auto video = LumoApiVideoObject::objectWithURL(URL::parse("https://a.example/"), {}, "D", bytes(3));
  video->setCflag(8);  // goes without a title
  video->setFlashURL(URL::parse("https://f.example/"));
  video->setPreviewImageURL(URL::parse("https://p.example/"));
  video->setTagName("t");
  video->setMessageExt("m");
  Pairs expected{{"file_type", "video"}, {"url", base64("https://a.example/")},
      {"objectlocation", "pasteboard"}, {"description", base64("D")},
      {"flashurl", base64("https://f.example/")}, {"previewimageUrl", base64("https://p.example/")},
      {"tagName", base64("t")}, {"messageExt", base64("m")}};
  EXPECT_EQ(own(pairsOf(send(video, 0, card("kiva")))), expected);
  const LumoApiLargeData staged{{"previewimagedata", bytes(3)}, {"pasted_kiva_data", base64("kiva")}};
  EXPECT_EQ(record(), staged);

  store().setApiLargeData(before);
  values.isLumoSupportUrlInsteadPastedboard = true;
  Pairs pairs = own(pairsOf(send(video, 0, card("kiva"))));
  const auto archive = lumo::base64DecodedData(pairs["pasteboard"]);
  EXPECT_EQ(lumo::unarchivedValue(*archive), Value(staged));
  EXPECT_TRUE(storeUntouched());
  pairs.erase("pasteboard");
  expected["objectlocation"] = "url";
  EXPECT_EQ(pairs, expected);
  video->setTitle("");
  video->setPreviewImageData(std::nullopt);
  pairs = pairsOf(send(video));
  EXPECT_EQ(pairs.at("title"), "");
  EXPECT_EQ(pairs.at("pasteboard"), "");
}

TEST_F(Kinds, LinkLengthCountsCodeUnits) {
  const auto link = titled<LumoApiURLObject>();
  link->setUrl(URL::parse("https://a/" + letters(1014)));
  EXPECT_TRUE(send(link));
  link->setUrl(URL::parse("https://a/" + letters(1015)));
  EXPECT_FALSE(send(link));
  EXPECT_EQ(refusal.description(), "url: 1025 UTF-16 code units, at most 1024");
}

TEST_F(Kinds, DataImageAndFile) {
  const auto image = LumoApiImageObject::objectWithData(bytes(3), {}, "Hi", {});
  EXPECT_EQ(own(pairsOf(send(image))),
      (Pairs{{"file_type", "img"}, {"objectlocation", "pasteboard"}, {"title", "SGk="}}));
  EXPECT_EQ(record(), (LumoApiLargeData{{"file_data", bytes(3)}}));

  const auto data = LumoApiExtendObject::objectWithData(bytes(5'242'880), bytes(1'048'576), {}, {});
  data->setImageDataArray(std::vector{bytes(1), Data()});
  data->setTagName("t");
  EXPECT_EQ(own(pairsOf(send(data, 0, card("kiva")))),
      (Pairs{{"file_type", "file"}, {"objectlocation", "pasteboard"}, {"tagName", base64("t")}}));
  EXPECT_EQ(record(),
      (LumoApiLargeData{{"file_data", *data->data()}, {"previewimagedata", *data->previewImageData()},
          {"image_data_list", Value::Array{bytes(1), Data()}}, {"pasted_kiva_data", base64("kiva")}}));
  EXPECT_EQ(record().find("file_data")->asData()->data(), data->data()->data()) << "staged, not copied";

  const auto file = std::make_shared<LumoApiFileObject>();
  file->setData(bytes(10));
  for (const std::optional<std::string>& name : {std::optional<std::string>("cat.png"), {""}, {}}) {
    file->setFileName(name);
    EXPECT_EQ(own(pairsOf(send(file, 0, card(std::nullopt)))),
        (Pairs{
            {"file_type", "localFile"}, {"objectlocation", "pasteboard"}, {"fileName", name.value_or("")}}));
    EXPECT_EQ(record(), (LumoApiLargeData{{"file_data", bytes(10)}}));
  }
  file->setFileName("a b&file_type=text");
  EXPECT_EQ(LumoApiURLDecoder::decoderWithUrl(send(file))->queryItem().find("file_type"), "localFile");
}

TEST_F(Kinds, WebImageStagesNothing) {
  const auto image = titled<LumoApiWebImageObject>();
  image->setPreviewImageURL(URL::parse("https://p.example/x.png"));
  image->setMessageExt("m");
  EXPECT_EQ(own(pairsOf(send(image, 0, card("kiva")))),
      (Pairs{{"file_type", "img"}, {"objectlocation", "pasteboard"},
          {"previewimageUrl", base64("https://p.example/x.png")}, {"messageExt", base64("m")},
          {"title", "SGk="}}));
  EXPECT_TRUE(storeUntouched());
}

TEST_F(Kinds, CommonContent) {
  const auto object = titled<LumoApiCommonContentObject>();
  object->setPreviewImageData(bytes(1'048'576));
  object->setTextArray(std::vector{letters(1536)});
  values.isLumoSupportUrlInsteadPastedboard = true;
  EXPECT_EQ(own(pairsOf(send(object, 0, card("kiva")))),
      (Pairs{{"file_type", "common"}, {"objectlocation", "pasteboard"}, {"title", "SGk="}}));
  EXPECT_EQ(record().size(), 2u);
  EXPECT_EQ(record().find("pasted_kiva_data")->asString()->substr(), base64("kiva"));
  const LumoApiLargeData staged = record();
  EXPECT_EQ(static_cast<LumoApiObject&>(*LumoApiCommonContentObject::objectWithDictionary(&staged)), *object);
  object->setPictureDataArray(std::vector{bytes(5'242'880)});
  EXPECT_TRUE(send(object));
  object->setTextArray(std::vector<std::string>{});
  EXPECT_TRUE(send(object));
}

TEST_F(Kinds, ProfilePicturesAndAuthorization) {
  const auto picture = titled<LumoApiImageForLumoAvatarObject>();
  picture->setData(bytes(5'242'880));
  picture->setPreviewImageData(bytes(2'000'000));
  auto url = send(picture, 7, card("kiva"));
  EXPECT_EQ(targetOf(url), "mlumoapi://profile/sdk_avatar_edit");
  const Pairs base{{"objectlocation", "pasteboard"}, {"title", "SGk="}};
  const auto with = [&](const char* word, Pairs pairs) {
    pairs.insert(base.begin(), base.end());
    pairs["file_type"] = word;
    return pairs;
  };
  EXPECT_EQ(own(pairsOf(url)), with("img", {{"shareType", "1"}}));
  EXPECT_EQ(
      record(), (LumoApiLargeData{{"previewimagedata", bytes(2'000'000)}, {"file_data", bytes(5'242'880)}}));

  const auto video = titled<LumoApiVideoForLumoAvatarObject>();
  video->setData(bytes(5'242'880));
  url = send(video, 4);
  EXPECT_EQ(targetOf(url), "mlumoapi://profile/sdk_dynamic_avatar_edit");
  EXPECT_EQ(own(pairsOf(url)), with("video", {{"messagetype", "responsefromapp"}}));
  EXPECT_EQ(record(), (LumoApiLargeData{{"file_data", bytes(5'242'880)}}));

  const auto faces = titled<LumoApiImageArrayForFaceCollectionObject>();
  faces->setImageDataArray(std::vector(3, bytes(1'048'576)));
  url = send(faces);
  EXPECT_EQ(targetOf(url), "mlumoapi://profile/sdk_face_collection");
  EXPECT_EQ(own(pairsOf(url)), with("img", {}));
  EXPECT_EQ(record(), (LumoApiLargeData{{"image_data_list", Value::Array(3, Value(bytes(1'048'576)))}}));

  store().setApiLargeData(before);
  url = send(titled<LumoApiAuthObject>(), 5);
  EXPECT_EQ(targetOf(url), "mlumoapi://auth/sdk_check_auth");
  EXPECT_EQ(own(pairsOf(url)), with("video", {{"shareType", "0"}}));
  EXPECT_EQ(log.back(), "pasteboarditem count: 0");
  EXPECT_TRUE(storeUntouched());
}

TEST_F(Kinds, FeedPictures) {
  std::vector<Data> pictures;
  for (std::size_t i = 1; i <= 25; ++i) pictures.push_back(bytes(i));
  for (const std::size_t count : {2u, 20u, 21u, 25u}) {
    const auto post = std::make_shared<LumoApiImageArrayForNimboObject>();
    const std::vector<Data> given(pictures.begin(), pictures.begin() + static_cast<std::ptrdiff_t>(count));
    const std::vector<Data> sent(
        given.begin(), given.begin() + static_cast<std::ptrdiff_t>(std::min<std::size_t>(count, 20)));
    post->setImageDataArray(given);
    values.isLumoSupportUrlInsteadPastedboard = count == 20;  // which pictures make irrelevant
    EXPECT_EQ(own(pairsOf(send(post))), (Pairs{{"file_type", "nimbo"}, {"objectlocation", "pasteboard"}}));
    EXPECT_EQ(record(), (LumoApiLargeData{{"image_data_list", Value::Array(sent.begin(), sent.end())}}));
    EXPECT_EQ(post->imageDataArray(), sent);
  }
  store().setApiLargeData(before);
  const auto empty = titled<LumoApiImageArrayForNimboObject>();
  empty->setExtMap(Value(Value::Dictionary{}));
  for (const bool fromURL : {false, true}) {
    values.isLumoSupportUrlInsteadPastedboard = fromURL;
    EXPECT_EQ(own(pairsOf(send(empty))),
        (Pairs{{"file_type", "nimbo"}, {"objectlocation", fromURL ? "url" : "pasteboard"}, {"title", "SGk="},
            {"extMap", "e30="}}));
    empty->setImageDataArray(std::vector<Data>{});
  }
  EXPECT_TRUE(storeUntouched());
}

TEST_F(Kinds, FeedVideo) {
  struct Case {
    std::optional<std::string> asset;
    std::optional<Data> video;
    bool fromURL;
    std::optional<std::string> location;
  };
  const Case cases[] = {{{}, bytes(52'428'800), true, "pasteboard"}, {"", bytes(1), false, "pasteboard"},
      {"asset://1", bytes(60'000'000), true, {}}, {"asset://1", Data(), false, {}},
      {"asset://1", {}, true, "url"}};
  for (const Case& c : cases) {
    store().setApiLargeData(before);
    values.isLumoSupportUrlInsteadPastedboard = c.fromURL;
    const auto post = std::make_shared<LumoApiVideoForNimboObject>();
    post->setAssetURL(c.asset);
    post->setVideoData(c.video);
    post->setExtMap(Value(Value::Dictionary{{"u", ~std::uint64_t{0}}, {"path", "a/b"}}));
    Pairs expected{{"file_type", "nimbo"}, {"extMap", base64(R"({"u":18446744073709551615,"path":"a\/b"})")}};
    if (c.location) expected["objectlocation"] = *c.location;
    if (!lumo::isEmpty(c.asset)) expected["video_assetURL"] = base64(*c.asset);
    EXPECT_EQ(own(pairsOf(send(post))), expected);
    if (lumo::isEmpty(c.video)) {
      EXPECT_TRUE(storeUntouched());
    } else {
      EXPECT_EQ(record().size(), 1u);
      EXPECT_EQ(record().find("file_data")->asData()->data(), c.video->data()) << "staged, not copied";
    }
  }
}

Value userInfoOf(const Pairs& pairs) {
  return lumo::parseJSON(*lumo::base64Decoded(pairs.at("exsvr_userinfo"))).value();
}

TEST_F(Kinds, Services) {
  values = {.scheme = "demo", .appName = "Demo"};
  const auto common = std::make_shared<LumoApiCommonServiceObject>();
  common->setServiceID("7");
  common->setOpenID("abc");
  auto url = send(common, 7);
  EXPECT_EQ(targetOf(url), "mlumoapi://open_connect/common_channel");
  EXPECT_EQ(pairsOf(url),
      (Pairs{{"src_type", "app"}, {"version", "1"}, {"callback_type", "scheme"}, {"exsvr_id", "7"},
          {"callback_name", "demo"}, {"openId", "abc"}, {"exsvr_userinfo", "eyJvcGVuSWQiOiJhYmMifQ=="},
          {"thirdAppDisplayName", "RGVtbw=="}}));
  values = {.openId = "store", .uin = Value("1"), .isLumoSupportApiGeneralPastboard = true};
  common->setServiceID(std::nullopt);
  common->setOpenID("");
  common->setExtendInfo(Value("ignored"));
  EXPECT_EQ(pairsOf(send(common)), (Pairs{{"src_type", "app"}, {"version", "1"}, {"callback_type", "scheme"},
                                       {"exsvr_id", ""}, {"exsvr_userinfo", base64(R"({"openId":""})")}}));

  const auto extra = std::make_shared<LumoApiExtraServiceObject>();
  extra->setOpenID("abc");
  extra->setTitle("Hi");
  extra->setExtraInfo(Value(Value::Dictionary{{"openId", "x"}, {"k", "v"}}));
  url = send(extra, 7);
  EXPECT_EQ(targetOf(url), "mlumoapi://profile/sdk_extend_service");
  Pairs pairs = pairsOf(url);
  EXPECT_EQ(userInfoOf(pairs), Value(Value::Dictionary{{"k", "v"}, {"openId", "abc"}, {"exsvr_touin", ""}}));
  pairs.erase("exsvr_userinfo");
  EXPECT_EQ(pairs, (Pairs{{"src_type", "app"}, {"version", "1"}, {"exsvr_id", ""}, {"openId", "store"},
                       {"title", "SGk="}}));
  EXPECT_EQ(*extra->extraInfo()->asDictionary()->find("openId"), Value("x")) << "the object's own stays";
  values.openId.reset();
  extra->setExtraInfo(Value(Value::Array{1}));
  extra->setToUin("u");
  pairs = pairsOf(send(extra));
  EXPECT_EQ(userInfoOf(pairs), Value(Value::Dictionary{{"openId", "abc"}, {"exsvr_touin", "u"}}));
  EXPECT_FALSE(pairs.contains("openId"));
}

TEST_F(Kinds, ThirdAppGroups) {
  values = {.scheme = "demo",
      .appName = "Demo",
      .appId = "100",
      .openId = "o1",
      .uin = Value("1"),
      .isLumoSupportApiGeneralPastboard = true};
  const auto bind = std::make_shared<LumoApiThirdAppBindGroupObject>();
  bind->setUnionID("u1");
  auto url = send(bind, 7);
  EXPECT_EQ(targetOf(url), "mlumothirdappgroup://thirdappgroup/bindgroup");
  Pairs expected{{"openId", "o1"}, {"appid", "100"}, {"unionid", "u1"}, {"displayName", "RGVtbw=="},
      {"source", "external"}, {"callback_type", "scheme"}, {"callback_name", "demo"}, {"src_type", "app"},
      {"version", "1"}, {"thirdAppDisplayName", "RGVtbw=="}};
  EXPECT_EQ(pairsOf(url), expected);
  const auto join = std::make_shared<LumoApiThirdAppJoinGroupObject>();
  join->setUnionID("u1");
  join->setShareDestType(1);
  url = send(join, 7);
  EXPECT_EQ(targetOf(url), "teskthirdappgroup://thirdappgroup/joingroup");
  expected.erase("displayName");
  EXPECT_EQ(pairsOf(url), expected);

  values.scheme.reset();
  bind->setUnionID("");
  bind->setAppDisplayName("");
  expected = {{"openId", "o1"}, {"appid", "100"}, {"thirdAppDisplayName", "RGVtbw=="}};
  join->setUnionID("");
  EXPECT_EQ(pairsOf(send(join)), expected);
  expected.insert({{"unionid", ""}, {"displayName", ""}});
  EXPECT_EQ(pairsOf(send(bind)), expected);
  values = {};
  bind->setUnionID(std::nullopt);
  bind->setAppDisplayName(std::nullopt);
  EXPECT_EQ(pairsOf(send(bind)), Pairs());
}

TEST_F(Kinds, GroupPro) {
  const std::string guild = "mlumoguild://mlumoguild/guild";
  const auto create = titled<LumoApiCreateLumoGroupProObject>();
  create->setQueryDictionary(lumo::StringDictionary{{"b", "x y"}, {"a", "1"}, {"guild_avatar", "p%2Fq"}});
  create->setSignString("s+/=");
  const auto join = titled<LumoApiJoinLumoGroupProObject>();
  join->setQueryDictionary(create->queryDictionary());
  join->setSignString("s+/=");
  for (int twice = 0; twice < 2; ++twice) {
    EXPECT_EQ(
        send(create, 7)->absoluteString(), guild + "/create?a=1&b=x%20y&guild_avatar=p%2Fq&sig=s%2B%2F%3D");
    EXPECT_EQ(send(join, 7)->absoluteString(), guild + "/join?a=1&b=x%20y&guild_avatar=p%2Fq&sig=s%2B%2F%3D");
  }
  join->setQueryDictionary(std::nullopt);
  EXPECT_EQ(send(join)->absoluteString(), guild + "/join?&sig=s%2B%2F%3D");
}

TEST_F(Kinds, MiniProgram) {
  values = {.scheme = "demo", .appName = "Demo", .uin = Value("1"), .isLumoSupportApiGeneralPastboard = true};
  const auto launch = std::make_shared<LumoApiLaunchMiniProgramObject>();
  launch->setMiniAppID("m1");
  launch->setMiniPath("pages/index");
  const auto url = send(launch, 7);
  EXPECT_EQ(targetOf(url), "mlumoapi://profile/sdk_launch_mini_app");
  EXPECT_EQ(pairsOf(url), (Pairs{{"src_type", "app"}, {"callback_type", "scheme"}, {"mini_appid", "m1"},
                              {"mini_path", "cGFnZXMvaW5kZXg="}, {"mini_type", "0"}, {"version", "1"},
                              {"callback_name", "demo"}, {"thirdAppDisplayName", "RGVtbw=="}}));
  values = {.appId = "100", .openId = "o1"};
  for (const std::optional<std::string>& path : {std::optional<std::string>(), {""}, {"\xFF"}}) {
    launch->setMiniPath(path);
    launch->setMiniprogramType(~std::uint64_t{0});
    Pairs expected{{"src_type", "app"}, {"callback_type", "scheme"}, {"mini_appid", "m1"},
        {"mini_type", "18446744073709551615"}, {"version", "1"}, {"openId", "o1"}, {"appid", "100"}};
    if (path == "") expected["mini_path"] = "";
    EXPECT_EQ(pairsOf(send(launch)), expected);
  }
}

}  // namespace
