#pragma once

// The whole message model: the envelope and every content class.

#include "model/LumoApiAuthObject.h"
#include "model/LumoApiAvatarObjects.h"
#include "model/LumoApiCommonContentObject.h"
#include "model/LumoApiDataObjects.h"
#include "model/LumoApiGroupObjects.h"
#include "model/LumoApiLargeData.h"
#include "model/LumoApiMessage.h"
#include "model/LumoApiMiniProgramObjects.h"
#include "model/LumoApiNimboObjects.h"
#include "model/LumoApiObject.h"
#include "model/LumoApiResultObject.h"
#include "model/LumoApiServiceObjects.h"
#include "model/LumoApiTextObject.h"
#include "model/LumoApiURLObjects.h"
