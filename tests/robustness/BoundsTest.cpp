// What input of strangers costs, counted instead of timed: memory grows with the input and no faster, keys
// made to collide do not, and no depth needs more than a small stack. A step that took quadratic time would
// not come to an end on inputs of this size.

#include "LumoApi/Base64.h"
#include "LumoApi/LumoApiLog.h"
#include "platform/archive/BinaryPlistWriter.h"
#include "platform/archive/KeyedArchiver.h"
#include "platform/pictures/Image.h"
#include "platform/values/JSON.h"
#include "support/Allocations.h"
#include "tests/platform/SampleHEIF.h"
#include "tests/robustness/Requests.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <functional>

namespace {

using Converter = LumoApiMessageAndUrlConverter;
using lumo::Data;
using lumo::Value;

/// `count` pieces, each the prefix, its number where it is to have one, and the suffix.
std::string repeated(std::size_t count, const std::string& prefix, bool numbered, const std::string& suffix) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) text += prefix + (numbered ? std::to_string(i) : "") + suffix;
  return text;
}

std::string nested(std::size_t depth, const std::string& core = "") {
  return std::string(depth, '[') + core + std::string(depth, ']');
}

/// Arrays in arrays, each of which holds the next one `times` times: times^levels values, were they not
/// shared.
std::string sharingArchive(std::size_t levels, std::size_t times = 8) {
  lumo::PlistWriter plist;
  plist.beginDictionary(4);
  for (const char* key : {"$version", "$archiver", "$top", "$objects"}) plist.text(key);
  plist.integer(100'000);
  plist.text("NSKeyedArchiver");
  plist.beginDictionary(1);
  plist.text("root");
  plist.uid(2);
  plist.beginArray(levels + 2);
  plist.text("$null");
  plist.beginDictionary(1);
  plist.text("$classname");
  plist.text("NSArray");
  for (std::uint32_t level = 1; level <= levels; ++level) {
    plist.beginDictionary(2);
    for (const char* key : {"$class", "NS.objects"}) plist.text(key);
    plist.uid(1);
    plist.beginArray(level == levels ? 0 : times);
    for (std::size_t i = 0; level != levels && i < times; ++i) plist.uid(level + 2);
  }
  return std::string(plist.finish().joined().view());
}

std::string archiveOfEntries(std::size_t count) {
  Value::Dictionary dictionary;
  for (std::size_t i = 0; i < count; ++i) dictionary.set(std::to_string(i), Value::Array{i});
  return std::string(lumo::archivedData(dictionary)->joined().view());
}

std::optional<LumoApiMessage> open(const std::string& rest) {
  return Converter::messageWithUrl(lumo::URL::parse(Data::unowned(rest)));
}

struct Row {
  const char* name;
  std::size_t count;
  std::string (*make)(std::size_t count);
  void (*read)(const std::string& input);
  double peak;  ///< the most memory in use, in bytes for each byte of the input
};

const Row kRows[] = {
    {"pairs of a response", 250'000,
        [](std::size_t n) { return "a://response_from_lumo/?" + repeated(n, "k", true, "=&"); },
        [](const std::string& url) { EXPECT_TRUE(open(url)); }, 16},
    {"equal pairs of a query", 250'000,
        [](std::size_t n) { return "a://response_from_lumo/?" + repeated(n, "k=", true, "&"); },
        [](const std::string& url) { EXPECT_TRUE(open(url)); }, 0.1},
    {"escapes of a launch parameter", 1 << 17,
        [](std::size_t n) { return "a://maLaunchApp?appParameter=" + repeated(n, "%41", false, ""); },
        [](const std::string& url) { EXPECT_TRUE(open(url)); }, 1.1},
    {"base64 of a shown text", 1 << 17,
        [](std::size_t n) {
          return "a://request_from_lumo/view?file_type=text&file_data=" + std::string(4 * n, 'A');
        },
        [](const std::string& url) { EXPECT_TRUE(open(url)); }, 0.9},
    {"JSON numbers", 1 << 17, [](std::size_t n) { return "[" + repeated(n, "1,", false, "") + "1]"; },
        [](const std::string& json) { EXPECT_TRUE(lumo::parseJSON(json)); }, 64},
    {"JSON keys", 1 << 14, [](std::size_t n) { return "{" + repeated(n, "\"", true, "\":0,") + "\"\":0}"; },
        [](const std::string& json) { EXPECT_TRUE(lumo::parseJSON(json)); }, 32},
    {"JSON nesting", 64,
        [](std::size_t n) { return nested(1, repeated(n, nested(511) + ",", false, "") + "1"); },
        [](const std::string& json) { EXPECT_TRUE(lumo::writeJSON(lumo::parseJSON(json).value())); }, 80},
    {"entries of an archive", 1 << 13, archiveOfEntries,
        [](const std::string& bytes) { EXPECT_TRUE(lumo::unarchivedValue(Data::unowned(bytes))); }, 6},
    {"equal elements of an archive", 1 << 17, [](std::size_t n) { return sharingArchive(2, n); },
        [](const std::string& bytes) { EXPECT_TRUE(lumo::unarchivedValue(Data::unowned(bytes))); }, 48},
    {"sharing in an archive", 30, [](std::size_t n) { return sharingArchive(n); },
        [](const std::string& bytes) { EXPECT_FALSE(lumo::unarchivedValue(Data::unowned(bytes))); }, 14},
    {"letters of a URL to escape", 1 << 17,
        [](std::size_t n) { return "a://h/" + repeated(n, "中", false, ""); },
        [](const std::string& url) { EXPECT_TRUE(lumo::URL::parse(Data::unowned(url))); }, 3.1},
    {"keys of a group", 1 << 14, [](std::size_t n) { return repeated(n, "\x1B", true, "\n"); },
        [](const std::string& keys) {
          LumoApiQueryDictionary query;
          for (std::size_t at = 0, end; at < keys.size(); at = end + 1) {
            end = keys.find('\n', at);
            query.set(keys.substr(at, end - at), lumo::FixedWord("v"));
          }
          EXPECT_FALSE(Converter::urlWithQueryItemForGroupPro(query, 7, 0, "/join", "s"));
        },
        35},
};

TEST(Bounds, MemoryGrowsWithTheInputAndNoFaster) {
  LumoApiLog::setHandler([](const LumoApiLog::Line&) {});
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.name);
    double bytes[2], peak[2], blocks[2];
    for (const std::size_t times : {0u, 1u}) {
      const std::string input = row.make(row.count << 2 * times);
      const auto size = static_cast<double>(input.size());
      row.read(input);
      const Allocations allocations;
      row.read(input);
      bytes[times] = static_cast<double>(allocations.bytes()) / size;
      blocks[times] = static_cast<double>(allocations.blocks()) / size;
      peak[times] = static_cast<double>(allocations.peak()) / size;
    }
    EXPECT_LE(bytes[1], bytes[0] * 1.125);
    EXPECT_LE(blocks[1], blocks[0] * 1.125);
    EXPECT_LE(peak[1], row.peak);
  }
  LumoApiLog::removeHandler();
}

/// A key that counts how often anybody looks at it.
struct CountedKey {
  static inline std::size_t looks = 0;
  std::string text;
  explicit operator std::string_view() const noexcept {
    ++looks;
    return text;
  }
};

TEST(Bounds, KeysMadeToCollideDoNot) {
  // Where a hash adds up 31 times itself and the next character, "Aa" and "BB" are the same.
  lumo::Dictionary<int, CountedKey> dictionary;
  for (int i = 0; i < 1 << 16; ++i) {
    CountedKey key;
    for (int bit = 0; bit < 16; ++bit) key.text += (i >> bit & 1) != 0 ? "Aa" : "BB";
    dictionary.set(std::move(key), i);
  }
  EXPECT_EQ(dictionary.size(), 1u << 16);
  EXPECT_LT(CountedKey::looks, 10u << 16);
}

void onSmallStack(std::function<void()> work) {
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, 1 << 20), 0);
  pthread_t thread{};
  const auto run = [](void* argument) -> void* {
    (*static_cast<std::function<void()>*>(argument))();
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, &attributes, run, &work), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

TEST(Bounds, EverythingRunsOnASmallStack) {
  onSmallStack([] {
    LumoApiLog::silence();
    for (const auto& request : requests::outgoing()) EXPECT_TRUE(Converter::urlWithMessage(request.message));
    for (const std::string& url : requests::incoming())
      EXPECT_EQ(!open(url), url.find("anywhere") != url.npos);

    const std::string deep = nested(512);
    const auto post = open("a://request_from_lumo/view?file_type=nimbo&extMap=" + lumo::base64Encoded(deep));
    EXPECT_TRUE(Converter::urlWithMessage(post)) << "the deepest map there and back";
    EXPECT_FALSE(lumo::parseJSON(std::string(1'000'000, '[')));
    Value value;
    for (int level = 0; level < 127; ++level) value = Value(Value::Array{value});
    const Value root = Value::Dictionary{{"deep", value}};
    EXPECT_EQ(lumo::unarchivedValue(lumo::archivedData(root)->joined()), root);
    EXPECT_FALSE(lumo::unarchivedValue(Data(sharingArchive(10'000))));
    EXPECT_TRUE(lumo::jpegRepresentation(
        lumo::cli::readRegularFile(LUMOAPI_SOURCE_DIR "/examples/files/avatar.png"), 1));
#ifdef LUMOAPI_HAVE_HEIF
    EXPECT_TRUE(lumo::jpegRepresentation(*lumo::base64DecodedData(lumo::kHEIF), 0.5));
#endif
    LumoApiLog::removeHandler();
  });
}

}  // namespace
