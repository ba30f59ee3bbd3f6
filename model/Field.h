#pragma once

#include <tuple>

namespace lumo {

/// A field of a content class under its own name. Each class lists its fields once, in `fields(object)`;
/// equality, the dictionary form and the tool's documents all go by that list. A reference, for the thread
/// that uses the object.
template <class T>
struct Field {
  const char* name;
  T& value;
};

template <class T>
constexpr Field<T> field(const char* name, T& value) noexcept {
  return {name, value};
}

/// Calls `visit(name, value)` for each field of the object, in the order of the class's list.
template <class Object, class Visitor>
void forEachField(Object& object, Visitor&& visit) {
  std::apply([&visit](auto... listed) { (visit(listed.name, listed.value), ...); }, Object::fields(object));
}

}  // namespace lumo
