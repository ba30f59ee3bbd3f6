#pragma once

// The version of the library, by semantic versioning; the build takes it from here. The shared library's name
// carries the major number.
#define LUMOAPI_VERSION_MAJOR 0
#define LUMOAPI_VERSION_MINOR 1
#define LUMOAPI_VERSION_PATCH 0

#define LUMOAPI_VERSION_JOINED(major, minor, patch) #major "." #minor "." #patch
#define LUMOAPI_VERSION_TEXT(major, minor, patch) LUMOAPI_VERSION_JOINED(major, minor, patch)

/// "0.1.0", as a literal.
#define LUMOAPI_VERSION \
  LUMOAPI_VERSION_TEXT(LUMOAPI_VERSION_MAJOR, LUMOAPI_VERSION_MINOR, LUMOAPI_VERSION_PATCH)
