#pragma once

#include "LumoApi/LumoApiQueryDictionary.h"
#include "LumoApi/URL.h"
#include "LumoApi/internal/Destinations.h"

#include <cstdint>
#include <optional>

namespace lumo {

/// The URL that LumoApiURLEncoder writes for a destination, which nothing needs to parse again: scheme, host
/// and path are the program's own words, and the query is escaped as it is written. Null where the query
/// holds text that is not UTF-8.
std::optional<URL> launchURL(const Destination& destination, std::uint64_t shareDestType,
                             const LumoApiQueryDictionary& query);

}  // namespace lumo
