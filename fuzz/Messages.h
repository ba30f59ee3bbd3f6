#pragma once

#include "LumoApi/Data.h"
#include "LumoApi/LumoApiDatastore.h"
#include "LumoApi/LumoApiMessage.h"
#include "LumoApi/Value.h"
#include "fuzz/Input.h"

#include <memory>
#include <optional>
#include <string>

/// What conversions are made of, built from an input: of every class, with sizes around the limits.
namespace lumo::fuzz {

std::string text(Input& input);
Data data(Input& input);
/// A free-form value without NaN, which equals nothing; mostly small, now and then nested out of all bounds.
Value value(Input& input);
Value::Dictionary dictionary(Input& input, int depth = 4);

/// An object of any class of the model, or null.
std::shared_ptr<LumoApiObject> object(Input& input);
LumoApiMessage message(Input& input);
LumoApiDatastore::Values storeValues(Input& input);

}  // namespace lumo::fuzz
