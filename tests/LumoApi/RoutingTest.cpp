#include "tests/LumoApi/ConverterTest.h"

#include <functional>

namespace {

class Routing : public ConverterTest {};

using C = Converter;
using Query = LumoApiQueryDictionary;

struct DestinationCase {
  std::function<std::optional<URL>(Query& query, std::int32_t type, std::uint64_t code)> build;
  bool commonKeys;
  std::string place;
  std::string sibling = "mlumoapi";  // the scheme for the code 1
  std::string scheme = "mlumoapi";   // and for every other one
};

const DestinationCase kDestinations[] = {
    {C::urlWithQueryItem, true, "share/to_fri"},
    {[](auto& q, auto t, auto c) { return C::urlWithQueryItemForAvatar(q, t, c, "/x"); }, true, "profile/x"},
    {[](auto& q, auto t, auto c) { return C::urlWithQueryItemForAuth(q, t, c, "/a b"); }, true, "auth/a%20b"},
    {C::urlWithQueryItemForFaceCollection, true, "profile/sdk_face_collection"},
    {C::urlWithQueryItemForExtraService, false, "profile/sdk_extend_service"},
    {C::urlWithQueryItemForCommonService, false, "open_connect/common_channel"},
    {C::urlWithQueryItemForLaunchMiniProgram, false, "profile/sdk_launch_mini_app"},
    {C::urlWithQueryItemForThirdAppBindGroup, false, "thirdappgroup/bindgroup", "teskthirdappgroup",
        "mlumothirdappgroup"},
    {C::urlWithQueryItemForThirdAppJoinBroup, false, "thirdappgroup/joingroup", "teskthirdappgroup",
        "mlumothirdappgroup"},
    {C::urlWithQueryItemForAddFriend, false, "friend/addfriend", "teskopensdkfriend", "mlumoopensdkfriend"},
    {C::urlWithQueryItemForGameBindingGroup, false, "game/bindinggroup", "teskgamebindinggroup",
        "mlumogamebindinggroup"},
    {C::urlWithQueryItemForJoinBroup, false, "card/show_pslcard", "teskapi"},
};

TEST_F(Routing, EveryDestination) {
  values.openId = "o1";
  values.uin = Value(std::int64_t{12345});
  values.isLumoSupportApiGeneralPastboard = true;
  store().setValues(values);
  const LumoApiCurrentObject::Scope scope(filled<LumoApiTextObject>({{"cflag", 9}}));
  const char* common = "k=v&openId=o1&shareType=1&uin=12345&generalpastboard=1&cflag=9";
  for (const auto& [build, commonKeys, place, sibling, scheme] : kDestinations) {
    for (const std::uint64_t code :
        {std::uint64_t{0}, std::uint64_t{1}, std::uint64_t{2}, ~std::uint64_t{0}}) {
      Query query{{"k", "v"}, {"openId", "own"}};
      const auto url = build(query, 7, code);
      EXPECT_EQ(targetOf(url), (code == 1 ? sibling : scheme) + "://" + place);
      EXPECT_EQ(pairsOf(url), pairs(commonKeys ? common : "k=v&openId=own")) << place;
      EXPECT_EQ(query.contains("cflag"), commonKeys) << "the caller's dictionary is the one changed";
    }
  }
}

TEST_F(Routing, CommonKeysByTypeAndStore) {
  const std::pair<std::int32_t, const char*> byType[] = {{7, "k=v&shareType=1"}, {5, "k=v&shareType=0"},
      {4, "k=v&messagetype=responsefromapp"}, {1, "k=v"}, {-7, "k=v"}};
  store().setValues({.uin = Value()});
  for (const auto& [type, expected] : byType) {
    Query query{{"k", "v"}};
    EXPECT_EQ(pairsOf(C::urlWithQueryItem(query, type, 1)), pairs(expected)) << type;
  }
  const auto current = std::make_shared<LumoApiObject>();
  LumoApiCurrentObject::set(current);
  store().setUin(Value("77"));
  Query query;
  C::updateQueryItemInfo(query, 0, 0);
  EXPECT_EQ(query.text("cflag"), "0") << "written for a slot that is filled, whatever the flags are";
  EXPECT_EQ(query.text("uin"), "77");
  current->setCflag(~std::uint64_t{0});
  C::updateQueryItemInfo(query, 0, 0);
  EXPECT_EQ(query.text("cflag"), "18446744073709551615");
  EXPECT_EQ(query.size(), 2u);
}

TEST_F(Routing, SignedURL) {
  const std::string base = "mlumoguild://mlumoguild/guild";
  const Query query{{"b", "x y"}, {"a", "1"}, {"guild_avatar", "p%2Fq"}};
  const std::string signedText = base + "/join?a=1&b=x%20y&guild_avatar=p%2Fq&sig=s%2B%2F%3D";
  EXPECT_EQ(C::appendSigURLWith(query, "/join", "s+/="), signedText);
  EXPECT_EQ(log,
      Log{"+[LumoApiMessageAndUrlConverter appendSigURLWith:andPath:sig:], sortedKey:(a, b, guild_avatar)."});
  EXPECT_EQ(C::urlWithQueryItemForGroupPro(query, 7, 1, "/join", "s+/=")->absoluteString(), signedText);

  const std::pair<Query, const char*> cases[] = {{{}, "?&sig=s"},
      {{{"a", ""}, {"B", ""}, {"_c", ""}, {"ab", ""}}, "?B=&_c=&a=&ab=&sig=s"},
      {{{"v", "-._~+/=&%"}}, "?v=%2D%2E%5F%7E%2B%2F%3D%26%25&sig=s"}, {{{"v", "p%2Fq"}}, "?v=p%252Fq&sig=s"},
      {{{"v", "é中\u0301٣😀"}}, "?v=é中\u0301٣%F0%9F%98%80&sig=s"}};
  for (const auto& [pairs, expected] : cases) {
    EXPECT_EQ(C::appendSigURLWith(pairs, "/create", "s"), base + "/create" + expected);
  }
  EXPECT_EQ(C::urlWithQueryItemForGroupPro({{"v", "é"}}, 0, 0, "/create", "s")->absoluteString(),
      base + "/create?v=%C3%A9&sig=s");
  EXPECT_FALSE(C::appendSigURLWith({{"v", "\xFF"}}, "/create", "s"));
  EXPECT_FALSE(C::appendSigURLWith({}, "/create", "\xFF"));
  EXPECT_FALSE(C::urlWithQueryItemForGroupPro({{"a b", ""}}, 0, 0, "/create", "s"));
  C::appendSigURLWith({{"forged\nline", ""}, {"deleted\x7F", ""}}, "/create", "s");
  EXPECT_NE(log.back().find(":(deleted\\u007f, forged\\u000aline)."), std::string::npos) << log.back();
}

}  // namespace
