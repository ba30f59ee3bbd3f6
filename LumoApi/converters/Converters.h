#pragma once

#include "LumoApi/LumoApiModel.h"
#include "LumoApi/URL.h"
#include "LumoApi/internal/Refusal.h"
#include "LumoApi/internal/Skeleton.h"

/// The conversion of each kind of content, under the name of the public operation that runs it.
namespace lumo::converters {

Result<URL> urlWithTextObject(const LumoApiTextObject& object, Conversion& conversion);
Result<URL> urlWithExtendObject(const LumoApiExtendObject& object, Conversion& conversion);
Result<URL> urlWithImageObject(const LumoApiImageObject& object, Conversion& conversion);
Result<URL> urlWithImageObjectForAvatar(LumoApiImageForLumoAvatarObject& object, Conversion& conversion);
Result<URL> urlWithVideoObjectForAvatar(const LumoApiVideoForLumoAvatarObject& object,
                                        Conversion& conversion);
Result<URL> urlWithAuthObject(const LumoApiAuthObject& object, Conversion& conversion);
Result<URL> urlWithCreateGroupProObject(const LumoApiCreateLumoGroupProObject& object,
                                        Conversion& conversion);
Result<URL> urlWithJoinGroupProObject(const LumoApiJoinLumoGroupProObject& object, Conversion& conversion);
Result<URL> urlWithImageObjectForFaceCollection(const LumoApiImageArrayForFaceCollectionObject& object,
                                                Conversion& conversion);
Result<URL> urlWithImageArrayForNimboObject(LumoApiImageArrayForNimboObject& object, Conversion& conversion);
Result<URL> urlWithVideoForNimboObject(const LumoApiVideoForNimboObject& object, Conversion& conversion);
Result<URL> urlWithWebImageObject(const LumoApiWebImageObject& object, Conversion& conversion);
Result<URL> urlWithURLObject(const LumoApiURLObject& object, Conversion& conversion);
Result<URL> urlWithCommonContentObject(const LumoApiCommonContentObject& object, Conversion& conversion);
Result<URL> urlWithExtraServiceObject(const LumoApiExtraServiceObject& object, Conversion& conversion);
Result<URL> urlWithCommonServiceObject(const LumoApiCommonServiceObject& object, Conversion& conversion);
Result<URL> urlWithFileObject(const LumoApiFileObject& object, Conversion& conversion);
Result<URL> urlWithApiThirdAppBindGroupObject(const LumoApiThirdAppBindGroupObject& object,
                                              Conversion& conversion);
Result<URL> urlWithApiThirdAppJoinGroupObject(const LumoApiThirdAppJoinGroupObject& object,
                                              Conversion& conversion);
Result<URL> urlWithApiLaunchMiniProgramObject(const LumoApiLaunchMiniProgramObject& object,
                                              Conversion& conversion);

}  // namespace lumo::converters
