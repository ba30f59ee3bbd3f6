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
    Pairs expected;
  };
  const std::string hi = base64("Hi"), old = base64("old"), demo = base64("Demo");
  const Case cases[] = {
      {"Hi", "", "App", "Demo", {{"title", hi}, {"description", ""}, {"thirdAppDisplayName", base64("App")}}},
      {{}, "", "", "Demo", {{"title", old}, {"description", ""}, {"thirdAppDisplayName", demo}}},
      {{}, {}, {}, "Demo", {{"title", old}, {"thirdAppDisplayName", demo}}},
      {{}, {}, "", {}, {{"title", old}}}, {{}, {}, {}, "", {{"title", old}, {"thirdAppDisplayName", ""}}},
      {"\xFF", "\xED\xA0\x80", "\xC0\x80", "Demo", {{"title", old}}}};
  for (const Case& c : cases) {
    values.appName = c.storeName;
    store().setValues(values);
    LumoApiQueryDictionary query{{"title", old}};
    Converter::setTitle(c.title, c.description, c.appName, query);
    EXPECT_EQ(textsOf(query), c.expected);
  }
  values.appName = "Demo";
  store().setValues(values);
  LumoApiQueryDictionary query;
  Converter::setTitle("Hi", std::nullopt, query);
  EXPECT_EQ(textsOf(query), (Pairs{{"title", hi}, {"thirdAppDisplayName", demo}}));
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
  EXPECT_EQ(textsOf(query), (Pairs{{"previewimageData", ""}, {"empty", ""},
                                {"previewimageUrl", base64("https://A.b:1/c?d=%20#e")}}));
  Converter::setPreviewImageData(bytes(3, 'a'), query);
  EXPECT_EQ(query.text("previewimageData"), "YWFh");
  EXPECT_FALSE(Converter::smartURLString(std::nullopt));
  EXPECT_EQ(Converter::smartURLString(URL::parse("")), "");
}

TEST_F(Staging, RecordHoldsWhatIsNotNull) {
  const std::optional<Data> preview = bytes(3), none;
  const std::optional<std::vector<Data>> images = std::vector{bytes(1), bytes(2)};
  EXPECT_TRUE(Converter::setupDataWith(none, none, std::nullopt, std::nullopt)->empty());
  const auto all = Converter::setupDataWith(preview, Data(), images, "kiva");
  EXPECT_EQ(
      *all, (LumoApiLargeData{{"previewimagedata", *preview}, {"file_data", Data()},
                {"image_data_list", Value::Array{bytes(1), bytes(2)}}, {"pasted_kiva_data", "a2l2YQ=="}}));
  EXPECT_EQ(all->find("previewimagedata")->asData()->data(), preview->data()) << "not copied";
}

TEST_F(Staging, StoreTakesARecordThatIsNotEmpty) {
  Converter::setPasteBoardPrevImageData(std::nullopt, std::nullopt, std::nullopt, std::nullopt);
  EXPECT_EQ(log, Log{"pasteboarditem count: 0"});
  EXPECT_TRUE(storeUntouched());
  Converter::setPasteBoardPrevImageData(std::nullopt, std::nullopt, std::nullopt, "");
  EXPECT_EQ(log.back(), "pasteboarditem count: 1");
  EXPECT_EQ(record(), (LumoApiLargeData{{"pasted_kiva_data", ""}}));
}

TEST_F(Staging, ObjectLocationChoosesTheChannel) {
  for (const char* location : {"pasteboard", "URL", ""}) {
    store().setApiLargeData(before);
    LumoApiQueryDictionary query{{"objectlocation", location}};
    Converter::setLargeDataWith(bytes(3), std::nullopt, std::nullopt, std::nullopt, query);
    EXPECT_EQ(record(), (LumoApiLargeData{{"previewimagedata", bytes(3)}}));
    EXPECT_EQ(query.size(), 1u);
  }
  store().setApiLargeData(before);
  log.clear();
  LumoApiQueryDictionary query{{"objectlocation", "url"}};
  Converter::setLargeDataWith(std::nullopt, std::nullopt, std::nullopt, std::nullopt, query);
  EXPECT_EQ(query.text("pasteboard"), "");
  EXPECT_EQ(log, Log{"large data's location is 「url」"});
  Converter::setLargeDataWith(bytes(3), std::nullopt, std::nullopt, std::nullopt, query);
  const auto archive = lumo::base64DecodedData(*query.text("pasteboard"));
  EXPECT_EQ(log.back(), "large data's length:" + std::to_string(archive->size()));
  EXPECT_EQ(lumo::unarchivedValue(*archive), Value(LumoApiLargeData{{"previewimagedata", bytes(3)}}));
  EXPECT_TRUE(storeUntouched());
}

}  // namespace
