#pragma once

// Marks what the shared library shows to its users; everything else in it is hidden.
#if defined(__GNUC__)
#define LUMOAPI_EXPORT __attribute__((visibility("default")))
#else
#define LUMOAPI_EXPORT
#endif
