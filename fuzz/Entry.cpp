#include "fuzz/Door.h"
#include "model/LumoApiLog.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

/// Whatever is logged stays on its line.
void checkLine(const LumoApiLog::Line& line) {
  const bool isOneLine = std::none_of(line.message.begin(), line.message.end(),
                                      [](unsigned char c) { return c < 0x20 || c == 0x7F; });
  lumo::fuzz::require(isOneLine, "a log line has no control character");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  [[maybe_unused]] static const bool listens = (LumoApiLog::setHandler(checkLine), true);
  lumo::fuzz::door({reinterpret_cast<const char*>(data), size});
  return 0;
}
