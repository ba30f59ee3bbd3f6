#pragma once

// The whole message model: the envelope and every content class.

#include "LumoApi/LumoApiAuthObject.h"
#include "LumoApi/LumoApiAvatarObjects.h"
#include "LumoApi/LumoApiCommonContentObject.h"
#include "LumoApi/LumoApiDataObjects.h"
#include "LumoApi/LumoApiGroupObjects.h"
#include "LumoApi/LumoApiLargeData.h"
#include "LumoApi/LumoApiMessage.h"
#include "LumoApi/LumoApiMiniProgramObjects.h"
#include "LumoApi/LumoApiNimboObjects.h"
#include "LumoApi/LumoApiObject.h"
#include "LumoApi/LumoApiResultObject.h"
#include "LumoApi/LumoApiServiceObjects.h"
#include "LumoApi/LumoApiTextObject.h"
#include "LumoApi/LumoApiURLObjects.h"
