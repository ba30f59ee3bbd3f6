#include "fuzz/Messages.h"

#include "model/ContentClasses.h"

#include <cmath>
#include <iterator>
#include <vector>

namespace lumo::fuzz {

namespace {

constexpr std::size_t kTextLimits[] = {128, 256, 512, 1024, 1536};
constexpr std::size_t kDataLimits[] = {1'048'576, 3'145'728, 5'242'880, 15'728'640, 52'428'800};

/// A size from one below the limit to one above it.
std::size_t sizeNear(const auto& limits, Input& input) {
  return limits[input.below(std::size(limits))] - 1 + input.below(3);
}

// How a field of each type is filled.

void fill(std::uint64_t& number, Input& input) {
  constexpr std::uint64_t kTelling[] = {0, 1, 2, 3, 4, 8, ~std::uint64_t{0}};
  const std::size_t choice = input.below(std::size(kTelling) + 1);
  number = choice < std::size(kTelling) ? kTelling[choice] : input.number<std::uint64_t>();
}

void fill(std::string& field, Input& input) { field = text(input); }
void fill(Data& field, Input& input) { field = data(input); }
void fill(Value& field, Input& input) { field = value(input); }

template <class T>
void fill(std::vector<T>& list, Input& input) {
  list.resize(input.below(24));
  const std::size_t different = input.below(3);
  for (std::size_t i = 0; i < list.size(); ++i) {
    if (i <= different) {
      fill(list[i], input);
    } else {
      list[i] = list[i - 1];
    }
  }
}

void fill(StringDictionary& field, Input& input) {
  for (std::size_t count = input.below(5); count > 0; --count) {
    std::string key = text(input);
    field.set(std::move(key), text(input));
  }
}

template <class T>
void fill(std::optional<T>& field, Input& input) {
  if (input.flag()) fill(field.emplace(), input);
}

void fill(std::optional<URL>& field, Input& input) {
  if (input.flag()) field = URL::parse(text(input));
}

Value value(Input& input, int depth);

Value::Array array(Input& input, int depth) {
  Value::Array elements(input.below(6));
  for (Value& element : elements) element = value(input, depth - 1);
  return elements;
}

Value nested(Input& input) {
  Value inner = value(input, 1);
  const bool inDictionaries = input.flag();
  for (std::size_t levels = input.below(3) == 0 ? 120 + input.below(16) : 505 + input.below(16); levels > 0;
       --levels) {
    inner = inDictionaries ? Value(Value::Dictionary{{"in", inner}}) : Value(Value::Array{inner});
  }
  return inner;
}

Value real(Input& input) {
  const auto number = std::bit_cast<double>(input.number<std::uint64_t>());
  return std::isnan(number) ? 0.5 : number;
}

/// Bytes that are copied with the value, or just more than that.
Data dataOfValue(Input& input) {
  if (input.below(8) != 0) return Data::copy(input.bytes(input.below(64)));
  static const Data kBytes(std::vector<std::uint8_t>(0x10010, 'x'));
  return kBytes.slice(0, kBytes.size() - input.below(32));
}

Value value(Input& input, int depth) {
  switch (input.below(depth > 0 ? 12 : 8)) {
    case 0:
      return {};
    case 1:
      return input.flag();
    case 2:
      return input.number<std::int8_t>();
    case 3:
      return input.number<std::int64_t>();
    case 4:
      return input.number<std::uint64_t>();
    case 5:
      return real(input);
    case 6:
      return text(input);
    case 7:
      return dataOfValue(input);
    case 8:
      return array(input, depth);
    case 9:
      return nested(input);
    default:
      return dictionary(input, depth - 1);
  }
}

}  // namespace

std::string text(Input& input) {
  constexpr const char* kCharacters[] = {"a", "\u00E9", "\u4E2D", "\U0001F600", "&", "%"};
  if (input.below(8) != 0) return std::string(input.bytes(input.below(64)));
  const std::string_view character = kCharacters[input.below(std::size(kCharacters))];
  std::string repeated;
  for (std::size_t size = sizeNear(kTextLimits, input); size > 0; --size) repeated += character;
  return repeated;
}

Data data(Input& input) {
  static const Data kLarge(std::vector<std::uint8_t>(52'428'801, 'x'));
  if (input.below(8) != 0) return Data::copy(input.bytes(input.below(64)));
  return kLarge.slice(0, sizeNear(kDataLimits, input));
}

Value value(Input& input) { return value(input, 4); }

Value::Dictionary dictionary(Input& input, int depth) {
  Value::Dictionary entries;
  for (std::size_t count = input.below(8); count > 0; --count) {
    std::string key = text(input);
    entries.set(std::move(key), value(input, depth));
  }
  return entries;
}

std::shared_ptr<LumoApiObject> object(Input& input) {
  std::size_t number = input.below(32);
  std::shared_ptr<LumoApiObject> object;
  anyContentClass([&](auto contentClass) {
    if (number-- > 0) return false;
    auto made = std::make_shared<typename decltype(contentClass)::Type>();
    forEachField(*made, [&input](const char*, auto& field) { fill(field, input); });
    object = std::move(made);
    return true;
  });
  return object;
}

LumoApiMessage message(Input& input) {
  LumoApiMessage message = LumoApiMessage::messageWithObject(object(input), input.number<std::int8_t>());
  message.setIsSupportKiva(input.flag());
  if (input.flag()) {
    auto card = std::make_shared<LumoApiKivaObject>();
    if (input.flag()) card->setKivaData(text(input));
    message.setKivaObject(std::move(card));
  }
  return message;
}

LumoApiDatastore::Values storeValues(Input& input) {
  LumoApiDatastore::Values values;
  const std::uint8_t flags = input.byte();
  values.isLumoSupportUrlForShareText = (flags & 1) != 0;
  values.isLumoSupportUrlInsteadPastedboard = (flags & 2) != 0;
  values.isLumoSupportApiGeneralPastboard = (flags & 4) != 0;
  fill(values.scheme, input);
  fill(values.appName, input);
  fill(values.appId, input);
  fill(values.openId, input);
  fill(values.uin, input);
  return values;
}

}  // namespace lumo::fuzz
