#pragma once

#include <string>
#include <typeinfo>

namespace lumo {

/// The name of a class as its source spells it, with its namespaces: "LumoApiTextObject", "app::Sticker". Any
/// thread may call this at any time.
std::string className(const std::type_info& type);

}  // namespace lumo
