#pragma once

#include "inspect/Query.h"
#include "inspect/URL.h"

namespace lumo::inspection {

/// Warns of what is wrong with the URL as a whole: where it leads, its kind, keys that are missing.
void checkWhole(Findings& findings, const Query& query);

/// Takes the record from the store where the URL has none, and warns of what is wrong with it.
void checkLargeData(Findings& findings, const Query& query, const Store& store);

}  // namespace lumo::inspection
