#include "platform/KeyedArchiver.h"
#include "tests/LumoApi/ConverterTest.h"

namespace {

class QueryItemFields : public ConverterTest {};
class Staging : public ConverterTest {};

Pairs textsOf(const LumoApiQueryDictionary& query) {
  Pairs texts;
  for (const auto& entry : query) texts[std::string(std::string_view(entry.key))] = entry.value.asText();
  return texts;
}

TEST_F(QueryItemFields, TitleDescriptionAndAppName) {
  using Text = std::optional<std::string_view>;
  struct Case {
    Text title, description, appName, storeName;
    const char* expected;
  };
  const Case cases[] = {
      {"Hi", "", "App", "Demo", "title=SGk=&description=&thirdAppDisplayName=QXBw"},
      {{}, "", "", "Demo", "title=old&description=&thirdAppDisplayName=RGVtbw=="},
      {{}, {}, {}, "Demo", "title=old&thirdAppDisplayName=RGVtbw=="},
      {{}, {}, "", {}, "title=old"},
      {{}, {}, {}, "", "title=old&thirdAppDisplayName="},
      {"\xFF", "\xED\xA0\x80", "\xC0\x80", "Demo", "title=old"},
  };
  for (const Case& c : cases) {
    store().setAppName(c.storeName ? std::optional<std::string>(*c.storeName) : std::nullopt);
    LumoApiQueryDictionary query{{"title", "old"}};
    Converter::setTitle(c.title, c.description, c.appName, query);
    EXPECT_EQ(textsOf(query), pairs(c.expected));
  }
  store().setAppName("Demo");
  LumoApiQueryDictionary query;
  Converter::setTitle("Hi", std::nullopt, query);
  EXPECT_EQ(textsOf(query), pairs("title=SGk=&thirdAppDisplayName=RGVtbw=="));
}

TEST_F(QueryItemFields, SingleFields) {
  LumoApiQueryDictionary query;
  Converter::setPreviewImageData(std::nullopt, query);
  Converter::setString(std::nullopt, "k", query);
  Converter::setString("v", std::nullopt, query);
  Converter::setString("\xFF", "k", query);
  Converter::setURL(std::nullopt, "k", query);
  Converter::setURL(URL::parse("https://a"), std::nullopt, query);
  EXPECT_TRUE(query.empty());
  Converter::setPreviewImageData(Data(), query);
  Converter::setString("", "empty", query);
  Converter::setURL(URL::parse("https://A.b:1/c?d=%20#e"), "previewimageUrl", query);
  EXPECT_EQ(
      textsOf(query), pairs("previewimageData=&empty=&previewimageUrl=" + base64("https://A.b:1/c?d=%20#e")));
  Converter::setPreviewImageData(bytes(3, 'a'), query);
  EXPECT_EQ(query.text("previewimageData"), "YWFh");
  EXPECT_FALSE(Converter::smartURLString(std::nullopt));
  EXPECT_EQ(Converter::smartURLString(URL::parse("")), "");
}

TEST_F(Staging, RecordHoldsWhatIsNotNull) {
  const Data preview = bytes(3);
  EXPECT_TRUE(Converter::setupDataWith({}, {}, {}, {})->empty());
  EXPECT_TRUE(Converter::setupDataWith({}, {}, {}, "\xFF")->empty()) << "no base64, no entry";
  const auto all = Converter::setupDataWith(preview, Data(), std::vector{bytes(1), bytes(2)}, "kiva");
  EXPECT_EQ(
      *all, (LumoApiLargeData{{"previewimagedata", preview}, {"file_data", Data()},
                {"image_data_list", Value::Array{bytes(1), bytes(2)}}, {"pasted_kiva_data", "a2l2YQ=="}}));
  EXPECT_EQ(all->find("previewimagedata")->asData()->data(), preview.data()) << "not copied";
}

TEST_F(Staging, StoreTakesARecordThatIsNotEmpty) {
  for (const std::optional<std::string>& noText : {std::optional<std::string>(), {"\xFF"}}) {
    EXPECT_TRUE(Converter::setPasteBoardPrevImageData({}, {}, {}, noText));
    EXPECT_EQ(log.back(), "pasteboarditem count: 0");
    EXPECT_TRUE(storeUntouched());
  }
  EXPECT_TRUE(Converter::setPasteBoardPrevImageData({}, {}, {}, ""));
  EXPECT_EQ(log.back(), "pasteboarditem count: 1");
  EXPECT_EQ(record(), (LumoApiLargeData{{"pasted_kiva_data", ""}}));
}

TEST_F(Staging, ObjectLocationChoosesTheChannel) {
  for (const std::optional<const char*> location : {std::optional("pasteboard"), {"URL"}, {""}, {}}) {
    store().setApiLargeData(before);
    log.clear();
    LumoApiQueryDictionary query;
    if (location) query.set(std::string("objectlocation"), lumo::QueryValue::text(std::string(*location)));
    const Pairs unchanged = textsOf(query);
    EXPECT_TRUE(Converter::setLargeDataWith(bytes(3), {}, {}, {}, query));
    EXPECT_EQ(record(), (LumoApiLargeData{{"previewimagedata", bytes(3)}}));
    EXPECT_EQ(textsOf(query), unchanged);
    EXPECT_EQ(log, (Log{"large data's location is 「" + std::string(location.value_or("")) + "」",
                       "pasteboarditem count: 1"}));
  }
  store().setApiLargeData(before);
  log.clear();
  LumoApiQueryDictionary query{{"objectlocation", "url"}};
  EXPECT_TRUE(Converter::setLargeDataWith({}, {}, {}, {}, query));
  EXPECT_EQ(query.text("pasteboard"), "");
  EXPECT_EQ(log, Log{"large data's location is 「url」"});
  EXPECT_TRUE(Converter::setLargeDataWith(bytes(3), {}, {}, {}, query));
  const auto archive = lumo::base64DecodedData(*query.text("pasteboard"));
  EXPECT_EQ(log.back(), "large data's length:" + std::to_string(archive->size()));
  EXPECT_EQ(lumo::unarchivedValue(*archive), Value(LumoApiLargeData{{"previewimagedata", bytes(3)}}));
  EXPECT_TRUE(storeUntouched());
}

/// Holds one record for ever, and takes no other.
class FullPasteboard : public LumoApiPasteboard {
 public:
  bool write(LumoApiLargeDataPtr) noexcept override { return false; }
  LumoApiLargeDataPtr read() noexcept override { return held; }
  const LumoApiLargeDataPtr held =
      std::make_shared<const LumoApiLargeData>(LumoApiLargeData{{"file_data", bytes(7)}});
};

TEST_F(Staging, PasteboardTakesTheStoresPlace) {
  const auto full = std::make_shared<FullPasteboard>();
  store().setPasteboard(full);
  EXPECT_EQ(store().getApiLargeData(), full->held);
  LumoApiQueryDictionary query;
  EXPECT_FALSE(Converter::setPasteBoardPrevImageData(bytes(3), {}, {}, {}));
  EXPECT_FALSE(Converter::setLargeDataWith(bytes(3), {}, {}, {}, query));
  EXPECT_FALSE(send(LumoApiTextObject::objectWithText("t"), 0, card("kiva")));
  EXPECT_EQ(refusal.description(), "apiLargeData: the pasteboard did not take the record");
  store().setPasteboard(nullptr);
  EXPECT_TRUE(storeUntouched());
}

}  // namespace
