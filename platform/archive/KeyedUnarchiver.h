#pragma once

#include "LumoApi/Data.h"
#include "LumoApi/Value.h"

#include <optional>

namespace lumo {

/// How many arrays and dictionaries may stand inside one another in what is read or written: no more than the
/// messenger's unarchiver takes on a phone.
inline constexpr int kMaxArchiveDepth = 128;

/// Reads an archive and trusts nothing in it: exact length, every offset, count and reference that is
/// followed in range, no cycle, no class outside a short list, nesting of at most kMaxArchiveDepth. Objects
/// that refer to each other many times over cannot blow up: there are no more values than the archive has
/// bytes, and no more text than four times its size and 16 MiB. Null for anything else.
///
/// Byte buffers share the archive's memory; dates come as numbers, seconds since 2001-01-01 00:00 UTC; of
/// equal keys the last wins. Half of a surrogate pair comes in its three-byte form, text without a UTF-8
/// form. Without state: any thread may call this at any time.
std::optional<Value> unarchivedValue(const Data& archive);

}  // namespace lumo
