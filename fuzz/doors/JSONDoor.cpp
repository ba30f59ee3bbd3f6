// JSON texts: read, written and read again.

#include "fuzz/Door.h"
#include "platform/text/Text.h"
#include "platform/values/JSON.h"

namespace lumo::fuzz {

namespace {

void checkWriting(const Value& value, JSONStyle style) {
  const std::optional<std::string> text = writeJSON(value, style);
  require(text.has_value(), "what was read can be written");
  require(isValidUTF8(*text), "as UTF-8");
  const std::optional<Value> again = parseJSON(*text);
  require(again.has_value(), "and read again");
  const bool hasNegativeZero = text->find("-0") != std::string::npos;  // which is read as the integer 0
  require(hasNegativeZero || writeJSON(*again, style) == text, "and is written the same");
}

}  // namespace

void door(std::string_view input) {
  JSONError error;
  const std::optional<Value> value = parseJSON(input, &error);
  if (!value) {
    require(!error.message.empty() && error.offset <= input.size(), "an error has words and a place");
    return;
  }
  require(isValidUTF8(input), "JSON is UTF-8");
  checkWriting(*value, {});
  checkWriting(*value, {.escapeSolidus = false, .indent = 2});
  // The longest: "1e20", which is written in full.
  require(writeJSON(*value)->size() <= 6 * input.size(), "no short text becomes a long one");
}

}  // namespace lumo::fuzz
