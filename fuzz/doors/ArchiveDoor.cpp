// Archives of strangers: whatever is read stays in its bounds and can be written and read again.

#include "fuzz/Door.h"
#include "platform/archive/KeyedArchiver.h"
#include "platform/archive/KeyedUnarchiver.h"
#include "platform/text/Text.h"

#include <algorithm>

namespace lumo::fuzz {

namespace {

struct Measure {
  std::size_t values = 0;
  std::size_t textBytes = 0;
  bool isUTF8 = true;
  int height = 0;

  void add(std::string_view text) {
    textBytes += text.size();
    isUTF8 = isUTF8 && isValidUTF8(text);
  }
};

void measure(const Value& value, int depth, Measure& total) {
  ++total.values;
  if (const std::string* text = value.asString()) total.add(*text);
  if (!value.asArray() && !value.asDictionary()) return;
  total.height = std::max(total.height, depth);
  if (const Value::Array* array = value.asArray()) {
    for (const Value& element : *array) measure(element, depth + 1, total);
  } else {
    for (const auto& [key, element] : *value.asDictionary()) {
      ++total.values;
      total.add(key);
      measure(element, depth + 1, total);
    }
  }
}

}  // namespace

void door(std::string_view input) {
  const std::optional<Value> value = unarchivedValue(Data::unowned(input));
  if (!value) return;
  Measure total;
  measure(*value, 1, total);
  constexpr std::size_t kTextAllowance = std::size_t{16} << 20;
  require(total.values <= input.size(), "no more values than bytes");
  require(total.textBytes <= 4 * input.size() + kTextAllowance, "no text out of all proportion");
  require(total.height <= kMaxArchiveDepth, "no deeper than that");

  if (!value->asDictionary()) return;
  const std::optional<DataChain> written = archivedData(*value);
  require(written.has_value() == total.isUTF8, "what was read can be written, if it is UTF-8");
  if (!written) return;
  const std::optional<Value> again = unarchivedValue(written->joined());
  require(again.has_value(), "and read again");
  require(archivedData(*again)->joined() == written->joined(), "and is the same");
}

}  // namespace lumo::fuzz
