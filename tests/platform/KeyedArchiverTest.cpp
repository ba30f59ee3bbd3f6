#include "platform/Base64.h"
#include "platform/BinaryPlistWriter.h"
#include "platform/KeyedArchiver.h"

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

std::optional<Value> reread(const Value& value) {
  return unarchivedValue(archivedData(value).value().joined());
}

Value nested(int depth) {
  Value value = Array{};
  while (--depth > 1) value = Array{value};
  return Entries{{"deep", value}};
}

// Compares a value with what another reader finds in its archive.
class OtherReader {
 public:
  explicit OtherReader(const Data& archive) {
    plist_from_bin(reinterpret_cast<const char*>(archive.data()), static_cast<std::uint32_t>(archive.size()),
                   &top_);
    objects_ = plist_dict_get_item(top_, "$objects");
  }
  ~OtherReader() { plist_free(top_); }

  bool rootIs(const Value& value) {
    return is(plist_access_path(top_, 2, "$top", "root"), value, "NSMutableDictionary");
  }

  std::string classAt(std::uint32_t number) {
    return text(plist_dict_get_item(plist_array_get_item(objects_, number), "$classname"));
  }

 private:
  static std::string text(plist_t node) { return plist_get_string_ptr(node, nullptr); }

  plist_t at(plist_t uid) {
    std::uint64_t number = 0;
    plist_get_uid_val(uid, &number);
    return plist_array_get_item(objects_, static_cast<std::uint32_t>(number));
  }

  bool isInstance(plist_t node, std::string_view name) {
    return text(plist_dict_get_item(at(plist_dict_get_item(node, "$class")), "$classname")) == name;
  }

  bool is(plist_t uid, const Value& value, std::string_view dictionaryClass = "NSDictionary") {
    const plist_t node = at(uid);
    const plist_t elements = plist_dict_get_item(node, "NS.objects");
    if (value.isNull()) return isInstance(node, "NSNull");
    if (const auto* array = value.asArray()) {
      bool same = isInstance(node, "NSArray") && plist_array_get_size(elements) == array->size();
      for (std::uint32_t i = 0; same && i < array->size(); ++i)
        same = is(plist_array_get_item(elements, i), (*array)[i]);
      return same;
    }
    if (const auto* dictionary = value.asDictionary()) {
      const plist_t keys = plist_dict_get_item(node, "NS.keys");
      bool same = isInstance(node, dictionaryClass) && plist_array_get_size(keys) == dictionary->size();
      std::uint32_t i = 0;
      for (const auto& [key, element] : *dictionary) {
        same =
            same && is(plist_array_get_item(keys, i), key) && is(plist_array_get_item(elements, i), element);
        ++i;
      }
      return same;
    }
    if (value == Value("$null"))
      return isInstance(node, "NSString") && text(plist_dict_get_item(node, "NS.string")) == "$null";
    std::uint64_t number = 0;
    double real = 0;
    std::uint8_t boolean = 2;
    if (const auto* held = value.asString())
      return plist_get_node_type(node) == PLIST_STRING && text(node) == *held;
    if (const auto* held = value.asData()) {
      const char* bytes = plist_get_data_ptr(node, &number);
      return plist_get_node_type(node) == PLIST_DATA && held->view() == std::string_view(bytes, number);
    }
    if (const auto* held = value.asBoolean()) return plist_get_bool_val(node, &boolean), boolean == *held;
    if (const auto* held = value.asDouble()) return plist_get_real_val(node, &real), real == *held;
    if (plist_get_node_type(node) != PLIST_UINT) return false;
    plist_get_uint_val(node, &number);
    return number ==
           (value.asUnsigned() ? *value.asUnsigned() : static_cast<std::uint64_t>(*value.asInteger()));
  }

  plist_t top_ = nullptr;
  plist_t objects_ = nullptr;
};

TEST(KeyedArchiverTest, WritesAndReadsTheFormatByteForByte) {
  const Data archive = archivedData(example()).value().joined();
  EXPECT_EQ(base64Encoded(archive.view()), kExample);
  EXPECT_EQ(unarchivedValue(archive), example());
}

TEST(KeyedArchiverTest, EveryReaderFindsWhatWasWritten) {
  Array numbers{0,  1,    255,  256,   65535, 65536, 0xFFFFFFFF, 0x100000000,
                -1, -256, true, false, 0.0,   -1.5,  5e-324};
  for (const std::int64_t edge :
       {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()})
    numbers.emplace_back(edge);
  for (const std::uint64_t edge : {std::uint64_t{1} << 63, ~std::uint64_t{0}}) numbers.emplace_back(edge);
  const Array texts{"",
                    "fourteen chars",
                    "fifteen chars..",
                    std::string(300, 'x'),
                    std::string(70000, 'y'),
                    "文字",
                    "😀 é",
                    "$null",
                    "root",
                    "$class"};
  Array many;
  Entries keys;
  for (int i = 0; i < 500; ++i) {
    many.push_back(Array{i, "text " + std::to_string(i % 70), Data::copy(std::to_string(i))});
    keys.set("key " + std::to_string(i), Entries{{"same", i}});
  }
  const Value kCases[] = {Entries{},
                          Entries{{"previewimagedata", bytesOf(100, 1)},
                                  {"file_data", bytesOf(70000, 2)},
                                  {"image_data_list", Array{bytesOf(100, 1), bytesOf(100, 3), Data()}},
                                  {"pasted_kiva_data", ""}},
                          Entries{{"numbers", numbers},
                                  {"texts", texts},
                                  {"$null", nullptr},
                                  {"文", Array{nullptr, Array{}, Entries{{"NS.keys", Entries{}}}}}},
                          Entries{{"many", many}, {"keys", keys}}, nested(kMaxArchiveDepth)};
  for (const Value& value : kCases) {
    SCOPED_TRACE(value.asDictionary()->size());
    EXPECT_EQ(reread(value), value);
    EXPECT_TRUE(OtherReader(archivedData(value).value().joined()).rootIs(value));
  }
  // A class is numbered when its first object is finished: 1 the root, 2 its key, 3 the array, 4 the number.
  OtherReader order(archivedData(Entries{{"list", Array{7}}}).value().joined());
  EXPECT_EQ(order.classAt(5) + " " + order.classAt(6), "NSArray NSMutableDictionary");
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
  const Value kCases[] = {nullptr,
                          "text",
                          Array{},
                          Entries{{"\xFF", 1}},
                          Entries{{"a", Array{"\xED\xA0\x80"}}},
                          nested(kMaxArchiveDepth + 1)};
  for (const Value& value : kCases) EXPECT_FALSE(archivedData(value));
}

// Archives that only somebody else would write. Number 1 is the root, 2 NSArray, 3 NSDictionary, 4 another
// class.
using Object = std::function<void(PlistWriter&)>;

Object text(std::string value) {
  return [value](PlistWriter& plist) { plist.text(value); };
}

Object list(std::vector<std::uint32_t> uids) {
  return [uids](PlistWriter& plist) {
    plist.beginArray(uids.size());
    for (const std::uint32_t uid : uids) plist.uid(uid);
  };
}

Object instance(std::uint32_t classNumber, std::vector<std::pair<std::string_view, Object>> fields) {
  return [=](PlistWriter& plist) {
    plist.beginDictionary(fields.size() + 1);
    plist.text("$class");
    for (const auto& field : fields) plist.text(field.first);
    plist.uid(classNumber);
    for (const auto& field : fields) field.second(plist);
  };
}

Object array(std::vector<std::uint32_t> uids) { return instance(2, {{"NS.objects", list(std::move(uids))}}); }

Object dictionary(std::vector<std::uint32_t> keys, std::vector<std::uint32_t> values) {
  return instance(3, {{"NS.objects", list(std::move(values))}, {"NS.keys", list(std::move(keys))}});
}

Object classRecord(std::string name) {
  return [name](PlistWriter& plist) {
    plist.beginDictionary(1);
    plist.text("$classname");
    plist.text(name);
  };
}

Data archiveOf(const Object& root, const std::vector<Object>& fromFive, const std::string& fourth = "NSNull",
               std::uint32_t rootNumber = 1) {
  std::vector<Object> objects{text("$null"), root, classRecord("NSArray"), classRecord("NSMutableDictionary"),
                              classRecord(fourth)};
  objects.insert(objects.end(), fromFive.begin(), fromFive.end());
  PlistWriter plist;
  plist.beginDictionary(4);
  for (const auto key : {"$top", "$archiver", "$objects", "$version"}) plist.text(key);
  plist.beginDictionary(1);
  plist.text("root");
  plist.uid(rootNumber);
  plist.text("NSKeyedArchiver");
  plist.beginArray(objects.size());
  for (const Object& object : objects) object(plist);
  plist.integer(100000);
  return plist.finish().joined();
}

// An archive with some of its bytes replaced by as many others.
Data with(const Data& archive, std::string_view bytes, std::string_view others) {
  std::string changed(archive.view());
  const std::size_t place = changed.find(bytes);
  EXPECT_TRUE(place != std::string::npos && bytes.size() == others.size());
  changed.replace(place, others.size(), others);
  return Data(std::move(changed));
}

// Nine bytes, to be replaced by an object that the writer does not write.
constexpr auto kPlaceholder =
    "\x48"
    "12345678"sv;
void placeholder(PlistWriter& plist) {
  static const Data data = Data::copy(kPlaceholder.substr(1));
  plist.data(data);
}

TEST(KeyedArchiverTest, ReadsWhatOthersWrite) {
  const auto archived = [](const Object& root, const std::string& fourth = "NSNull") {
    return archiveOf(root, {text("key"), text("text"), text("last")}, fourth);
  };
  const auto replaced = [](std::string_view object) {
    return with(archiveOf(placeholder, {}), kPlaceholder, object);
  };
  const auto wide = [](PlistWriter& plist) { plist.unsignedInteger(0xFFFFFFFFFFFFFFFE); };
  const auto real = [](PlistWriter& plist) { plist.real(1.5); };
  const auto listed = [](PlistWriter& plist) {
    plist.beginArray(1);
    placeholder(plist);
  };
  const std::pair<Data, Value> kCases[] = {
      {archived(instance(4, {{"NS.objects", list({6, 6})}}), "NSMutableArray"), Array{"text", "text"}},
      {archived(instance(4, {{"NS.string", text("$null")}}), "NSMutableString"), "$null"},
      {archived(instance(4, {{"NS.data", placeholder}}), "NSMutableData"), Data::copy("12345678")},
      {archived(instance(4, {{"NS.time", real}}), "NSDate"), 1.5},
      {archived(instance(4, {})), nullptr},
      {archived(dictionary({5, 6, 5}, {6, 6, 7})), Entries{{"key", "last"}, {"text", "text"}}},
      {replaced("\x13\x00\x00\x00\x00\x00\x00\x00\x07"sv), 7},
      {replaced("\x33\x40\x04\x00\x00\x00\x00\x00\x00"sv), 2.5},
      {replaced("\x22\x40\x20\x00\x00\x00\x00\x00\x00"sv), 2.5},
      {replaced("\x64\xD8\x3D\xDE\x00\xD8\x3D\x00\x41"sv), "😀\xED\xA0\xBD\x41"},
      {with(archived(instance(2, {{"NS.objects", listed}})), kPlaceholder, "\x87\0\0\0\0\0\0\0\x06"sv),
       Array{"text"}},
      {with(archived(wide), "\x14\0\0\0\0\0\0\0\0"sv, "\x14\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"), -2}};
  for (const auto& [archive, value] : kCases) {
    SCOPED_TRACE(base64Encoded(archive.view()));
    EXPECT_EQ(unarchivedValue(archive), value);
  }
}

TEST(KeyedArchiverTest, RefusesWhatIsNoArchiveOfItsKinds) {
  const auto archived = [](const Object& root, const std::string& fourth = "NSNull") {
    return archiveOf(root, {text("key"), text("text"), array({}), list({6})}, fourth);
  };
  const Data good = archived(array({6}));
  ASSERT_TRUE(unarchivedValue(good));
  const auto listed = [](PlistWriter& plist) {
    plist.beginArray(1);
    plist.text("text");
  };
  const Data kCases[] = {
      with(good, "NSKeyedArchiver", "NSKeyedArchives"),
      with(good, "\x12\x00\x01\x86\xA0"sv, "\x12\x00\x01\x86\xA1"sv),
      with(good, "$top", "$tip"),
      with(good, "root", "boot"),
      with(good, "$objects", "$objectz"),
      with(good, "$classname", "$classnome"),
      with(good, "NSArray", "NSProxy"),
      archived(instance(4, {}), "NSObject"),
      archived(instance(9, {})),
      archived(array({0})),
      archived(array({9})),
      archived(array({8})),
      archived(instance(2, {{"NS.objects", listed}})),
      archived(instance(2, {{"NS.objects", text("text")}})),
      archived(instance(2, {})),
      archived(dictionary({5, 6}, {6})),
      archived(dictionary({7}, {6})),
      archived(text("$null")),
      archived(instance(4, {{"NS.string", placeholder}}), "NSString"),
      archived(instance(4, {{"NS.data", text("text")}}), "NSData"),
      archived(instance(4, {{"NS.time", text("text")}}), "NSDate"),
      archived(array({1})),
      archiveOf(array({5}), {array({6}), dictionary({7}, {1}), text("key")}),
      archiveOf(array({}), {}, "NSNull", 0),
      with(archiveOf(placeholder, {}), kPlaceholder, "\x5FNotASCII"sv),
      with(archiveOf(placeholder, {}), kPlaceholder, "\x57\xC3\xA9Text!\x08"sv),
      with(archiveOf(placeholder, {}), kPlaceholder, "\x4F\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF"sv),
  };
  for (const Data& archive : kCases) {
    SCOPED_TRACE(base64Encoded(archive.view()));
    EXPECT_FALSE(unarchivedValue(archive));
  }
}

// Number 1 holds the first of `depth` - 1 arrays inside one another and, beside it, the one at `again`.
Data chain(std::uint32_t depth, std::uint32_t again) {
  std::vector<Object> arrays;
  for (std::uint32_t number = 5; number < 3 + depth; ++number) arrays.push_back(array({number + 1}));
  arrays.push_back(array({}));
  return archiveOf(array({5, again}), arrays);
}

TEST(KeyedArchiverTest, NestingAndSharingAreBounded) {
  EXPECT_TRUE(unarchivedValue(chain(128, 7)));
  EXPECT_FALSE(unarchivedValue(chain(129, 7)));
  // A known array counts with its depth where it appears again.
  const auto deeper = [](std::uint32_t depth) {
    std::vector<Object> arrays{array({})};
    for (std::uint32_t number = 6; number < 6 + depth; ++number) arrays.push_back(array({number - 1}));
    const std::uint32_t top = 5 + depth;
    for (std::uint32_t i = 1; i < 64; ++i) arrays.push_back(array({top + i - 1}));
    return unarchivedValue(archiveOf(array({top, top + 63}), arrays)).has_value();
  };
  EXPECT_TRUE(deeper(63));
  EXPECT_FALSE(deeper(64));

  const std::vector<std::uint32_t> ten(10, 6);
  std::vector<Object> laughs{array({})};
  const auto laughing = [&laughs] {
    return unarchivedValue(archiveOf(array({std::uint32_t(4 + laughs.size())}), laughs));
  };
  for (std::uint32_t number = 5; number < 7; ++number)
    laughs.push_back(array(std::vector<std::uint32_t>(10, number)));
  const std::optional<Value> shared = laughing();
  ASSERT_TRUE(shared);
  const Array& top = *(*shared->asArray())[0].asArray();
  EXPECT_EQ(top[0].asArray(), top[9].asArray());
  for (std::uint32_t number = 7; number < 14; ++number)
    laughs.push_back(array(std::vector<std::uint32_t>(10, number)));
  EXPECT_FALSE(laughing());

  const auto repeated = [](std::size_t times) {
    return unarchivedValue(
        archiveOf(array(std::vector<std::uint32_t>(times, 5)), {text(std::string(1 << 20, 'x'))}));
  };
  EXPECT_TRUE(repeated(16));
  EXPECT_FALSE(repeated(32));
}

TEST(KeyedArchiverTest, DamageIsNeverMoreThanARefusal) {
  const Value rich =
      Entries{{"文", Array{1, -1, 2.5, true, nullptr, ~std::uint64_t{0}, "$null"}},
              {"list", Array{Entries{{"key", std::string(20, 'x')}}, Array{}, bytesOf(70, 9)}}};
  for (const Value& value : {example(), rich}) {
    const std::string whole(archivedData(value).value().joined().view());
    EXPECT_FALSE(unarchivedValue(Data::copy(whole + '\0')));
    for (std::size_t i = 0; i < whole.size(); ++i) {
      SCOPED_TRACE(i);
      EXPECT_FALSE(unarchivedValue(Data::copy(whole.substr(0, i))));
      const int byte = static_cast<std::uint8_t>(whole[i]);
      for (const int other : {0x00, 0xFF, byte ^ 0xFF, byte ^ 0x01, byte ^ 0x10, byte ^ 0x80}) {
        if (other == byte) continue;
        std::string damaged = whole;
        damaged[i] = static_cast<char>(other);
        const std::optional<Value> read = unarchivedValue(Data(std::move(damaged)));
        if (whole.size() - i <= 26) {  // the part of the trailer that means something
          EXPECT_FALSE(read);
        }
        const std::optional<DataChain> again = read ? archivedData(*read) : std::nullopt;
        if (again) {
          EXPECT_EQ(unarchivedValue(again->joined()), read);
        }
      }
    }
  }
}

}  // namespace
}  // namespace lumo
