#pragma once

#include "LumoApi/Data.h"
#include "LumoApi/Dictionary.h"
#include "LumoApi/Export.h"

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace lumo {

/// A free-form value: what JSON and the keyed archive hold.
///
/// Immutable. Arrays and dictionaries are shared, so copying one copies no element, and distinct Value
/// objects may be used from several threads at once. Destroying, copying and comparing take no more stack for
/// a deeply nested value than for a flat one; destroying takes no memory either.
class LUMOAPI_EXPORT Value {
 public:
  /// What an array holds.
  using Array = std::vector<Value>;
  /// What a dictionary holds.
  using Dictionary = lumo::Dictionary<Value>;

  /// Null.
  Value() noexcept;
  Value(const Value& other);
  Value(Value&& other) noexcept;
  Value& operator=(const Value& other);
  Value& operator=(Value&& other) noexcept;
  ~Value();
  /// Null.
  Value(std::nullptr_t) noexcept {}

  /// A boolean.
  template <std::same_as<bool> T>
  Value(T value) noexcept : content_(value) {}

  /// Every integer keeps all its bits; a negative one may have 63 and a sign, another 64.
  template <std::signed_integral T>
  Value(T value) noexcept : content_(static_cast<std::int64_t>(value)) {}
  /// The same.
  template <std::unsigned_integral T>
  requires(!std::same_as<T, bool>) Value(T value)
  noexcept {
    if (std::in_range<std::int64_t>(value)) {
      content_ = static_cast<std::int64_t>(value);
    } else {
      content_ = static_cast<std::uint64_t>(value);
    }
  }

  /// A number that is no integer.
  Value(double value) noexcept : content_(value) {}
  /// A text.
  Value(std::string value) noexcept : content_(std::move(value)) {}
  /// The same.
  Value(std::string_view value) : content_(std::string(value)) {}
  /// The same.
  Value(const char* value) : content_(std::string(value)) {}
  /// Bytes.
  Value(Data value) noexcept : content_(std::move(value)) {}
  /// An array.
  Value(Array value);
  /// A dictionary.
  Value(Dictionary value);

  /// Whether it is null.
  bool isNull() const noexcept { return std::holds_alternative<std::monostate>(content_); }
  /// Whether it is a number of whatever kind.
  bool isNumber() const noexcept { return asInteger() || asUnsigned() || asDouble(); }

  // What the value holds, or a null pointer where it is of another kind. The pointers live as long as the
  // value.
  /// A boolean.
  const bool* asBoolean() const noexcept { return std::get_if<bool>(&content_); }
  /// An integer that 64 signed bits hold.
  const std::int64_t* asInteger() const noexcept { return std::get_if<std::int64_t>(&content_); }
  /// An integer from 2^63 to 2^64 - 1; smaller ones are asInteger().
  const std::uint64_t* asUnsigned() const noexcept { return std::get_if<std::uint64_t>(&content_); }
  /// A number that is no integer.
  const double* asDouble() const noexcept { return std::get_if<double>(&content_); }
  /// A text.
  const std::string* asString() const noexcept { return std::get_if<std::string>(&content_); }
  /// Bytes.
  const Data* asData() const noexcept { return std::get_if<Data>(&content_); }
  /// An array.
  const Array* asArray() const noexcept;
  /// A dictionary.
  const Dictionary* asDictionary() const noexcept;

  /// The same kind and content; dictionaries in whatever order, doubles as numbers (NaN equals nothing).
  friend bool operator==(const Value& a, const Value& b) { return Value::equal(a, b); }

 private:
  struct Node;

  /// A counted reference to an array or a dictionary.
  class NodeRef {
   public:
    explicit NodeRef(Node* node) noexcept : node_(node) {}
    NodeRef(const NodeRef& other) noexcept;
    NodeRef(NodeRef&& other) noexcept : node_(std::exchange(other.node_, nullptr)) {}
    NodeRef& operator=(NodeRef other) noexcept {
      std::swap(node_, other.node_);
      return *this;
    }
    ~NodeRef() { release(node_); }
    Node* get() const noexcept { return node_; }
    Node* take() noexcept { return std::exchange(node_, nullptr); }

   private:
    Node* node_;
  };

  static void release(Node* node) noexcept;
  static bool equal(const Value& a, const Value& b);
  const Node* node() const noexcept {
    const NodeRef* reference = std::get_if<NodeRef>(&content_);
    return reference ? reference->get() : nullptr;
  }

  std::variant<std::monostate, bool, std::int64_t, std::uint64_t, double, std::string, Data, NodeRef>
      content_;
};

}  // namespace lumo
