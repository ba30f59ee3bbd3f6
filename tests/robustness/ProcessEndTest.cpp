// What outlives main(): static objects, an app's own objects of a thread, and exit() in the middle of a send
// may still convert. Each case is a process of its own; a sanitizer makes it end otherwise.

#include "LumoApi/LumoApiCurrentObject.h"
#include "LumoApi/LumoApiLog.h"
#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "LumoApi/LumoWebViewKit.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <thread>

namespace {

using Converter = LumoApiMessageAndUrlConverter;

/// Uses all that the process and the thread hold, and ends the process otherwise where something is missing.
void convert() {
  const auto url = Converter::urlWithTextObject(*LumoApiTextObject::objectWithText("late"), 7);
  const auto claimed = Converter::messageWithUrl(lumo::URL::parse("claimed://by/the?kit=1"));
  const auto current = LumoApiCurrentObject::get();
  const bool isWhole = url && url->absoluteString().find("cflag=9") != std::string_view::npos && claimed &&
                       current && current->title() == "a title that is too long to stand in place";
  if (!isWhole) std::_Exit(1);
  LumoApiCurrentObject::set(nullptr);
  LumoApiCurrentObject::set(current);
}

struct Late {
  ~Late() { convert(); }
  void touch() const noexcept {}
};

void fill() {
  LumoApiLog::setHandler([](const LumoApiLog::Line&) {});
  LumoWebViewKit::setHandler({[](const lumo::URL& url) { return url.scheme() == "claimed"; },
      [](const lumo::URL&) { return LumoApiMessage(); }});
  auto object = std::make_shared<LumoApiObject>();
  object->setCflag(9);
  object->setTitle("a title that is too long to stand in place");
  LumoApiCurrentObject::set(std::move(object));
}

TEST(ProcessEndDeathTest, StaticObjectsStillConvert) {
  const auto run = [] {
    static const Late late;
    fill();
    std::exit(0);
  };
  EXPECT_EXIT(run(), testing::ExitedWithCode(0), "");
}

TEST(ProcessEndDeathTest, ObjectsOfAThreadStillConvert) {
  const auto run = [] {
    std::thread([] {
      thread_local const Late late;  // made before the slot is used, so destroyed after what came later
      late.touch();
      fill();
    }).join();
    std::exit(0);
  };
  EXPECT_EXIT(run(), testing::ExitedWithCode(0), "");
}

TEST(ProcessEndDeathTest, ExitAmidASendStillConverts) {
  const auto run = [] {
    fill();
    const LumoApiCurrentObject::Scope scope(LumoApiCurrentObject::get());
    if (std::atexit(convert) == 0) std::exit(0);
  };
  EXPECT_EXIT(run(), testing::ExitedWithCode(0), "");
}

}  // namespace
