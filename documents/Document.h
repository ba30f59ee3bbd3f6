#pragma once

#include "LumoApi/Value.h"
#include "documents/NamedBytes.h"
#include "platform/values/JSON.h"

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace lumo::documents {

/// What is wrong with a document, in words that begin with the path of the member.
class DocumentError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Where a JSON text goes wrong, counted from 1 and in characters.
struct TextPosition {
  std::size_t line;
  std::size_t column;
};
TextPosition positionIn(std::string_view text, std::size_t offset);

/// The document that a JSON text holds; throws a DocumentError that begins with the position.
Value parseDocument(std::string_view text);

/// A value in a document together with the way to it. Places stand on the stack, each pointing to the one
/// around it, so the way costs nothing until an error needs it in words.
class Place {
 public:
  /// The whole document, and the bytes that it may name. All arguments must outlive the place.
  Place(const Value& document, const NamedBytes& named) noexcept : value_(&document), named_(&named) {}
  Place(const Place& around, std::string_view member, const Value& value) noexcept
      : around_(&around), member_(member), value_(&value), named_(around.named_) {}
  Place(const Place& around, std::size_t index, const Value& value) noexcept
      : around_(&around), index_(index), isElement_(true), value_(&value), named_(around.named_) {}
  Place(const Place&) = delete;
  Place& operator=(const Place&) = delete;

  const Value& value() const noexcept { return *value_; }
  const NamedBytes& named() const noexcept { return *named_; }

  /// "message.object.imageDataArray[1]"; empty for the document itself.
  std::string path() const;

  /// Throws a DocumentError about this place, or about a member of it.
  [[noreturn]] void fail(std::string_view what) const;
  [[noreturn]] void failMember(std::string_view member, std::string_view what) const;
  /// Throws "not a string but 7".
  [[noreturn]] void failExpecting(std::string_view kind) const;

 private:
  void appendTo(std::string& path) const;

  const Place* around_ = nullptr;
  std::string_view member_;
  std::size_t index_ = 0;
  bool isElement_ = false;
  const Value* value_;
  const NamedBytes* named_;
};

}  // namespace lumo::documents
