#pragma once

#include "model/LumoApiQueryDictionary.h"

#include <string_view>

/// The keys of a launch URL's query, each spelled once. Several differ only in case from each other, or from
/// keys of the large-data record, which are a type of their own.
namespace lumo::keys {

/// A name that stands in the program text, usable wherever a query key or its text is wanted.
struct Name {
  std::string_view text;
  operator QueryKey() const noexcept { return QueryKey::fixed(text); }
  constexpr operator std::string_view() const noexcept { return text; }
};

// Who asks, and how to answer.
inline constexpr Name kSourceType{"src_type"};
inline constexpr Name kVersion{"version"};
inline constexpr Name kSource{"source"};
inline constexpr Name kCallbackType{"callback_type"};
inline constexpr Name kCallbackName{"callback_name"};
inline constexpr Name kThirdAppDisplayName{"thirdAppDisplayName"};
inline constexpr Name kDisplayName{"displayName"};
inline constexpr Name kAppId{"appid"};

// What is sent, and where it is found.
inline constexpr Name kFileType{"file_type"};
inline constexpr Name kFileData{"file_data"};
inline constexpr Name kFileName{"fileName"};
inline constexpr Name kObjectLocation{"objectlocation"};
inline constexpr Name kPasteboard{"pasteboard"};
inline constexpr Name kTitle{"title"};
inline constexpr Name kDescription{"description"};
inline constexpr Name kTagName{"tagName"};
inline constexpr Name kMessageExt{"messageExt"};
inline constexpr Name kURL{"url"};
inline constexpr Name kFlashURL{"flashurl"};
inline constexpr Name kPreviewImageURL{"previewimageUrl"};
inline constexpr Name kPreviewImageData{"previewimageData"};
inline constexpr Name kVideoAssetURL{"video_assetURL"};
inline constexpr Name kExtMap{"extMap"};

// Services, groups and mini-programs.
inline constexpr Name kServiceId{"exsvr_id"};
inline constexpr Name kServiceUserInfo{"exsvr_userinfo"};
inline constexpr Name kUnionId{"unionid"};
inline constexpr Name kMiniAppId{"mini_appid"};
inline constexpr Name kMiniPath{"mini_path"};
inline constexpr Name kMiniType{"mini_type"};
inline constexpr Name kGuildAvatar{"guild_avatar"};

// The common keys.
inline constexpr Name kShareType{"shareType"};
inline constexpr Name kMessageType{"messagetype"};
inline constexpr Name kOpenId{"openId"};
inline constexpr Name kUin{"uin"};
inline constexpr Name kGeneralPasteboard{"generalpastboard"};
inline constexpr Name kCflag{"cflag"};

// What the messenger sends.
inline constexpr Name kAppParameter{"appParameter"};
inline constexpr Name kNeedToGetData{"NeedToGetData"};
inline constexpr Name kError{"error"};
inline constexpr Name kErrorDescription{"error_description"};
inline constexpr Name kErrorExtendInfo{"error_extend_info"};

}  // namespace lumo::keys
