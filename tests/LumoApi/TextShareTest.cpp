#include "tests/LumoApi/ConverterTest.h"

namespace {

class TextShare : public ConverterTest {
 protected:
  static std::shared_ptr<LumoApiTextObject> text(std::optional<std::string> content) {
    return LumoApiTextObject::objectWithText(std::move(content));
  }
};

TEST_F(TextShare, Hello) {
  const auto url = send(text("hello"));
  EXPECT_EQ(targetOf(url), "mlumoapi://share/to_fri");
  const Pairs expected{{"src_type", "app"}, {"file_type", "text"}, {"version", "1"},
      {"callback_type", "scheme"}, {"file_data", "aGVsbG8="}, {"callback_name", "demo"},
      {"thirdAppDisplayName", "RGVtbw=="}};
  EXPECT_EQ(pairsOf(url), expected);
  EXPECT_EQ(log, (Log{"urlWithMessage, share with :LumoApiTextObject", "pasteboarditem count: 0"}));
  EXPECT_FALSE(refusal);
  EXPECT_TRUE(storeUntouched()) << "a share without a card stages nothing";
  EXPECT_EQ(send(text("hello")), url) << "the same message gives the same URL, byte for byte";
}

TEST_F(TextShare, EveryField) {
  values.isLumoSupportUrlForShareText = true;
  values.scheme.reset();
  values.openId = "o1";
  const auto object = text("t");
  object->setTitle("");
  object->setDescription("D");
  object->setTagName("");
  object->setMessageExt("m");
  object->setShareDestType(1);
  const auto url = send(object, 5, card("kiva"));
  EXPECT_EQ(targetOf(url), "mlumoapi://share/to_fri");
  const Pairs expected{{"src_type", "app"}, {"file_type", "text"}, {"version", "1"},
      {"callback_type", "scheme"}, {"file_data", base64("t")}, {"objectlocation", "url"}, {"tagName", ""},
      {"messageExt", base64("m")}, {"title", ""}, {"description", base64("D")},
      {"thirdAppDisplayName", base64("Demo")}, {"shareType", "0"}, {"openId", "o1"}};
  EXPECT_EQ(pairsOf(url), expected);
  EXPECT_EQ(record(), (LumoApiLargeData{{"pasted_kiva_data", base64("kiva")}}));
}

TEST_F(TextShare, AnyTextSurvives) {
  using namespace std::string_literals;
  std::string emoji;
  for (int i = 0; i < 768; ++i) emoji += "😀";
  for (const std::string& content :
      {"\"a\" & b = 50%\0end"s, "中文é e\u0301"s, "a\r\n\x7F"s, emoji, letters(1536)}) {
    EXPECT_EQ(
        LumoOpenApiUtility::UTF8StringWithBase64String(pairsOf(send(text(content)))["file_data"]), content);
  }
}

TEST_F(TextShare, RefusalsComeInOrderAndLeaveTheStore) {
  struct Case {
    const char* what;
    std::function<void(LumoApiTextObject&)> spoil;
    std::optional<std::string> logged;
    const char* description;
  };
  const auto title = [](std::size_t n) { return [n](LumoApiTextObject& o) { o.setTitle(letters(n)); }; };
  const Case cases[] = {{"null text", [](auto& o) { o.setText(std::nullopt); }, "param error: text is nil",
                            "text: missing or empty"},
      {"empty text", [](auto& o) { o.setText(""); }, "param error: text is nil", "text: missing or empty"},
      {"long text", [](auto& o) { o.setText(letters(1537)); }, "param error: text is too long",
          "text: 1537 UTF-16 code units, at most 1536"},
      {"long text of emoji", [](auto& o) { o.setText(letters(1535) + "😀"); }, "param error: text is too long",
          "text: 1537 UTF-16 code units, at most 1536"},
      {"no UTF-8", [](auto& o) { o.setText("\xED\xA0\x80"); }, std::nullopt, "text: not valid UTF-8"},
      {"long tag name", [](auto& o) { o.setTagName(letters(129)); }, "param error: tag name data is too big",
          "tagName: 129 UTF-16 code units, at most 128"},
      {"long extension", [](auto& o) { o.setMessageExt(letters(257)); },
          "param error: message ext data is too big", "messageExt: 257 UTF-16 code units, at most 256"},
      {"both too long",
          [](auto& o) {
            o.setMessageExt(letters(257));
            o.setTagName(letters(129));
          },
          "param error: tag name data is too big", "tagName: 129 UTF-16 code units, at most 128"},
      {"long title", title(129), "param error: title is too long",
          "title: 129 UTF-16 code units, at most 128"},
      {"long description", [](auto& o) { o.setDescription(letters(513)); },
          "param error: description is too long", "description: 513 UTF-16 code units, at most 512"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    const auto object = text("fine");
    c.spoil(*object);
    EXPECT_FALSE(send(object, 0, card("kiva")));
    std::erase(log, "urlWithMessage, share with :LumoApiTextObject");
    EXPECT_EQ(log, c.logged ? Log{*c.logged} : Log{});
    EXPECT_EQ(refusal.description(), c.description);
    EXPECT_TRUE(storeUntouched());
  }
}

TEST_F(TextShare, LimitsAreTheLargestAcceptedValues) {
  const auto object = text(letters(1536));
  object->setTitle(letters(126) + "😀");
  object->setDescription(letters(512));
  object->setTagName(letters(128));
  object->setMessageExt(letters(256));
  EXPECT_TRUE(send(object));
}

TEST_F(TextShare, FieldsWithoutUTF8AreLeftOut) {
  const auto object = text("t");
  object->setTitle("\xFF");
  object->setDescription("\xFF");
  object->setTagName("\xFF");
  object->setMessageExt("\xFF");
  const Pairs pairs = pairsOf(send(object));
  for (const char* key : {"title", "description", "tagName", "messageExt"})
    EXPECT_EQ(pairs.count(key), 0u) << key;
  EXPECT_EQ(pairs.at("file_data"), base64("t"));
  values.scheme = "\xFF";
  EXPECT_FALSE(send(object, 0, card("kiva")));
  EXPECT_TRUE(storeUntouched()) << "a URL that cannot be written leaves nothing staged";
}

}  // namespace
