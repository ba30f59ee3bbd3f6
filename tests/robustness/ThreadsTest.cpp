// Sixteen threads convert in both directions against one store whose values, record and message change all
// the time, with handlers that come and go. A data race shows under the thread sanitizer, a mixture anywhere.

#include "LumoApi/Base64.h"
#include "LumoApi/LumoApiCurrentObject.h"
#include "LumoApi/LumoApiLog.h"
#include "LumoApi/LumoWebViewKit.h"
#include "platform/archive/KeyedArchiver.h"
#include "tests/robustness/Requests.h"

#include <gtest/gtest.h>

#include <barrier>
#include <thread>

namespace {

using Converter = LumoApiMessageAndUrlConverter;
using lumo::Data;
using lumo::Value;

LumoApiDatastore& store() { return LumoApiDatastore::instance(); }

/// All of one letter, so that a mixture of two threads' shows.
std::string textOf(char letter) { return std::string(40U + static_cast<unsigned char>(letter), letter); }

void changeStore(char letter) {
  store().setValues({.scheme = textOf(letter), .appName = textOf(letter), .openId = textOf(letter)});
  store().setUin(Value(letter));
  store().setApiMessage(
      LumoApiMessage::messageWithObject(LumoApiTextObject::objectWithText(textOf(letter)), letter));
  LumoApiLog::setHandler(
      [kept = textOf(letter)](const LumoApiLog::Line& line) { (void)(line.message == kept); });
  LumoWebViewKit::setHandler({[](const lumo::URL& url) { return url.scheme() == "claimed"; },
      [letter](const lumo::URL&) { return LumoApiMessage::messageWithObject(nullptr, letter); }});
}

void convertPicture(char letter) {
  const Data bytes(textOf(letter));
  const auto url =
      Converter::urlWithImageObject(*LumoApiImageObject::objectWithData(bytes, bytes, {}, {}), 7);
  const auto decoder = LumoApiURLDecoder::decoderWithUrl(url);
  ASSERT_TRUE(decoder);
  const lumo::RawQuery& query = decoder->queryItem();
  EXPECT_EQ(query.find("cflag"), std::to_string(letter));
  EXPECT_EQ(query.find("callback_name"), query.find("openId"));
  EXPECT_EQ(query.find("thirdAppDisplayName"), lumo::base64Encoded(query.find("openId").value()));
}

void readAll(const std::vector<lumo::URL>& urls) {
  const LumoApiLargeDataPtr record = store().getApiLargeData();
  EXPECT_EQ(*record->find("file_data"), *record->find("previewimagedata"));
  for (const lumo::URL& url : urls) {
    EXPECT_TRUE(Converter::messageWithUrl(url) || url.host() == "anywhere");
    const auto held = Converter::messageWithUrlUsedClipboard(url);
    if (!held || !held->object()) continue;
    EXPECT_EQ(dynamic_cast<const LumoApiTextObject&>(*held->object()).text(),
        textOf(static_cast<char>(held->type())));
  }
  const auto shown = Converter::messageWithUrl(lumo::URL::parse("a://request_from_lumo/view?file_type=img"));
  const auto& picture = dynamic_cast<const LumoApiImageObject&>(*shown->object());
  EXPECT_EQ(picture.data(), picture.previewImageData());
}

TEST(Threads, SeeNoMixtureAndNoOthersObject) {
  std::vector<lumo::URL> urls{*lumo::URL::parse("claimed://by/the?kit=1")};
  for (const std::string& text : requests::incoming()) urls.push_back(*lumo::URL::parse(text));
  const Value shared = Value::Dictionary{{"a", Value::Array{"text", 1, Data::copy("bytes")}}};
  std::barrier allThreads(16);
  const auto work = [&](char letter) {
    const auto requests = requests::outgoing();
    auto current = std::make_shared<LumoApiObject>();
    current->setCflag(static_cast<unsigned char>(letter));
    const LumoApiCurrentObject::Scope scope(current);
    for (int round = 0; round < 5; ++round) {
      changeStore(letter);
      for (const auto& request : requests) EXPECT_TRUE(Converter::urlWithMessage(request.message));
      EXPECT_EQ(lumo::unarchivedValue(lumo::archivedData(shared)->joined()), shared);
      if (letter % 4 == 0) LumoWebViewKit::removeHandler(), LumoApiLog::silence();
    }
    allThreads.arrive_and_wait();
    convertPicture(letter);
    allThreads.arrive_and_wait();
    for (int round = 0; round < 100; ++round) {
      changeStore(letter);
      convertPicture(letter);
      readAll(urls);
    }
  };
  std::vector<std::thread> threads;
  for (char letter = 'a'; letter < 'a' + 16; ++letter) threads.emplace_back(work, letter);
  for (std::thread& thread : threads) thread.join();
  LumoWebViewKit::removeHandler();
  LumoApiLog::removeHandler();
  store().setApiLargeData(nullptr);
  store().setApiMessage(std::nullopt);
  store().setValues({});
}

}  // namespace
