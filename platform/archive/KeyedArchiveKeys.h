#pragma once

#include <cstdint>
#include <string_view>

namespace lumo {

// The words of the keyed archive.

inline constexpr std::int64_t kVersion = 100'000;
inline constexpr std::string_view kArchiverName = "NSKeyedArchiver";
inline constexpr std::string_view kNilText = "$null";  // the object 0, and nil wherever it stands as itself

inline constexpr std::string_view kVersionKey = "$version";
inline constexpr std::string_view kObjectsKey = "$objects";
inline constexpr std::string_view kArchiverKey = "$archiver";
inline constexpr std::string_view kTopKey = "$top";
inline constexpr std::string_view kRootKey = "root";
inline constexpr std::string_view kClassKey = "$class";
inline constexpr std::string_view kClassNameKey = "$classname";
inline constexpr std::string_view kClassesKey = "$classes";
inline constexpr std::string_view kKeysKey = "NS.keys";
inline constexpr std::string_view kElementsKey = "NS.objects";
inline constexpr std::string_view kStringKey = "NS.string";
inline constexpr std::string_view kDataKey = "NS.data";
inline constexpr std::string_view kTimeKey = "NS.time";

inline constexpr std::uint32_t kNil = 0;
inline constexpr std::uint32_t kRootNumber = 1;

}  // namespace lumo
