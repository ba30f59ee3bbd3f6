# The third-party libraries that the library stands on. All of them are private: no header of theirs is seen by users.

find_package(Boost 1.81 REQUIRED COMPONENTS json)
find_package(JPEG REQUIRED)
find_package(PNG REQUIRED)
find_package(PkgConfig REQUIRED)
pkg_check_modules(LUMOAPI_WEBP REQUIRED IMPORTED_TARGET libwebp)
pkg_check_modules(LUMOAPI_HEIF IMPORTED_TARGET libheif)

set(LUMOAPI_DEPENDENCIES Boost::json JPEG::JPEG PNG::PNG PkgConfig::LUMOAPI_WEBP)
if(LUMOAPI_HEIF_FOUND)
  list(APPEND LUMOAPI_DEPENDENCIES PkgConfig::LUMOAPI_HEIF)
endif()
