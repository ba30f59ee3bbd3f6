#pragma once

#include "LumoApi/LumoApiQueryDictionary.h"

#include <cstdint>
#include <string_view>

namespace lumo {

/// Where in the messenger a launch URL leads.
struct Destination {
  FixedWord siblingScheme;  ///< for the destination code 1
  FixedWord scheme;         ///< for every other code
  FixedWord host;
  FixedWord path;
  bool commonKeys;  ///< whether the URL carries the common keys

  constexpr FixedWord schemeFor(std::uint64_t shareDestType) const noexcept {
    return shareDestType == 1 ? siblingScheme : scheme;
  }
};

// clang-format off
namespace destinations {
//                                           sibling scheme           scheme                    host             path                     common keys
inline constexpr Destination kShareToFriend{ "mlumoapi",              "mlumoapi",               "share",         "/to_fri",               true};
inline constexpr Destination kAvatarPicture{ "mlumoapi",              "mlumoapi",               "profile",       "/sdk_avatar_edit",      true};
inline constexpr Destination kAvatarVideo{   "mlumoapi",              "mlumoapi",               "profile",       "/sdk_dynamic_avatar_edit", true};
inline constexpr Destination kAuth{          "mlumoapi",              "mlumoapi",               "auth",          "/sdk_check_auth",       true};
inline constexpr Destination kFaceCollection{"mlumoapi",              "mlumoapi",               "profile",       "/sdk_face_collection",  true};
inline constexpr Destination kExtraService{  "mlumoapi",              "mlumoapi",               "profile",       "/sdk_extend_service",   false};
inline constexpr Destination kCommonService{ "mlumoapi",              "mlumoapi",               "open_connect",  "/common_channel",       false};
inline constexpr Destination kMiniProgram{   "mlumoapi",              "mlumoapi",               "profile",       "/sdk_launch_mini_app",  false};
inline constexpr Destination kBindGroup{     "teskthirdappgroup",     "mlumothirdappgroup",     "thirdappgroup", "/bindgroup",            false};
inline constexpr Destination kJoinGroup{     "teskthirdappgroup",     "mlumothirdappgroup",     "thirdappgroup", "/joingroup",            false};
inline constexpr Destination kAddFriend{     "teskopensdkfriend",     "mlumoopensdkfriend",     "friend",        "/addfriend",            false};
inline constexpr Destination kBindGameGroup{ "teskgamebindinggroup",  "mlumogamebindinggroup",  "game",          "/bindinggroup",         false};
inline constexpr Destination kShowCard{      "teskapi",               "mlumoapi",               "card",          "/show_pslcard",         false};
}  // namespace destinations
// clang-format on

/// The signed group URL, which the path follows.
inline constexpr std::string_view kGroupProBase = "mlumoguild://mlumoguild/guild";

}  // namespace lumo
