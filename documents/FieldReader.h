#pragma once

#include "LumoApi/Data.h"
#include "LumoApi/Dictionary.h"
#include "LumoApi/URL.h"
#include "LumoApi/Value.h"
#include "documents/Document.h"

#include <array>
#include <concepts>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lumo::documents {

// How each type of field is read from its place in a document. What stands there is never null: a null member
// is an absent one, and Members passes it over. All throw a DocumentError where something else stands there.

void read(const Place& place, bool& boolean);
void read(const Place& place, const std::string*& text);
void read(const Place& place, std::string& text);
void read(const Place& place, Data& bytes);
void read(const Place& place, std::optional<URL>& url);
void read(const Place& place, Value& freeForm);
void read(const Place& place, StringDictionary& dictionary);

template <std::integral Integer>
void read(const Place& place, Integer& integer) {
  const std::int64_t* number = place.value().asInteger();
  const std::uint64_t* large = place.value().asUnsigned();
  if (number && std::in_range<Integer>(*number)) {
    integer = static_cast<Integer>(*number);
  } else if (large && std::in_range<Integer>(*large)) {
    integer = static_cast<Integer>(*large);
  } else {
    using Limits = std::numeric_limits<Integer>;
    place.failExpecting("an integer from " + std::to_string(Limits::min()) + " to " +
                        std::to_string(Limits::max()));
  }
}

template <class T>
void read(const Place& place, std::vector<T>& list) {
  const Value::Array* array = place.value().asArray();
  if (!array) place.failExpecting("an array");
  list.reserve(array->size());
  for (const Value& element : *array) {
    const Place elementPlace(place, list.size(), element);
    read(elementPlace, list.emplace_back());
  }
}

template <class T>
void read(const Place& place, std::optional<T>& field) {
  read(place, field.emplace());
}

/// The members of an object: each is taken under its name, and one that nobody took is an error.
class Members {
 public:
  explicit Members(const Place& place);

  /// Reads the member into the field, unless it is absent or null. Whether it was there, perhaps as null.
  template <class Field>
  bool take(std::string_view name, Field& field) {
    known_.at(knownCount_++) = name;
    const Value* value = dictionary_.find(name);
    if (!value) return false;
    ++taken_;
    if (!value->isNull()) read(Place(place_, name, *value), field);
    return true;
  }

  /// Throws where there is a member that was not taken.
  void finish() const;

 private:
  const Place& place_;
  const Value::Dictionary& dictionary_;
  std::array<std::string_view, 16> known_;  // more than any object of a document has
  std::size_t knownCount_ = 0;
  std::size_t taken_ = 0;
};

}  // namespace lumo::documents
