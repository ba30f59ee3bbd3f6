// Memory that runs out: every allocation of every operation fails once, alone and with all that follow it.
// Each time the whole result comes or none, nothing leaks, and a refusal changes nothing.

#include "LumoApi/Base64.h"
#include "LumoApi/LumoApiLog.h"
#include "platform/archive/KeyedArchiver.h"
#include "platform/pictures/Image.h"
#include "support/Allocations.h"
#include "tests/platform/SampleHEIF.h"
#include "tests/robustness/Requests.h"

#include <gtest/gtest.h>
#include <webp/encode.h>

#include <new>

namespace {

using Converter = LumoApiMessageAndUrlConverter;
using lumo::Data;
using lumo::Value;

template <class T>
bool same(const T& a, const T& b) {
  return a == b;
}
bool same(const LumoApiMessage& a, const LumoApiMessage& b) {
  return a.type() == b.type() && (a.object() == b.object() || *a.object() == *b.object());
}
template <class T>
bool same(const std::shared_ptr<T>& a, const std::shared_ptr<T>& b) {
  return *a == *b;
}
bool same(const LumoApiURLDecoder& a, const LumoApiURLDecoder& b) { return a.path() == b.path(); }
bool same(const lumo::DataChain& a, const lumo::DataChain& b) { return a.joined() == b.joined(); }

/// `after(result)` looks at what is left behind, undoes it and sees to its own memory.
template <class Operation, class After>
void expectAllOrNothing(const std::string& name, const Operation& operation, const After& after) {
  SCOPED_TRACE(name);
  const auto whole = operation();  // which also makes what is made once in a process
  ASSERT_TRUE(whole);
  after(whole.has_value());
  for (const bool lasting : {false, true}) {
    bool failed = true;
    for (std::size_t place = 0; failed; ++place) {
      SCOPED_TRACE(place);
      auto result = decltype(operation()){};
      Allocations allocations(place, lasting);
      try {
        result = operation();
      } catch (const std::bad_alloc&) {
      }
      allocations.relent();
      failed = allocations.failed();
      ASSERT_TRUE(result ? same(*result, *whole) : failed) << "neither the whole result nor none";
      after(result.has_value());
      result.reset();
      ASSERT_EQ(allocations.blocksInUse(), 0) << "a leak";
    }
  }
}

LumoApiLargeDataPtr recordOf(Value fileData) {
  return std::make_shared<const LumoApiLargeData>(LumoApiLargeData{{"file_data", std::move(fileData)},
      {"previewimagedata", Data::copy("preview")}, {"image_data_list", Value::Array{Data::copy("picture")}}});
}

class Exhaustion : public testing::Test {
 protected:
  Exhaustion() {
    LumoApiLog::setHandler([](const LumoApiLog::Line&) {});
    useValues(false);
    store.setApiLargeData(before);
    store.setApiMessage(LumoApiMessage::messageWithObject(LumoApiTextObject::objectWithText("held"), 1));
  }
  ~Exhaustion() override {
    LumoApiLog::removeHandler();
    store.setValues({});
    store.setApiLargeData(nullptr);
    store.setApiMessage(std::nullopt);
  }

  void useValues(bool inURL) {
    store.setValues({.scheme = "walks",
        .appName = "Harbour Walks",
        .appId = "an-identifier-of-some-length",
        .openId = "o-31c7",
        .uin = Value(7),
        .isLumoSupportUrlForShareText = inURL,
        .isLumoSupportUrlInsteadPastedboard = inURL});
  }

  template <class Result>
  Result checked(Result result) {
    EXPECT_TRUE(result || refusal.code == LumoApiRefusal::Code::OutOfMemory) << refusal.description();
    return result;
  }

  /// Only a conversion that succeeded may have replaced the record.
  void putBack(bool mayHaveChanged) {
    ASSERT_TRUE(mayHaveChanged || store.getApiLargeData() == before);
    store.setApiLargeData(before);
  }

  LumoApiDatastore& store = LumoApiDatastore::instance();
  LumoApiLargeDataPtr before = recordOf(Data::copy("a picture"));
  LumoApiRefusal refusal;
};

TEST_F(Exhaustion, OfEveryOutgoingRequest) {
  const auto requests = requests::outgoing(), untouched = requests::outgoing();
  for (const bool inURL : {false, true}) {
    useValues(inURL);
    for (std::size_t row = 0; row < requests.size(); ++row) {
      const LumoApiMessage& message = requests[row].message;
      expectAllOrNothing(
          requests[row].name, [&] { return checked(Converter::urlWithMessage(message, &refusal)); },
          [&](bool converted) {
            ASSERT_TRUE(*message.object() == *untouched[row].message.object());
            putBack(converted);
          });
    }
  }
}

TEST_F(Exhaustion, OfEveryIncomingURL) {
  const Value form(LumoApiCommonContentObject().toDictionary());
  for (const auto& record : {before, recordOf(lumo::archivedData(form)->joined())}) {
    store.setApiLargeData(before = record);
    for (const std::string& text : requests::incoming()) {
      const auto url = lumo::URL::parse(text);
      const bool isHeld = text.find("NeedToGetData") != text.npos;
      expectAllOrNothing(
          text,
          [&] {
            return checked(isHeld ? Converter::messageWithUrlUsedClipboard(url, &refusal)
                                  : Converter::messageWithUrl(url, &refusal));
          },
          [&](bool) { putBack(false); });
    }
  }
}

TEST_F(Exhaustion, OfTheOtherOperations) {
  const auto nothing = [](bool) {};
  const Value tree =
      Value::Dictionary{{"a text that needs memory of its own", Value::Array{1, 2.5, "text", true}},
          {"b", Value::Dictionary{{"c", "中"}}}};
  const Value record = Value::Dictionary{{"file_data", Data::copy("bytes")}, {"tree", tree}};
  const Data archive = lumo::archivedData(record)->joined();
  const std::string json = *lumo::writeJSON(tree), url = "https://a.example/é?q=中#f";
  expectAllOrNothing(
      "archive", [&] { return lumo::archivedData(record); }, nothing);
  expectAllOrNothing(
      "unarchive", [&] { return lumo::unarchivedValue(archive); }, nothing);
  expectAllOrNothing(
      "write JSON", [&] { return lumo::writeJSON(tree); }, nothing);
  expectAllOrNothing(
      "parse JSON", [&] { return lumo::parseJSON(json); }, nothing);
  expectAllOrNothing(
      "parse a URL", [&] { return lumo::URL::parse(url); }, nothing);
  expectAllOrNothing(
      "decode", [&] { return LumoApiURLDecoder::decoderWithUrl(lumo::URL::parse(url)); }, nothing);
  expectAllOrNothing(
      "a path of the caller's",
      [&] {
        LumoApiQueryDictionary query;
        return Converter::urlWithQueryItemForAvatar(query, 7, 0, "/a/path");
      },
      nothing);
  const LumoApiQueryDictionary query{{"guild", "a name & more"}, {"b", "中"}};
  expectAllOrNothing(
      "signed", [&] { return Converter::appendSigURLWith(query, "/join", "signature"); }, nothing);
}

Data exampleFile(const char* name) {
  return lumo::cli::readRegularFile(LUMOAPI_SOURCE_DIR "/examples/files/" + std::string(name));
}

Data makeWebP(bool lossless) {
  constexpr int kSide = 64;
  const std::vector<std::uint8_t> pixels(4 * kSide * kSide, 90);
  std::uint8_t* bytes = nullptr;
  const std::size_t size = lossless ? WebPEncodeLosslessRGBA(pixels.data(), kSide, kSide, 4 * kSide, &bytes)
                                    : WebPEncodeRGB(pixels.data(), kSide, kSide, 3 * kSide, 75, &bytes);
  return Data(std::shared_ptr<const void>(bytes, WebPFree), bytes, size);
}

TEST_F(Exhaustion, OfPictures) {
  for (const Data& picture :
      {exampleFile("harbour-morning.jpg"), exampleFile("avatar.png"), makeWebP(false)}) {
    expectAllOrNothing(
        std::string(picture.view().substr(0, 12)),
        [&] {
          auto jpeg = lumo::jpegRepresentation(picture, 0.5);
          EXPECT_TRUE(jpeg) << "taken for no picture";
          return jpeg;
        },
        [](bool) {});
  }
}

// Their libraries do not survive it everywhere: they are asked only where memory is seen to be enough.
TEST_F(Exhaustion, IsNoticedBeforeFragilePictures) {
  if (!Allocations::kWatches) GTEST_SKIP();
  constexpr std::size_t kAskedFor = 12 * 32 * 32;
  const std::pair<Data, std::size_t> kCases[] = {{makeWebP(true), 1},  // after the pixels
#ifdef LUMOAPI_HAVE_HEIF
      {*lumo::base64DecodedData(lumo::kHEIF), 0}
#endif
  };
  for (const auto& [picture, place] : kCases) {
    ASSERT_TRUE(lumo::jpegRepresentation(picture, 0.5));
    const Allocations allocations(place, false, kAskedFor);
    EXPECT_THROW((void)lumo::jpegRepresentation(picture, 0.5), std::bad_alloc);
  }
}

TEST_F(Exhaustion, LeavesAnAvatarItsPicture) {
  const std::string picture(exampleFile("harbour-morning.jpg").view());
  const Data large(picture + std::string(5'300'000, '\0'));  // so long that it is re-encoded
  LumoApiImageForLumoAvatarObject object;
  expectAllOrNothing(
      "avatar",
      [&] {
        object.setData(large);
        return Converter::urlWithImageObjectForAvatar(object, 7);
      },
      [&](bool converted) {
        ASSERT_TRUE(object.data());
        object.setData(std::nullopt);
        putBack(converted);
      });
}

}  // namespace
