// Eight threads convert a hundred thousand different documents, each with surroundings of its own. Each comes
// out as it does alone, and what the process has of its own is neither read nor changed.

#include "LumoApi/Base64.h"
#include "LumoApi/LumoApiCurrentObject.h"
#include "LumoApi/LumoApiLog.h"
#include "LumoApi/LumoWebViewKit.h"
#include "documents/Answer.h"
#include "documents/Conversion.h"
#include "documents/ResultWriter.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <thread>

namespace lumo::documents {
namespace {

constexpr std::size_t kDocuments = 100'000, kThreads = 8;

std::string encodeRequest(const std::string& number, const std::string& bytes) {
  return R"({"message":{"type":7,"object":{"class":"LumoApiImageObject","title":")" + number +
         R"(","data":{"$data":")" + bytes + R"("}}},"datastore":{"scheme":"s)" + number + R"(","uin":)" +
         number + R"(},"currentObject":{"class":"LumoApiObject","cflag":)" + number + "}}";
}

std::string decodeRequest(const std::string& number, const std::string& bytes, std::size_t kind) {
  const std::string url[] = {
      "request_from_lumo/view?file_type=img", "any/?NeedToGetData=true", "unknown/?a=" + number, "kit/?a=b"};
  return R"({"url":"demo://)" + url[kind] + R"(","entry":"messageWithUrl)" +
         (kind == 1 ? "UsedClipboard" : "") + R"(","datastore":{"apiLargeData":{"file_data":{"$data":")" +
         bytes + R"("}},"apiMessage":{"type":)" + number +
         R"(}},"webView":{"claims":["demo://kit"],"message":{"type":)" + number + "}}}";
}

/// The result of the document of that number.
std::string resultOf(std::size_t number) {
  const std::string digits = std::to_string(number), bytes = base64Encoded("bytes " + digits);
  const NamedBytes none;
  std::string output;
  if (number % 2 == 0) {
    answerTo(
        encodeRequest(digits, bytes), none,
        [](const Place& place, std::string& text) {
          const Encoded encoded = encode(readEncodeRequest(place));
          appendResult(text, documentOf(encoded), {});
          return encoded.refusal.description();
        },
        output);
  } else {
    answerTo(
        decodeRequest(digits, bytes, number / 2 % 4), none,
        [](const Place& place, std::string& text) {
          const Decoded decoded = decode(readDecodeRequest(place));
          appendResult(text, documentOf(decoded), {});
          return decoded.refusal.description();
        },
        output);
  }
  return output;
}

TEST(Documents, AreConvertedByAnyNumberOfThreads) {
  LumoApiDatastore& store = LumoApiDatastore::instance();
  const auto record = std::make_shared<LumoApiLargeData>();
  const auto current = std::make_shared<const LumoApiObject>();
  std::atomic<int> asked{0};
  store.setScheme("process");
  store.setApiLargeData(record);
  LumoApiLog::setHandler([&asked](const LumoApiLog::Line&) { ++asked; });
  LumoWebViewKit::setHandler({[&asked](const URL&) { return ++asked > 0; }, {}});

  for (const char* part : {"callback_name=s8&", "&uin=8&", "&cflag=8", "item count: 1", "Ynl0ZXMgOA=="}) {
    EXPECT_NE(resultOf(8).find(part), std::string::npos) << part;
  }
  EXPECT_EQ(resultOf(3), R"({"message":{"type":3,"object":null},"log":[]})");
  std::vector<std::size_t> alone;
  for (std::size_t number = 0; number < kDocuments; ++number) {
    alone.push_back(std::hash<std::string>()(resultOf(number)));
  }
  const auto work = [&](std::size_t thread) {
    const LumoApiCurrentObject::Scope scope(current);
    for (std::size_t number = thread; number < kDocuments; number += kThreads) {
      ASSERT_EQ(std::hash<std::string>()(resultOf(number)), alone[number]) << number;
    }
    EXPECT_EQ(LumoApiCurrentObject::get(), current);
  };
  std::vector<std::thread> threads;
  for (std::size_t thread = 0; thread < kThreads; ++thread) threads.emplace_back(work, thread);
  for (std::thread& thread : threads) thread.join();

  EXPECT_EQ(asked, 0);
  EXPECT_EQ(store.scheme(), "process");
  EXPECT_EQ(store.getApiLargeData(), record);
  LumoWebViewKit::removeHandler();
  LumoApiLog::removeHandler();
  store.setApiLargeData(nullptr);
  store.setValues({});
}

}  // namespace
}  // namespace lumo::documents
