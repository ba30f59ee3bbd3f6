#include "LumoApi/LumoApiRefusal.h"

#include <array>

namespace {

struct Description {
  std::string_view name;
  std::string_view words;
};

constexpr std::array kDescriptions{
    Description{"None", "nothing was refused"},
    Description{"Missing", "missing or empty"},
    Description{"TooLong", "too long"},
    Description{"TooBig", "too big"},
    Description{"TooMany", "too many entries"},
    Description{"NotUTF8", "not valid UTF-8"},
    Description{"NotSerialisable", "holds something that cannot be serialised"},
    Description{"UnknownKind", "no converter takes an object of this class"},
    Description{"InvalidURL", "not a valid URL"},
    Description{"PasteboardFailed", "the pasteboard did not take the record"},
    Description{"OutOfMemory", "memory is exhausted"},
    Description{"UnknownHost", "not a host that the messenger opens an app with"},
    Description{"UnknownPath", "not a path of a request"},
    Description{"Unannounced", "no stored message is announced"},
    Description{"NotBuilt", "the web-view kit claimed the URL and built no message"},
};

static_assert(kDescriptions.size() == static_cast<std::size_t>(LumoApiRefusal::Code::NotBuilt) + 1);

const Description& describe(LumoApiRefusal::Code code) noexcept {
  return kDescriptions[static_cast<std::size_t>(code)];
}

std::string_view plural(LumoApiRefusal::Unit unit) noexcept {
  switch (unit) {
    case LumoApiRefusal::Unit::CodeUnits:
      return " UTF-16 code units";
    case LumoApiRefusal::Unit::Bytes:
      return " bytes";
    case LumoApiRefusal::Unit::Entries:
      return " entries";
    case LumoApiRefusal::Unit::None:
      break;
  }
  return "";
}

}  // namespace

std::string_view LumoApiRefusal::nameOf(Code code) noexcept { return describe(code).name; }

std::string LumoApiRefusal::description() const {
  std::string text(field);
  if (!text.empty()) text += ": ";
  if (actual && limit) {
    text += std::to_string(*actual);
    text += plural(unit);
    text += ", at most ";
    text += std::to_string(*limit);
  } else {
    text += describe(code).words;
  }
  return text;
}
