#pragma once

#include "LumoApi/LumoApiObject.h"

// One thread at a time may use such an object, like every LumoApiObject.

/// Asks the messenger to check the app's authorization.
class LUMOAPI_EXPORT LumoApiAuthObject : public LumoApiObject {};
