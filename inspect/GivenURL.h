#pragma once

#include "LumoApi/URL.h"
#include "documents/Answer.h"
#include "documents/NamedBytes.h"

#include <optional>
#include <string>
#include <string_view>

namespace lumo::inspection {

/// A launch URL, or why there is none.
struct GivenURL {
  std::optional<URL> url{};
  documents::Answer why{};  ///< where there is none
};

/// The launch URL that a text gives: the URL itself, in its first line; the result of lumoapi encode; or a
/// request, whose URL is then made. `name` is what a document is called where it is in error.
GivenURL urlGivenBy(std::string_view text, std::string_view name, const documents::NamedBytes& named);

/// The launch URL that a text is.
GivenURL urlItself(std::string_view text);

}  // namespace lumo::inspection
