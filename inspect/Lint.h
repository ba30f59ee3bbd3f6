#pragma once

#include "documents/NamedBytes.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace lumo::inspection {

/// Where a text stands.
struct TextPlace {
  std::string file;
  std::size_t line = 0;  ///< 0 where the file holds one text alone
};

/// One thing that is wrong. The codes are for programs and never change; the words may.
struct LintFinding {
  TextPlace place;
  std::string code;     ///< "too-long", "unknown-key"
  std::string key;      ///< the member or the key of the query; empty where it concerns no single one
  std::string message;  ///< one line, the key included
};

/// Checks one text, a document or a URL, and adds what it finds. `named` gives the bytes that a document
/// names.
void check(std::string_view text, const TextPlace& place, const documents::NamedBytes& named,
           std::vector<LintFinding>& findings);

}  // namespace lumo::inspection
