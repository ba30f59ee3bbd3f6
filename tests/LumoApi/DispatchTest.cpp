#include "tests/LumoApi/ConverterTest.h"

#include <thread>

namespace {

class Dispatch : public ConverterTest {};

class Sticker : public LumoApiTextObject {};
class Podcast : public LumoApiURLObject {};

TEST_F(Dispatch, EnvelopeIsCheckedInOrder) {
  EXPECT_FALSE(Converter::urlWithMessage(std::nullopt, &refusal));
  EXPECT_EQ(refusal.description(), "message: missing or empty");
  EXPECT_EQ(log, Log{}) << "a null message is refused in silence";
  EXPECT_FALSE(send(nullptr, 0, card("kiva")));
  EXPECT_EQ(log, Log{"param error: object is nil"});

  const auto auth =
      filled<LumoApiAuthObject>({{"title", letters(127) + "😀"}, {"description", letters(511) + "😀"}});
  LumoApiMessage message = LumoApiMessage::messageWithObject(auth, 0);
  const auto refused = [&](const char* line, const char* description) {
    log.clear();
    EXPECT_FALSE(Converter::urlWithMessage(message, &refusal));
    EXPECT_EQ(log, Log{line});
    EXPECT_EQ(refusal.description(), description);
  };
  message.setIsSupportKiva(true);
  refused("param error: kiva object is nil", "kivaObject: missing or empty");
  message.setKivaObject(card("kiva"));
  refused("param error: title is too long", "title: 129 UTF-16 code units, at most 128");
  auth->setTitle(letters(126) + "😀");
  refused("param error: description is too long", "description: 513 UTF-16 code units, at most 512");
}

TEST_F(Dispatch, DerivedClassesAreNoneOfTheKindsSaveLinks) {
  EXPECT_FALSE(send(filled<Sticker>({{"text", "hello"}})));
  EXPECT_EQ(log, Log{"urlWithMessage, share with :(anonymous namespace)::Sticker"});
  EXPECT_EQ(refusal.description(), "object: no converter takes an object of this class");
  EXPECT_FALSE(send(std::make_shared<LumoApiObject>()));
  EXPECT_FALSE(send(std::make_shared<LumoApiResultObject>()));
  const auto podcast = filled<Podcast>({{"title", "T"}, {"url", "https://a/"}});
  EXPECT_EQ(pairsOf(send(podcast))["file_type"], "url");
}

TEST_F(Dispatch, CardCountsOnlyWhenAnnounced) {
  LumoApiMessage message = LumoApiMessage::messageWithObject(LumoApiTextObject::objectWithText("t"), 0);
  message.setKivaObject(card("kiva"));
  for (const bool announced : {false, true}) {
    message.setIsSupportKiva(announced);
    EXPECT_TRUE(Converter::urlWithMessage(message));
    EXPECT_EQ(storeUntouched(), !announced);
  }
}

TEST_F(Dispatch, CurrentObjectIsTheThreadsOwnAndScopesNest) {
  const auto cflag = [this] {
    const Pairs pairs = pairsOf(send(LumoApiTextObject::objectWithText("t")));
    return pairs.contains("cflag") ? pairs.at("cflag") : "none";
  };
  {
    const LumoApiCurrentObject::Scope outer(filled<LumoApiObject>({{"cflag", 5}}));
    {
      const LumoApiCurrentObject::Scope inner(filled<LumoApiObject>({{"cflag", 6}}));
      EXPECT_EQ(cflag(), "6");
    }
    EXPECT_EQ(cflag(), "5");
    std::thread([&] { EXPECT_EQ(cflag(), "none"); }).join();
  }
  EXPECT_EQ(cflag(), "none");
}

}  // namespace
