#pragma once

#include "LumoApi/LumoApiQueryDictionary.h"

/// The keys of a launch URL's query, each spelled once. Several differ only in case from each other, or from
/// keys of the large-data record, which are a type of their own.
namespace lumo::keys {

// Who asks, and how to answer.
inline constexpr FixedWord kSourceType{"src_type"};
inline constexpr FixedWord kVersion{"version"};
inline constexpr FixedWord kSource{"source"};
inline constexpr FixedWord kCallbackType{"callback_type"};
inline constexpr FixedWord kCallbackName{"callback_name"};
inline constexpr FixedWord kThirdAppDisplayName{"thirdAppDisplayName"};
inline constexpr FixedWord kDisplayName{"displayName"};
inline constexpr FixedWord kAppId{"appid"};

// What is sent, and where it is found.
inline constexpr FixedWord kFileType{"file_type"};
inline constexpr FixedWord kFileData{"file_data"};
inline constexpr FixedWord kFileName{"fileName"};
inline constexpr FixedWord kObjectLocation{"objectlocation"};
inline constexpr FixedWord kPasteboard{"pasteboard"};
inline constexpr FixedWord kTitle{"title"};
inline constexpr FixedWord kDescription{"description"};
inline constexpr FixedWord kTagName{"tagName"};
inline constexpr FixedWord kMessageExt{"messageExt"};
inline constexpr FixedWord kURL{"url"};
inline constexpr FixedWord kFlashURL{"flashurl"};
inline constexpr FixedWord kPreviewImageURL{"previewimageUrl"};
inline constexpr FixedWord kPreviewImageData{"previewimageData"};
inline constexpr FixedWord kVideoAssetURL{"video_assetURL"};
inline constexpr FixedWord kExtMap{"extMap"};

// Services, groups and mini-programs.
inline constexpr FixedWord kServiceId{"exsvr_id"};
inline constexpr FixedWord kServiceUserInfo{"exsvr_userinfo"};
inline constexpr FixedWord kServiceToUin{"exsvr_touin"};  // in the user info, beside "openId"
inline constexpr FixedWord kUnionId{"unionid"};
inline constexpr FixedWord kMiniAppId{"mini_appid"};
inline constexpr FixedWord kMiniPath{"mini_path"};
inline constexpr FixedWord kMiniType{"mini_type"};
inline constexpr FixedWord kGuildAvatar{"guild_avatar"};

// The common keys.
inline constexpr FixedWord kShareType{"shareType"};
inline constexpr FixedWord kMessageType{"messagetype"};
inline constexpr FixedWord kOpenId{"openId"};
inline constexpr FixedWord kUin{"uin"};
inline constexpr FixedWord kGeneralPasteboard{"generalpastboard"};
inline constexpr FixedWord kCflag{"cflag"};

// What the messenger sends.
inline constexpr FixedWord kAppParameter{"appParameter"};
inline constexpr FixedWord kNeedToGetData{"NeedToGetData"};
inline constexpr FixedWord kError{"error"};
inline constexpr FixedWord kErrorDescription{"error_description"};
inline constexpr FixedWord kErrorExtendInfo{"error_extend_info"};

}  // namespace lumo::keys
