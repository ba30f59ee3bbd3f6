#pragma once

#include "LumoApi/Data.h"
#include "LumoApi/LumoApiRefusal.h"
#include "platform/text/Text.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace lumo {

/// The largest accepted size, in its own unit; one more is refused.
template <LumoApiRefusal::Unit U>
struct Limit {
  static constexpr LumoApiRefusal::Unit kUnit = U;
  std::uint64_t largest;
};
using CodeUnits = Limit<LumoApiRefusal::Unit::CodeUnits>;
using Bytes = Limit<LumoApiRefusal::Unit::Bytes>;
using Entries = Limit<LumoApiRefusal::Unit::Entries>;

// Sizes in the unit of a limit.
inline std::uint64_t sizeIn(CodeUnits, std::string_view text) noexcept { return utf16Length(text); }
inline std::uint64_t sizeIn(Bytes, const Data& data) noexcept { return data.size(); }
inline std::uint64_t sizeIn(Bytes, std::uint64_t sum) noexcept { return sum; }
inline std::uint64_t sizeIn(Entries, std::size_t count) noexcept { return count; }

/// Whether a size is past the limit.
template <LumoApiRefusal::Unit U, class Sized>
bool exceeds(const Sized& sized, Limit<U> limit) noexcept {
  return sizeIn(limit, sized) > limit.largest;
}

/// No text has more code units than bytes, so most texts need not be counted.
inline bool exceeds(const std::string& text, CodeUnits limit) noexcept {
  return text.size() > limit.largest && sizeIn(limit, text) > limit.largest;
}

namespace limits {

inline constexpr CodeUnits kTitle{128};
inline constexpr CodeUnits kDescription{512};
inline constexpr CodeUnits kTagName{128};
inline constexpr CodeUnits kMessageExt{256};
inline constexpr CodeUnits kText{1536};
inline constexpr CodeUnits kURL{1024};

inline constexpr Bytes kData{5'242'880};
inline constexpr Bytes kPreviewImage{1'048'576};
inline constexpr Bytes kAvatarPicture{15'728'640};
inline constexpr Bytes kFacePicture{1'048'576};
inline constexpr Bytes kFacePicturesTogether{3'145'728};
inline constexpr Bytes kFeedVideo{52'428'800};

inline constexpr Entries kFacePictures{9};
inline constexpr Entries kFeedPictures{20};
inline constexpr Entries kCommonTexts{1};
inline constexpr Entries kCommonPictures{1};

}  // namespace limits
}  // namespace lumo
