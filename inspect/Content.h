#pragma once

#include "LumoApi/Data.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace lumo::inspection {

/// What bytes are, as far as their beginning tells: nothing is decoded.
struct Content {
  struct Size {
    std::uint32_t width, height;
  };
  std::string_view inWords;    ///< "JPEG picture"
  std::string_view extension;  ///< that a file of it has, without a dot
  std::optional<Size> size{};  ///< in pixels
};

Content contentOf(const Data& bytes) noexcept;

}  // namespace lumo::inspection
