#pragma once

#include "model/LumoApiObject.h"

/// Asks the messenger to check the app's authorization.
class LUMOAPI_EXPORT LumoApiAuthObject : public LumoApiObject {};
