#pragma once

#include "LumoApi/Data.h"
#include "LumoApi/Value.h"
#include "platform/archive/KeyedUnarchiver.h"

#include <optional>

namespace lumo {

// The platform's keyed archive (a binary property list with the keyed-archive envelope), the form in which a
// large-data record travels inside a launch URL and in which the common content travels in a record. Without
// state: any thread may write and read at any time.

/// The archive of a value, whose root must be a dictionary. Large byte buffers in it are shared, not copied.
/// Null for what the format cannot hold: text that is not UTF-8, nesting beyond kMaxArchiveDepth.
std::optional<DataChain> archivedData(const Value& root);

}  // namespace lumo
