#include "tests/LumoApi/ConverterTest.h"

namespace {

class Routing : public ConverterTest {};

using Builder = std::optional<URL> (*)(LumoApiQueryDictionary&, std::uint64_t code);

struct DestinationCase {
  Builder build;
  const char* sibling;
  const char* main;
  bool commonKeys;
};

const DestinationCase kDestinations[] = {
    {[](auto& q, auto c) { return Converter::urlWithQueryItem(q, 7, c); }, "mlumoapi://share/to_fri",
        "mlumoapi://share/to_fri", true},
    {[](auto& q, auto c) { return Converter::urlWithQueryItemForAvatar(q, 7, c, "/sdk_avatar_edit"); },
        "mlumoapi://profile/sdk_avatar_edit", "mlumoapi://profile/sdk_avatar_edit", true},
    {[](auto& q, auto c) { return Converter::urlWithQueryItemForAuth(q, 7, c, "/sdk_check_auth"); },
        "mlumoapi://auth/sdk_check_auth", "mlumoapi://auth/sdk_check_auth", true},
    {[](auto& q, auto c) { return Converter::urlWithQueryItemForFaceCollection(q, 7, c); },
        "mlumoapi://profile/sdk_face_collection", "mlumoapi://profile/sdk_face_collection", true},
    {[](auto& q, auto c) { return Converter::urlWithQueryItemForExtraService(q, 7, c); },
        "mlumoapi://profile/sdk_extend_service", "mlumoapi://profile/sdk_extend_service", false},
    {[](auto& q, auto c) { return Converter::urlWithQueryItemForCommonService(q, 7, c); },
        "mlumoapi://open_connect/common_channel", "mlumoapi://open_connect/common_channel", false},
    {[](auto& q, auto c) { return Converter::urlWithQueryItemForLaunchMiniProgram(q, 7, c); },
        "mlumoapi://profile/sdk_launch_mini_app", "mlumoapi://profile/sdk_launch_mini_app", false},
    {[](auto& q, auto c) { return Converter::urlWithQueryItemForThirdAppBindGroup(q, 7, c); },
        "teskthirdappgroup://thirdappgroup/bindgroup", "mlumothirdappgroup://thirdappgroup/bindgroup", false},
    {[](auto& q, auto c) { return Converter::urlWithQueryItemForThirdAppJoinBroup(q, 7, c); },
        "teskthirdappgroup://thirdappgroup/joingroup", "mlumothirdappgroup://thirdappgroup/joingroup", false},
    {[](auto& q, auto c) { return Converter::urlWithQueryItemForAddFriend(q, 7, c); },
        "teskopensdkfriend://friend/addfriend", "mlumoopensdkfriend://friend/addfriend", false},
    {[](auto& q, auto c) { return Converter::urlWithQueryItemForGameBindingGroup(q, 7, c); },
        "teskgamebindinggroup://game/bindinggroup", "mlumogamebindinggroup://game/bindinggroup", false},
    {[](auto& q, auto c) { return Converter::urlWithQueryItemForJoinBroup(q, 7, c); },
        "teskapi://card/show_pslcard", "mlumoapi://card/show_pslcard", false}};

TEST_F(Routing, EveryDestination) {
  values.openId = "o1";
  values.uin = Value(std::int64_t{12345});
  values.isLumoSupportApiGeneralPastboard = true;
  store().setValues(values);
  auto current = std::make_shared<LumoApiTextObject>();
  current->setCflag(9);
  const LumoApiCurrentObject::Scope scope(current);
  for (const DestinationCase& destination : kDestinations) {
    SCOPED_TRACE(destination.main);
    for (const std::uint64_t code :
        {std::uint64_t{0}, std::uint64_t{1}, std::uint64_t{2}, ~std::uint64_t{0}}) {
      LumoApiQueryDictionary query{{"k", "v"}, {"openId", "own"}};
      const auto url = destination.build(query, code);
      EXPECT_EQ(targetOf(url), code == 1 ? destination.sibling : destination.main);
      const Pairs plain{{"k", "v"}, {"openId", "own"}};
      const Pairs common{{"k", "v"}, {"openId", "o1"}, {"shareType", "1"}, {"uin", "12345"},
          {"generalpastboard", "1"}, {"cflag", "9"}};
      EXPECT_EQ(pairsOf(url), destination.commonKeys ? common : plain);
      EXPECT_EQ(query.contains("cflag"), destination.commonKeys)
          << "the caller's dictionary is the one changed";
    }
  }
}

TEST_F(Routing, CommonKeysByTypeAndStore) {
  const std::pair<std::int32_t, Pairs> byType[] = {{7, {{"k", "v"}, {"shareType", "1"}}},
      {5, {{"k", "v"}, {"shareType", "0"}}}, {4, {{"k", "v"}, {"messagetype", "responsefromapp"}}},
      {1, {{"k", "v"}}}, {-7, {{"k", "v"}}}};
  store().setValues({});
  for (const auto& [type, expected] : byType) {
    LumoApiQueryDictionary query{{"k", "v"}};
    EXPECT_EQ(pairsOf(Converter::urlWithQueryItem(query, type, 1)), expected) << type;
  }
  auto current = std::make_shared<LumoApiObject>();
  LumoApiCurrentObject::set(current);
  values.uin = Value("77");
  store().setValues(values);
  LumoApiQueryDictionary query;
  Converter::updateQueryItemInfo(query, 0, 0);
  EXPECT_EQ(query.text("cflag"), "0") << "written for a slot that is filled, whatever the flags are";
  EXPECT_EQ(query.text("uin"), "77");
  current->setCflag(~std::uint64_t{0});
  Converter::updateQueryItemInfo(query, 0, 0);
  EXPECT_EQ(query.text("cflag"), "18446744073709551615");
  EXPECT_EQ(query.size(), 2u);
}

TEST_F(Routing, SignedURL) {
  const std::string base = "mlumoguild://mlumoguild/guild";
  const LumoApiQueryDictionary query{{"b", "x y"}, {"a", "1"}, {"guild_avatar", "p%2Fq"}};
  EXPECT_EQ(Converter::appendSigURLWith(query, "/join", "s+/="),
      base + "/join?a=1&b=x%20y&guild_avatar=p%2Fq&sig=s%2B%2F%3D");
  EXPECT_EQ(log,
      Log{"+[LumoApiMessageAndUrlConverter appendSigURLWith:andPath:sig:], sortedKey:(a, b, guild_avatar)."});
  EXPECT_EQ(Converter::urlWithQueryItemForGroupPro(query, 7, 1, "/join", "s+/=")->absoluteString(),
      base + "/join?a=1&b=x%20y&guild_avatar=p%2Fq&sig=s%2B%2F%3D");

  const std::pair<LumoApiQueryDictionary, const char*> cases[] = {{{}, "?&sig=s"},
      {{{"a", ""}, {"B", ""}, {"_c", ""}, {"ab", ""}}, "?B=&_c=&a=&ab=&sig=s"},
      {{{"v", "-._~+/=&%"}}, "?v=%2D%2E%5F%7E%2B%2F%3D%26%25&sig=s"}, {{{"v", "p%2Fq"}}, "?v=p%252Fq&sig=s"},
      {{{"v", "é中\u0301٣😀"}}, "?v=é中\u0301٣%F0%9F%98%80&sig=s"}};
  for (const auto& [pairs, expected] : cases) {
    EXPECT_EQ(Converter::appendSigURLWith(pairs, "/create", "s"), base + "/create" + expected);
  }
  EXPECT_EQ(Converter::urlWithQueryItemForGroupPro({{"v", "é"}}, 0, 0, "/create", "s")->absoluteString(),
      base + "/create?v=%C3%A9&sig=s");
  EXPECT_FALSE(Converter::appendSigURLWith({{"v", "\xFF"}}, "/create", "s"));
  EXPECT_FALSE(Converter::appendSigURLWith({}, "/create", "\xFF"));
  EXPECT_FALSE(Converter::urlWithQueryItemForGroupPro({{"a b", ""}}, 0, 0, "/create", "s"));
  EXPECT_EQ(log.back().find('\n'), std::string::npos);
  Converter::appendSigURLWith({{"forged\nline", ""}}, "/create", "s");
  EXPECT_NE(log.back().find("(forged\\u000aline)"), std::string::npos) << log.back();
}

}  // namespace
