#pragma once

#include "LumoApi/Data.h"

#include <string>

namespace lumo::documents {

/// The bytes that a document names instead of holding them. By default there are none.
class NamedBytes {
 public:
  NamedBytes() = default;
  virtual ~NamedBytes() = default;
  NamedBytes(const NamedBytes&) = delete;
  NamedBytes& operator=(const NamedBytes&) = delete;

  /// The bytes of the file, whose path is relative to the document. Throws a std::runtime_error that says why
  /// there are none.
  virtual Data file(const std::string& path) const;
};

}  // namespace lumo::documents
