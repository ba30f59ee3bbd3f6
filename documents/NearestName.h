#pragma once

#include <span>
#include <string>
#include <string_view>

namespace lumo::documents {

/// ", did you mean X?" where one of the names is so close to the given one that a typing error is likely;
/// empty otherwise.
std::string suggestion(std::string_view given, std::span<const std::string_view> names);

}  // namespace lumo::documents
