// Runs a conversion a hundred times, for callgrind to count its instructions.

#include "LumoApi/LumoApiMessageAndUrlConverter.h"
#include "bench/Payloads.h"

#include <string_view>

namespace {

std::optional<LumoApiMessage> outgoing;
std::string incoming;

}  // namespace

// The names that callgrind is told.
extern "C" {

[[gnu::noinline]] bool measuredShare() {
  return LumoApiMessageAndUrlConverter::urlWithMessage(outgoing).has_value();
}
[[gnu::noinline]] bool measuredMessage() {
  return LumoApiMessageAndUrlConverter::messageWithUrl(lumo::URL::parse(incoming)).has_value();
}

}  // extern "C"

int main(int argc, char** argv) {
  const std::string_view which = argc > 1 ? argv[1] : "";
  bench::useStore();
  outgoing = bench::textMessage("hello");
  incoming = bench::incomingURL();
  // Warm: what is made, or found by the linker, at the first call is not counted.
  LumoApiMessageAndUrlConverter::urlWithMessage(outgoing);
  LumoApiMessageAndUrlConverter::messageWithUrl(lumo::URL::parse(incoming));
  bool done = true;
  for (int i = 0; i < 100; ++i) done = done && (which == "share" ? measuredShare() : measuredMessage());
  return done ? 0 : 1;
}
