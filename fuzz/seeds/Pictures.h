#pragma once

#include <string>
#include <vector>

namespace lumo::fuzz {

/// A small picture in each form that JPEG, PNG and WebP have.
std::vector<std::string> pictures();

}  // namespace lumo::fuzz
