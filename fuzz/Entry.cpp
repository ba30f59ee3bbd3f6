#include "LumoApi/LumoApiLog.h"
#include "fuzz/Door.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace {

/// Ends of lines, and marks that turn the direction of the text.
constexpr std::string_view kMarks[] = {"\u061C", "\u200E", "\u200F", "\u2028", "\u2029", "\u202A", "\u202B",
                                       "\u202C", "\u202D", "\u202E", "\u2066", "\u2067", "\u2068", "\u2069"};

/// Whatever is logged stays on its line and is seen as it is.
void checkLine(const LumoApiLog::Line& line) {
  unsigned char before = 0;
  for (const char c : line.message) {
    const auto byte = static_cast<unsigned char>(c);
    const bool isControl = byte < 0x20 || byte == 0x7F || (before == 0xC2 && byte < 0xA0);
    lumo::fuzz::require(!isControl, "a log line has no control character");
    before = byte;
  }
  for (const std::string_view mark : kMarks) {
    const bool isFree = line.message.find(mark) == std::string_view::npos;
    lumo::fuzz::require(isFree, "a log line has no mark that a reader obeys");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  [[maybe_unused]] static const bool listens = (LumoApiLog::setHandler(checkLine), true);
  lumo::fuzz::door({reinterpret_cast<const char*>(data), size});
  return 0;
}
