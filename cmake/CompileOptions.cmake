# How the project's own code is compiled: strict, with hidden symbols, and with the sanitizers that were asked for.

add_library(lumoapi_compile_options INTERFACE)
target_compile_options(lumoapi_compile_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow $<$<BOOL:${PROJECT_IS_TOP_LEVEL}>:-Werror> -fvisibility=hidden -fvisibility-inlines-hidden)
if(LUMOAPI_HEIF_FOUND)
  target_compile_definitions(lumoapi_compile_options INTERFACE LUMOAPI_HAVE_HEIF)
endif()

if(LUMOAPI_SANITIZE)
  add_compile_options(-fsanitize=${LUMOAPI_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${LUMOAPI_SANITIZE})
endif()
