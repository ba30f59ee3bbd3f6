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

  const auto auth = std::make_shared<LumoApiAuthObject>();
  auth->setTitle(letters(129));
  auth->setDescription(letters(513));
  LumoApiMessage message = LumoApiMessage::messageWithObject(auth, 0);
  const auto logged = [&] {
    log.clear();
    EXPECT_FALSE(Converter::urlWithMessage(message, &refusal));
    return log;
  };
  message.setIsSupportKiva(true);
  EXPECT_EQ(logged(), Log{"param error: kiva object is nil"});
  EXPECT_EQ(refusal.field, "kivaObject");
  message.setKivaObject(card("kiva"));
  EXPECT_EQ(logged(), Log{"param error: title is too long"});
  auth->setTitle(letters(128));
  EXPECT_EQ(logged(), Log{"param error: description is too long"});
}

TEST_F(Dispatch, DerivedClassesAreNoneOfTheKindsSaveLinks) {
  const auto sticker = std::make_shared<Sticker>();
  sticker->setText("hello");
  EXPECT_FALSE(send(sticker));
  EXPECT_EQ(log, Log{"urlWithMessage, share with :(anonymous namespace)::Sticker"});
  EXPECT_EQ(refusal.code, LumoApiRefusal::Code::UnknownKind);
  for (const auto& none :
      {std::make_shared<LumoApiObject>(), std::shared_ptr<LumoApiObject>(new LumoApiResultObject)}) {
    EXPECT_FALSE(send(none));
  }
  const auto podcast = std::make_shared<Podcast>();
  podcast->setTitle("T");
  podcast->setUrl(URL::parse("https://a.example/"));
  EXPECT_EQ(pairsOf(send(podcast))["file_type"], "url");
}

TEST_F(Dispatch, CardCountsOnlyWhenAnnounced) {
  LumoApiMessage message = LumoApiMessage::messageWithObject(LumoApiTextObject::objectWithText("t"), 0);
  message.setKivaObject(card("kiva"));
  EXPECT_TRUE(Converter::urlWithMessage(message));
  EXPECT_TRUE(storeUntouched());
  message.setIsSupportKiva(true);
  EXPECT_TRUE(Converter::urlWithMessage(message));
  EXPECT_FALSE(storeUntouched());
}

TEST_F(Dispatch, CurrentObjectIsTheThreadsOwn) {
  auto current = std::make_shared<LumoApiObject>();
  current->setCflag(5);
  const auto cflag = [this] {
    const Pairs pairs = pairsOf(send(LumoApiTextObject::objectWithText("t")));
    return pairs.contains("cflag") ? pairs.at("cflag") : "none";
  };
  {
    const LumoApiCurrentObject::Scope scope(current);
    EXPECT_EQ(cflag(), "5");
    std::thread([&] { EXPECT_EQ(cflag(), "none"); }).join();
  }
  EXPECT_EQ(cflag(), "none");
}

/// A pasteboard that takes nothing.
class FullPasteboard : public LumoApiPasteboard {
 public:
  bool write(LumoApiLargeDataPtr) noexcept override { return false; }
  LumoApiLargeDataPtr read() noexcept override { return nullptr; }
};

TEST_F(Dispatch, RecordThatCannotBeHandedOverIsARefusal) {
  store().setPasteboard(std::make_shared<FullPasteboard>());
  EXPECT_FALSE(send(LumoApiTextObject::objectWithText("t"), 0, card("kiva")));
  EXPECT_EQ(refusal.code, LumoApiRefusal::Code::PasteboardFailed);
  store().setPasteboard(nullptr);
}

}  // namespace
