#pragma once

#include "LumoApi/LumoApiLargeData.h"
#include "LumoApi/LumoApiMessage.h"
#include "LumoApi/Value.h"
#include "documents/Conversion.h"
#include "platform/values/JSON.h"

#include <optional>
#include <string>
#include <vector>

namespace lumo::documents {

// The document forms of what a conversion leaves behind: values that JSON can hold, bytes as
// {"$data": base64}, null for what is not there. An absent field is left out, and so is an integer that is 0.

Value documentOf(const LumoApiObject* object);
Value documentOf(const std::optional<LumoApiMessage>& message);
Value documentOf(const LumoApiLargeDataPtr& record);
Value documentOf(const std::vector<std::string>& texts);

/// The whole results.
Value documentOf(const Encoded& encoded);
Value documentOf(const Decoded& decoded);

/// Appends the JSON text of a result. Throws a DocumentError where something in it has no JSON form: a
/// free-form value that is nested too deeply, a text of another app's record that is not UTF-8.
void appendResult(std::string& output, const Value& result, JSONStyle style);

}  // namespace lumo::documents
