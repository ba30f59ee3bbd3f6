#include "platform/archive/KeyedArchiver.h"
#include "tests/LumoApi/ConverterTest.h"

namespace {

using C = Converter;
using Query = LumoApiQueryDictionary;

class QueryItemFields : public ConverterTest {};
class Staging : public ConverterTest {};

Pairs textsOf(const Query& query) {
  Pairs texts;
  for (const auto& entry : query) texts[std::string(std::string_view(entry.key))] = entry.value.asText();
  return texts;
}

TEST_F(QueryItemFields, TitleDescriptionAndAppName) {
  struct Case {
    std::optional<std::string> title, description, appName, storeName;
    const char* expected;
  };
  const Case cases[] = {{"Hi", "", "App", "Demo", "title=SGk=&description=&thirdAppDisplayName=QXBw"},
      {{}, "", "", "Demo", "title=old&description=&thirdAppDisplayName=RGVtbw=="},
      {{}, {}, {}, "Demo", "title=old&thirdAppDisplayName=RGVtbw=="}, {{}, {}, "", {}, "title=old"},
      {{}, {}, {}, "", "title=old&thirdAppDisplayName="},
      {"\xFF", "\xED\xA0\x80", "\xC0\x80", "Demo", "title=old"}};
  for (const Case& c : cases) {
    store().setAppName(c.storeName);
    Query query{{"title", "old"}}, same = query;
    C::setTitle(c.title, c.description, c.appName, query);
    EXPECT_EQ(textsOf(query), pairs(c.expected));
    if (!c.appName) C::setTitle(c.title, c.description, same);
    EXPECT_TRUE(c.appName || textsOf(same) == textsOf(query));
  }
}

TEST_F(QueryItemFields, SingleFields) {
  Query query;
  C::setPreviewImageData(std::nullopt, query);
  C::setString(std::nullopt, "k", query);
  C::setString("v", std::nullopt, query);
  C::setString("\xFF", "k", query);
  C::setURL(std::nullopt, "k", query);
  C::setURL(URL::parse("https://a"), std::nullopt, query);
  EXPECT_TRUE(query.empty());
  C::setPreviewImageData(Data(), query);
  C::setString("", "empty", query);
  C::setURL(URL::parse("https://A.b:1/c?d=%20#e"), "previewimageUrl", query);
  EXPECT_EQ(
      textsOf(query), pairs("previewimageData=&empty=&previewimageUrl=" + base64("https://A.b:1/c?d=%20#e")));
  C::setPreviewImageData(bytes(3, 'a'), query);
  EXPECT_EQ(query.text("previewimageData"), "YWFh");
  EXPECT_FALSE(C::smartURLString(std::nullopt));
  EXPECT_EQ(C::smartURLString(URL::parse("")), "");
}

TEST_F(Staging, RecordHoldsWhatIsNotNull) {
  const Data preview = bytes(3);
  EXPECT_TRUE(C::setupDataWith({}, {}, {}, {})->empty());
  EXPECT_TRUE(C::setupDataWith({}, {}, {}, "\xFF")->empty()) << "no base64, no entry";
  const auto all = C::setupDataWith(preview, Data(), std::vector{bytes(1), bytes(2)}, "kiva");
  EXPECT_EQ(
      *all, (LumoApiLargeData{{"previewimagedata", preview}, {"file_data", Data()},
                {"image_data_list", Value::Array{bytes(1), bytes(2)}}, {"pasted_kiva_data", "a2l2YQ=="}}));
  EXPECT_EQ(all->find("previewimagedata")->asData()->data(), preview.data()) << "not copied";
}

TEST_F(Staging, StoreTakesARecordThatIsNotEmpty) {
  for (const std::optional<std::string>& noText : {std::optional<std::string>(), {"\xFF"}}) {
    EXPECT_TRUE(C::setPasteBoardPrevImageData({}, {}, {}, noText));
    EXPECT_EQ(log.back(), "pasteboarditem count: 0");
    EXPECT_TRUE(storeUntouched());
  }
  EXPECT_TRUE(C::setPasteBoardPrevImageData({}, {}, {}, ""));
  EXPECT_EQ(log.back(), "pasteboarditem count: 1");
  EXPECT_EQ(record(), (LumoApiLargeData{{"pasted_kiva_data", ""}}));
}

TEST_F(Staging, ObjectLocationChoosesTheChannel) {
  for (const std::optional<const char*> location : {std::optional("pasteboard"), {"URL"}, {""}, {}}) {
    store().setApiLargeData(before);
    log.clear();
    Query query;
    if (location) query.set(std::string("objectlocation"), lumo::QueryValue::text(std::string(*location)));
    const Pairs unchanged = textsOf(query);
    EXPECT_TRUE(C::setLargeDataWith(bytes(3), {}, {}, {}, query));
    EXPECT_EQ(record(), (LumoApiLargeData{{"previewimagedata", bytes(3)}}));
    EXPECT_EQ(textsOf(query), unchanged);
    EXPECT_EQ(log, (Log{"large data's location is 「" + std::string(location.value_or("")) + "」",
                       "pasteboarditem count: 1"}));
  }
  store().setApiLargeData(before);
  log.clear();
  Query query{{"objectlocation", "url"}};
  EXPECT_TRUE(C::setLargeDataWith({}, {}, {}, {}, query));
  EXPECT_EQ(query.text("pasteboard"), "");
  EXPECT_EQ(log, Log{"large data's location is 「url」"});
  EXPECT_TRUE(C::setLargeDataWith(bytes(3), {}, {}, {}, query));
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
  const LumoApiLargeDataPtr held = std::make_shared<const LumoApiLargeData>();
};

TEST_F(Staging, PasteboardTakesTheStoresPlace) {
  const auto full = std::make_shared<FullPasteboard>();
  store().setPasteboard(full);
  EXPECT_EQ(store().getApiLargeData(), full->held);
  Query query;
  EXPECT_FALSE(C::setPasteBoardPrevImageData(bytes(3), {}, {}, {}));
  EXPECT_FALSE(C::setLargeDataWith(bytes(3), {}, {}, {}, query));
  EXPECT_FALSE(send(LumoApiTextObject::objectWithText("t"), 0, card("kiva")));
  EXPECT_EQ(refusal.description(), "apiLargeData: the pasteboard did not take the record");
  store().setPasteboard(nullptr);
  EXPECT_TRUE(storeUntouched());
}

}  // namespace
