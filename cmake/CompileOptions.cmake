# How the project's own code is compiled: strict, hardened, with hidden symbols, and with the sanitizers that were
# asked for.

add_library(lumoapi_compile_options INTERFACE)
target_compile_options(lumoapi_compile_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow $<$<BOOL:${PROJECT_IS_TOP_LEVEL}>:-Werror> -fvisibility=hidden -fvisibility-inlines-hidden)
# Sources reach the rooms by name, and what is public as users do.
target_include_directories(lumoapi_compile_options INTERFACE ${PROJECT_SOURCE_DIR})
if(LUMOAPI_HEIF_FOUND)
  target_compile_definitions(lumoapi_compile_options INTERFACE LUMOAPI_HAVE_HEIF)
endif()

# Messages and pictures are hostile input: a fault that slips through must end the program, not hand it over. Who
# builds the library inside another project decides that there. The C library checks copies in optimised code only, and
# the sanitizers bring checks of their own. The standard library's assertions are on in the presets for testing and off
# in the release, where they would cost a share of a short text 2 % more instructions.
if(PROJECT_IS_TOP_LEVEL AND NOT LUMOAPI_SANITIZE)
  target_compile_options(lumoapi_compile_options INTERFACE -fstack-protector-strong
    $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE> $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
    target_compile_options(lumoapi_compile_options INTERFACE -fcf-protection)
  endif()
  add_link_options(LINKER:-z,relro LINKER:-z,now)
endif()

if(LUMOAPI_SANITIZE)
  add_compile_options(-fsanitize=${LUMOAPI_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${LUMOAPI_SANITIZE})
endif()
