// What each kind refuses, in which order, with which log line; and that a refusal leaves the store alone.

#include "tests/LumoApi/ConverterTest.h"

namespace {

class Refusals : public ConverterTest {};

using List = Value::Array;

/// A field with a value that is refused.
struct Fault {
  const char* field;
  Value value;
  const char* logged;  // null: refused in silence
  std::string reason;
  Fields others = {};  // set along with it

  std::string description() const { return std::string(field) + ": " + reason; }
};
using Faults = std::vector<Fault>;

Faults operator+(Faults a, const Faults& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

constexpr std::size_t kMiB = 1'048'576;
const char* const kSilent = nullptr;
const char* const kMissing = "missing or empty";
const char* const kNotUTF8 = "not valid UTF-8";
const char* const kNotSerialisable = "holds something that cannot be serialised";
const char* const kNoImage = "param error: image data is nil";
const char* const kBigImage = "param error: image data is too big";
const char* const kNoPreviewURL = "param error: preview image url is nil";
using Code = LumoApiRefusal::Code;
const std::pair<const char*, Code> kSizes[] = {
    {" units", Code::TooLong}, {" bytes", Code::TooBig}, {" entries", Code::TooMany}};
const Value kNoJSON(Fields{{"bytes", Data()}});

// What is said of a size that is one past its limit.
std::string overUnits(std::size_t limit) {
  return std::to_string(limit + 1) + " UTF-16 code units, at most " + std::to_string(limit);
}
std::string overBytes(std::size_t limit) {
  return std::to_string(limit + 1) + " bytes, at most " + std::to_string(limit);
}

// The faults of each kind, in the order in which they are looked for.

const Faults kTags = {
    {"tagName", letters(127) + "😀", "param error: tag name data is too big", overUnits(128)},
    {"messageExt", letters(255) + "😀", "param error: message ext data is too big", overUnits(256)}};
const Fault kPreview{
    "previewImageData", bytes(kMiB + 1), "param error: preview image data is too big", overBytes(kMiB)};
Faults dataFaults(const char* isNil, const char* isTooBig) {
  return {
      {"data", nullptr, isNil, kMissing},
      {"data", Data(), isNil, kMissing},
      {"data", bytes(5 * kMiB + 1), isTooBig, overBytes(5 * kMiB)},
  };
}
const Faults kText = {{"text", nullptr, "param error: text is nil", kMissing},
    {"text", "", "param error: text is nil", kMissing},
    {"text", letters(1535) + "😀", "param error: text is too long", overUnits(1536)},
    {"text", "\xED\xA0\x80", kSilent, kNotUTF8}};
const Faults kLink = {kPreview, {"title", nullptr, "param error: title is nil", kMissing},
    {"title", "", "param error: title is nil", kMissing, {{"cflag", 9}}},
    {"url", nullptr, "param error: url is nil", kMissing}, {"url", "", "param error: url is nil", kMissing},
    {"url", letters(1025), "param error: url is too long", overUnits(1024)}};
const Faults kWebImage = {
    {"previewImageURL", nullptr, kNoPreviewURL, kMissing}, {"previewImageURL", "", kNoPreviewURL, kMissing}};
const Faults kCommon = {{"previewImageData", nullptr, kNoImage, kMissing},
    {"previewImageData", Data(), kNoImage, kMissing},
    {"textArray", nullptr, kNoImage, kMissing, {{"pictureDataArray", List()}}}, kPreview,
    {"textArray", List{"a", "b"}, kSilent, "2 entries, at most 1"},
    {"pictureDataArray", List{Data(), Data()}, kSilent, "2 entries, at most 1"},
    {"textArray", List{letters(1535) + "😀"}, kSilent, overUnits(1536)},
    {"pictureDataArray", List{bytes(5 * kMiB + 1)}, kSilent, overBytes(5 * kMiB)}};
const Faults kAvatarPicture = {
    {"data", Data(), kNoImage, kMissing}, {"data", bytes(15 * kMiB + 1), kBigImage, overBytes(15 * kMiB)}};
const Faults kFaces = {{"imageDataArray", nullptr, kNoImage, kMissing},
    {"imageDataArray", List(), "param error: image count <= 0", kMissing},
    {"imageDataArray", List(10, bytes(2 * kMiB)), "param error: image count > 9", "10 entries, at most 9"},
    {"imageDataArray", List{bytes(1), bytes(kMiB + 1), bytes(3 * kMiB)}, kBigImage, overBytes(kMiB)},
    {"imageDataArray", List{bytes(kMiB), bytes(kMiB), bytes(kMiB), bytes(1)},
        "param error: all image data is too big", overBytes(3 * kMiB)}};
const Faults kFeedVideo = {{"videoData", nullptr, kSilent, kMissing, {{"assetURL", nullptr}}},
    {"videoData", Data(), kSilent, kMissing, {{"assetURL", ""}}}, {"assetURL", "\xFF", kSilent, kNotUTF8},
    {"videoData", bytes(50 * kMiB + 1), "param error: video data is too big", overBytes(50 * kMiB)},
    {"extMap", kNoJSON, kSilent, kNotSerialisable}, {"extMap", 7, kSilent, kNotSerialisable}};
const Faults kExtraService = {{"openID", "\xFF", kSilent, kNotUTF8}, {"toUin", "\xFF", kSilent, kNotUTF8},
    {"extraInfo", kNoJSON, kSilent, kNotSerialisable}, {"serviceID", "\xFF", kSilent, kNotUTF8}};
const Faults kCommonService = {{"openID", "\xFF", kSilent, kNotUTF8},
    {"extendInfo", kNoJSON, kSilent, kNotSerialisable}, {"serviceID", "\xFF", kSilent, kNotUTF8}};
const Faults kGroupPro = {{"signString", nullptr, kSilent, kMissing},
    {"signString", "\xFF", kSilent, kNotUTF8}, {"queryDictionary", Fields{{"k", "\xFF"}}, kSilent, kNotUTF8},
    {"queryDictionary", Fields{{"a b", ""}}, kSilent, "not a valid URL"}};
const Faults kMiniProgram = {{"miniAppID", nullptr, "param error: miniAppID is nil", kMissing},
    {"miniAppID", "", "param error: miniAppID is nil", kMissing}, {"miniAppID", "\xFF", kSilent, kNotUTF8}};

struct Kind {
  const char* className;
  Fields fine;
  Faults faults;

  /// A fine object with these fields set in turn.
  std::shared_ptr<LumoApiObject> object(const std::vector<Fields>& changes) const {
    const auto made = lumo::newContentObject(className);
    lumo::visitContent(*made, [&](const char*, auto& exact) {
      fill(exact, fine);
      for (const Fields& change : changes) fill(exact, change);
    });
    return made;
  }
};
const Fields kData{{"data", bytes(1)}};
const Kind kKinds[] = {{"LumoApiTextObject", {{"text", "t"}}, kText + kTags},
    {"LumoApiURLObject", {{"url", "https://a/"}, {"title", "T"}}, kLink + kTags},
    {"LumoApiExtendObject", kData,
        dataFaults("param error: data is nil", "param error: data is too big") + Faults{kPreview} + kTags},
    {"LumoApiImageObject", kData, dataFaults(kNoImage, kBigImage) + Faults{kPreview} + kTags},
    {"LumoApiWebImageObject", {{"previewImageURL", "https://a/"}}, kWebImage + kTags},
    {"LumoApiFileObject", kData,
        dataFaults(kNoImage, "param error: file data is too big") +
            Faults{kPreview, {"fileName", "\xFF", kSilent, kNotUTF8}}},
    {"LumoApiCommonContentObject",
        {{"previewImageData", bytes(1)}, {"textArray", List{"t"}}, {"pictureDataArray", List{bytes(1)}}},
        kCommon + kTags + Faults{{"textArray", List{"\xFF"}, kSilent, kNotSerialisable}}},
    {"LumoApiImageForLumoAvatarObject", kData, kAvatarPicture},
    {"LumoApiVideoForLumoAvatarObject", kData,
        dataFaults("param error: video data is nil", "param error: video data is too big than 5M.")},
    {"LumoApiImageArrayForFaceCollectionObject", {{"imageDataArray", List{bytes(1)}}}, kFaces},
    {"LumoApiImageArrayForNimboObject", {{"imageDataArray", List(21, bytes(1))}},
        {{"extMap", kNoJSON, kSilent, kNotSerialisable}}},
    {"LumoApiVideoForNimboObject", {{"videoData", bytes(1)}}, kFeedVideo},
    {"LumoApiExtraServiceObject", {}, kExtraService}, {"LumoApiCommonServiceObject", {}, kCommonService},
    {"LumoApiThirdAppBindGroupObject", {}, {{"unionID", "\xFF", kSilent, kNotUTF8}}},
    {"LumoApiCreateLumoGroupProObject", {{"signString", "s"}}, kGroupPro},
    {"LumoApiLaunchMiniProgramObject", {{"miniAppID", "m"}}, kMiniProgram}};

TEST_F(Refusals, EachFaultAndEachPairOfFaults) {
  for (const Kind& kind : kKinds) {
    SCOPED_TRACE(kind.className);
    ASSERT_TRUE(send(kind.object({}))) << refusal.description();
    store().setApiLargeData(before);
    for (std::size_t first = 0; first < kind.faults.size(); ++first) {
      for (std::size_t second = first; second < kind.faults.size(); ++second) {
        const Fault& expected = kind.faults[first];
        const Fault& later = kind.faults[second];
        SCOPED_TRACE(expected.description() + " before " + later.description());
        // The first is planted last, so that two faults of one field leave that one.
        const std::vector<Fields> both{
            later.others, {{later.field, later.value}}, expected.others, {{expected.field, expected.value}}};
        const auto object = kind.object(both);
        EXPECT_FALSE(send(object));
        EXPECT_EQ(*object, *kind.object(both)) << "the object stays as it was";
        EXPECT_EQ(log.at(0).find("urlWithMessage, share with :"), 0u);
        std::erase_if(log, [](const std::string& line) { return line.find("param error") != 0; });
        EXPECT_EQ(log, expected.logged ? Log{expected.logged} : Log{});
        EXPECT_EQ(refusal.description(), expected.description());
        for (const auto& [word, code] : kSizes)
          EXPECT_EQ(expected.reason.find(word) != std::string::npos, refusal.code == code);
        EXPECT_TRUE(storeUntouched());
      }
    }
  }
}

TEST_F(Refusals, StoreValuesThatNoURLHolds) {
  const std::pair<const char*, LumoApiDatastore::Values> cases[] = {{"scheme", {.scheme = "\xFF"}},
      {"openId", {.openId = "\xFF"}}, {"uin", {.uin = Value("\xFF")}}, {"appId", {.appId = "\xFF"}}};
  const auto launch = filled<LumoApiLaunchMiniProgramObject>({{"miniAppID", "m"}});
  for (const auto& [member, badValues] : cases) {
    values = badValues;
    EXPECT_FALSE(values.appId ? send(launch) : send(LumoApiTextObject::objectWithText("t"), 0, card("kiva")));
    EXPECT_EQ(refusal.description(), std::string(member) + ": not valid UTF-8");
    EXPECT_TRUE(storeUntouched()) << "a URL that cannot be written leaves nothing staged";
  }
}

TEST_F(Refusals, CommonContentCalledDirectlyChecksItsTitle) {
  LumoApiCommonContentObject common;
  fill(common, {{"previewImageData", bytes(1)}, {"textArray", List{"t"}}, {"title", letters(128)}});
  EXPECT_TRUE(Converter::urlWithCommonContentObject(common, 0));
  store().setApiLargeData(before);
  log.clear();
  common.setTitle(letters(129));
  EXPECT_FALSE(Converter::urlWithCommonContentObject(common, 0));
  EXPECT_EQ(log, Log{});
  EXPECT_TRUE(storeUntouched());
}

}  // namespace
