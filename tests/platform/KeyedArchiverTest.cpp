#include "LumoApi/Base64.h"
#include "platform/archive/BinaryPlistWriter.h"
#include "platform/archive/KeyedArchiver.h"

#include <gtest/gtest.h>
#include <plist/plist.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <memory>
#include <string>

namespace lumo {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using Array = Value::Array;
using Entries = Value::Dictionary;

constexpr auto kExample =
    "YnBsaXN0MDDUAQIDBAUGHh9YJHZlcnNpb25YJG9iamVjdHNZJGFyY2hpdmVyVCR0b3ASAAGGoKcHCBMUFRYXVSRudWxs0wkKCwwPEldO"
    "Uy5rZXlzWk5TLm9iamVjdHNWJGNsYXNzog0OgAKAA6IQEYAEgAWABl8QEHByZXZpZXdpbWFnZWRhdGFfEBBwYXN0ZWRfa2l2YV9kYXRh"
    "QwABAlhhMmwyWVE9PdIYGRobWiRjbGFzc25hbWVYJGNsYXNzZXNfEBNOU011dGFibGVEaWN0aW9uYXJ5oxocHVxOU0RpY3Rpb25hcnlY"
    "TlNPYmplY3RfEA9OU0tleWVkQXJjaGl2ZXLRICFUcm9vdIABAAgAEQAaACMALQAyADcAPwBFAEwAVABfAGYAaQBrAG0AcAByAHQAdgCJ"
    "AJwAoACpAK4AuQDCANgA3ADpAPIBBAEHAQwAAAAAAAACAQAAAAAAAAAiAAAAAAAAAAAAAAAAAAABDg=="sv;

Value example() {
  return Entries{{"previewimagedata", Data::copy("\0\1\2"sv)}, {"pasted_kiva_data", "a2l2YQ=="}};
}

Data bytesOf(std::size_t size, std::uint8_t byte) { return Data(std::vector<std::uint8_t>(size, byte)); }

Value nested(int depth) {
  Value value = Array{};
  while (--depth > 1) value = Array{value};
  return Entries{{"deep", value}};
}

std::string textOf(plist_t node) { return plist_get_string_ptr(node, nullptr); }

// What another reader of property lists finds in an archive.
plist_t objectOf(plist_t archive, plist_t uid) {
  std::uint64_t number = 0;
  plist_get_uid_val(uid, &number);
  return plist_access_path(archive, 2, "$objects", static_cast<int>(number));
}

Value valueOf(plist_t archive, plist_t uid) {
  const plist_t object = objectOf(archive, uid);
  const plist_type type = plist_get_node_type(object);
  std::uint64_t number = 0;
  std::uint8_t boolean = 0;
  double real = 0;
  if (type == PLIST_STRING) return textOf(object);
  if (type == PLIST_BOOLEAN) return plist_get_bool_val(object, &boolean), boolean != 0;
  if (type == PLIST_REAL) return plist_get_real_val(object, &real), real;
  if (type == PLIST_UINT) return plist_get_uint_val(object, &number), static_cast<std::int64_t>(number);
  if (const char* bytes = plist_get_data_ptr(object, &number)) return Data::copy({bytes, number});
  if (type == PLIST_DATA) return Data();

  const auto field = [object](const char* key) { return plist_dict_get_item(object, key); };
  const std::string name = textOf(plist_dict_get_item(objectOf(archive, field("$class")), "$classname"));
  if (name == "NSNull") return nullptr;
  if (name == "NSString") return textOf(field("NS.string"));
  Array keys, elements;
  for (const auto& [list, found] : {std::pair("NS.keys", &keys), std::pair("NS.objects", &elements)}) {
    for (std::uint32_t i = 0; i < plist_array_get_size(field(list)); ++i)
      found->push_back(valueOf(archive, plist_array_get_item(field(list), i)));
  }
  if (name == "NSArray") return elements;
  Entries entries;
  for (std::size_t i = 0; i < keys.size(); ++i) entries.set(*keys[i].asString(), elements[i]);
  return entries;
}

std::shared_ptr<void> otherReader(const Data& archive) {
  plist_t read = nullptr;
  plist_from_bin(archive.view().data(), static_cast<std::uint32_t>(archive.size()), &read);
  return {read, plist_free};
}

TEST(KeyedArchiverTest, WritesAndReadsTheFormatByteForByte) {
  const Data archive = archivedData(example()).value().joined();
  EXPECT_EQ(base64Encoded(archive.view()), kExample);
  EXPECT_EQ(unarchivedValue(archive), example());
}

TEST(KeyedArchiverTest, EveryReaderFindsWhatWasWritten) {
  const Array numbers{
      0, 255, 256, 65535, 65536, 0xFFFFFFFF, 0x100000000, INT64_MAX, -1, INT64_MIN, true, false, -1.5};
  const Array texts{
      "", "fourteen chars", "fifteen chars..", std::string(70000, 'y'), "文字", "😀 é", "$null", "$class"};
  const Data image = bytesOf(100, 1);
  Array many;
  Entries keys;
  for (int i = 0; i < 500; ++i) {
    many.push_back(Array{i, "text " + std::to_string(i % 70), Data::copy(std::to_string(i))});
    keys.set("key " + std::to_string(i), Entries{{"same", i}});
  }
  const Value kCases[] = {Entries{},
      Entries{{"previewimagedata", image}, {"file_data", bytesOf(70000, 2)},
          {"image_data_list", Array{image, bytesOf(100, 3), Data()}}, {"pasted_kiva_data", ""}},
      Entries{{"numbers", numbers}, {"texts", texts}, {"$null", nullptr},
          {"文", Array{nullptr, Array{}, Entries{{"NS.keys", Entries{}}}}}},
      Entries{{"many", many}, {"keys", keys}}, nested(kMaxArchiveDepth)};
  for (const Value& value : kCases) {
    SCOPED_TRACE(value.asDictionary()->size());
    const Data archive = archivedData(value).value().joined();
    EXPECT_EQ(unarchivedValue(archive), value);
    const auto other = otherReader(archive);
    EXPECT_EQ(valueOf(other.get(), plist_access_path(other.get(), 2, "$top", "root")), value);
  }
  // A class is numbered after the parts of its first object, and only there: 1 the root, 2 and 3 its keys,
  // 4 the list, 5 its number, 7 the dictionary.
  const auto order =
      otherReader(archivedData(Entries{{"list", Array{7}}, {"dictionary", Entries{}}}).value().joined());
  const auto recorded = [&](int number) {
    return textOf(plist_access_path(order.get(), 3, "$objects", number, "$classname"));
  };
  EXPECT_EQ(recorded(6) + recorded(8) + recorded(9), "NSArrayNSDictionaryNSMutableDictionary");
}

TEST(KeyedArchiverTest, ReferencesAreWideEnoughForTheNumberOfObjects) {
  Array flags;
  for (int i = 0; i < 300; ++i) {
    flags.push_back(true);  // another UID, and so one object more
    const Value value = Entries{{"flags", flags}};
    const Data archive = archivedData(value).value().joined();
    const std::uint8_t* trailer = archive.end() - 32;
    EXPECT_EQ(trailer[7], 1 + trailer[14]) << "with " << i << " flags";
    EXPECT_EQ(unarchivedValue(archive), value);
  }
}

TEST(KeyedArchiverTest, LargeDataIsNeverCopied) {
  const Data video = bytesOf(5000, 1), twin = bytesOf(5000, 1), other = bytesOf(5000, 2),
             small = bytesOf(64, 3);
  const Value record =
      Entries{{"file_data", video}, {"image_data_list", Array{video, other, twin, other, small}}};
  const DataChain chain = archivedData(record).value();
  std::vector<const std::uint8_t*> large;
  for (const Data& piece : chain.pieces()) {
    if (piece.size() == 5000) large.push_back(piece.data());
  }
  EXPECT_EQ(large, (std::vector{video.data(), other.data()}));
  EXPECT_EQ(chain.pieces().size(), 5U);

  const Data archive = chain.joined();
  const Value read = unarchivedValue(archive).value();
  EXPECT_EQ(read, record);
  const Data* shared = read.asDictionary()->find("file_data")->asData();
  EXPECT_TRUE(shared->data() > archive.data() && shared->end() < archive.end());
}

TEST(KeyedArchiverTest, WhatTheFormatCannotHoldGivesNull) {
  const Value kCases[] = {
      "text", Entries{{"\xFF", 1}}, Entries{{"a", Array{"\xED\xA0\x80"}}}, nested(kMaxArchiveDepth + 1)};
  for (const Value& value : kCases) EXPECT_FALSE(archivedData(value));
}

// Archives that only somebody else would write. Number 1 is the root, 2 NSArray, 3 NSMutableDictionary, 4
// another class.
using Object = std::function<void(PlistWriter&)>;
using Numbers = std::vector<std::uint32_t>;

Object text(std::string value) {
  return [value](PlistWriter& plist) { plist.text(value); };
}

Object uid(std::uint32_t number) {
  return [number](PlistWriter& plist) { plist.uid(number); };
}

Object list(std::vector<Object> elements) {
  return [elements](PlistWriter& plist) {
    plist.beginArray(elements.size());
    for (const Object& element : elements) element(plist);
  };
}

Object uids(const Numbers& numbers) {
  std::vector<Object> elements;
  for (const std::uint32_t number : numbers) elements.push_back(uid(number));
  return list(std::move(elements));
}

Object record(std::vector<std::pair<std::string_view, Object>> fields) {
  return [fields](PlistWriter& plist) {
    plist.beginDictionary(fields.size());
    for (const auto& field : fields) plist.text(field.first);
    for (const auto& field : fields) field.second(plist);
  };
}

Object array(const Numbers& numbers) { return record({{"NS.objects", uids(numbers)}, {"$class", uid(2)}}); }

Object dictionary(const Numbers& keys, const Numbers& values) {
  return record({{"$class", uid(3)}, {"NS.objects", uids(values)}, {"NS.keys", uids(keys)}});
}

Data archiveOf(const Object& root, const std::vector<Object>& fromFive, const std::string& fourth = "NSNull",
    std::uint32_t rootNumber = 1) {
  std::vector<Object> objects{text("$null"), root};
  for (const std::string& name : {"NSArray"s, "NSMutableDictionary"s, fourth})
    objects.push_back(record({{"$classname", text(name)}}));
  objects.insert(objects.end(), fromFive.begin(), fromFive.end());
  const Object envelope =
      record({{"$top", record({{"root", uid(rootNumber)}})}, {"$archiver", text("NSKeyedArchiver")},
          {"$objects", list(objects)}, {"$version", [](PlistWriter& version) { version.integer(100000); }}});
  PlistWriter plist;
  envelope(plist);
  return plist.finish().joined();
}

const Object kBytes = [](PlistWriter& plist) {
  static const Data bytes = Data::copy("bytes");
  plist.data(bytes);
};

// An archive with some of its bytes replaced by as many others.
Data with(const Data& archive, std::string_view bytes, std::string_view others) {
  std::string changed(archive.view());
  const std::size_t place = changed.find(bytes);
  EXPECT_TRUE(place != std::string::npos && bytes.size() == others.size());
  changed.replace(place, others.size(), others);
  return Data(std::move(changed));
}

Data instanceOf(const std::string& name, std::string_view field, const Object& content) {
  return archiveOf(record({{field, content}, {"$class", uid(4)}}), {text("key"), text("text")}, name);
}

TEST(KeyedArchiverTest, ReadsWhatOthersWrite) {
  const Object real = [](PlistWriter& plist) { plist.real(1.5); };
  const Object wide = [](PlistWriter& plist) { plist.unsignedInteger(UINT64_MAX); };
  const Object reversed = dictionary({5, 6, 5}, {6, 6, 7});
  const std::pair<Data, Value> kCases[] = {
      {instanceOf("NSMutableArray", "NS.objects", uids({6, 6})), Array{"text", "text"}},
      {instanceOf("NSMutableString", "NS.string", text("$null")), "$null"},
      {instanceOf("NSMutableData", "NS.data", kBytes), Data::copy("bytes")},
      {instanceOf("NSDate", "NS.time", real), 1.5}, {instanceOf("NSNull", "other", real), nullptr},
      {archiveOf(reversed, {text("key"), text("text"), text("last")}),
          Entries{{"key", "last"}, {"text", "text"}}},
      {archiveOf(wide, {}), UINT64_MAX}};
  for (const auto& [archive, value] : kCases) {
    SCOPED_TRACE(base64Encoded(archive.view()));
    EXPECT_EQ(unarchivedValue(archive), value);
  }
}

TEST(KeyedArchiverTest, RefusesWhatIsNoArchiveOfItsKinds) {
  const auto archived = [](const Object& root) {
    return archiveOf(root, {text("key"), array({}), uids({5})});
  };
  const Data good = archived(array({5}));
  // So many that the marker of the first object, which follows the list of all, would pass for a reference.
  std::vector<Object> texts;
  for (int i = 0; i < 90; ++i) texts.push_back(text(std::to_string(i)));
  ASSERT_TRUE(unarchivedValue(good));
  const Data kCases[] = {with(good, "NSKeyedArchiver", "NSKeyedArchives"),
      with(good, "\x12\x00\x01\x86\xA0"sv, "\x12\x00\x01\x86\xA1"sv), with(good, "$top", "$tip"),
      with(good, "root", "boot"), with(good, "$objects", "$objectz"), with(good, "$classname", "$classnome"),
      with(good, "NSArray", "NSProxy"), instanceOf("NSObject", "NS.objects", uids({})),
      instanceOf("NSArray", "NS.objects", text("text")),
      instanceOf("NSArray", "NS.objects", list({text("text")})), instanceOf("NSArray", "NS.keys", uids({})),
      instanceOf("NSString", "NS.string", kBytes), instanceOf("NSData", "NS.data", text("text")),
      instanceOf("NSDate", "NS.time", text("text")), archived(array({0})), archived(array({8})),
      archived(array({7})), archiveOf(array({95}), texts), archived(array({1})),
      archived(record({{"NS.objects", uids({})}, {"$class", uid(8)}})), archived(text("$null")),
      archived(dictionary({5, 5}, {5})), archived(dictionary({5}, {5, 5})), archived(dictionary({6}, {5})),
      archiveOf(array({5}), {array({6}), dictionary({7}, {1}), text("key")}),
      archiveOf(array({}), {}, "NSNull", 0)};
  for (const Data& archive : kCases) {
    SCOPED_TRACE(base64Encoded(archive.view()));
    EXPECT_FALSE(unarchivedValue(archive));
  }
}

TEST(KeyedArchiverTest, NestingIsBoundedWhateverIsShared) {
  // Arrays inside one another, from number 5 on; number 105 holds two flat ones beside the one of before.
  // What the root holds first is built first, and found again within the last.
  const auto nests = [](std::uint32_t levels, const Numbers& first) {
    std::vector<Object> arrays{array({})};
    for (std::uint32_t number = 5; number < 4 + levels; ++number)
      arrays.push_back(array(number == 104 ? Numbers{5, number, 5 + levels} : Numbers{number}));
    arrays.push_back(array({}));
    Numbers elements = first;
    elements.push_back(4 + levels);
    return unarchivedValue(archiveOf(array(elements), arrays)).has_value();
  };
  for (const Numbers& first : {Numbers{}, {5}, {60}, {131}, {104, 105}, {105}, {104, 105, 130}}) {
    SCOPED_TRACE(testing::PrintToString(first));
    EXPECT_TRUE(nests(127, first));
    EXPECT_FALSE(nests(128, first));
  }
}

TEST(KeyedArchiverTest, SharingCannotBlowUp) {
  const auto tenTimes = [](std::uint32_t levels) {
    std::vector<Object> arrays{array({})};
    for (std::uint32_t number = 5; number < 5 + levels; ++number)
      arrays.push_back(array(Numbers(10, number)));
    return unarchivedValue(archiveOf(array({5 + levels}), arrays));
  };
  const std::optional<Value> shared = tenTimes(2);
  ASSERT_TRUE(shared);
  const Array& tens = *shared->asArray()->front().asArray();
  EXPECT_EQ(tens.front().asArray(), tens.back().asArray());
  EXPECT_FALSE(tenTimes(9));

  const auto megabytes = [](std::uint32_t count) {
    return unarchivedValue(archiveOf(array(Numbers(count, 5)), {text(std::string(1 << 20, 'x'))}))
        .has_value();
  };
  EXPECT_TRUE(megabytes(16));
  EXPECT_FALSE(megabytes(32));
}

TEST(KeyedArchiverTest, DamageIsNeverMoreThanARefusal) {
  const Value rich = Entries{{"文", Array{1, -1, 2.5, true, nullptr, UINT64_MAX, "$null"}},
      {"list", Array{Entries{{"key", std::string(20, 'x')}}, Array{}, bytesOf(70, 9)}}};
  for (const Value& value : {example(), rich}) {
    const std::string whole(archivedData(value).value().joined().view());
    EXPECT_EQ(unarchivedValue(Data::copy(whole)), value);
    EXPECT_FALSE(unarchivedValue(Data::copy(whole + '\0')));
    for (std::size_t i = 0; i < whole.size(); ++i) {
      SCOPED_TRACE(i);
      EXPECT_FALSE(unarchivedValue(Data::copy(whole.substr(0, i))));
      const int byte = static_cast<std::uint8_t>(whole[i]);
      for (const int other : {0x00, 0xFF, byte ^ 0xFF, byte ^ 0x01, byte ^ 0x10, byte ^ 0x80}) {
        std::string damaged = whole;
        damaged[i] = static_cast<char>(other);
        const std::optional<Value> read = unarchivedValue(Data(std::move(damaged)));
        // Of the trailer all but the first six bytes means something.
        EXPECT_TRUE(!read || other == byte || whole.size() - i > 26);
        const std::optional<DataChain> again = read ? archivedData(*read) : std::nullopt;
        EXPECT_TRUE(!again || unarchivedValue(again->joined()) == read);
      }
    }
  }
}

}  // namespace
}  // namespace lumo
