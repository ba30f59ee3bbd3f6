# What is installed, and the Debian packages of it: the shared library (runtime), what one builds against
# (development), and the tool with its manual page and completions.

include(CMakePackageConfigHelpers)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/LumoApi)

install(TARGETS LumoApiShared EXPORT LumoApi-shared
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development)
install(TARGETS LumoApiStatic EXPORT LumoApi-static
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
foreach(form shared static)
  install(EXPORT LumoApi-${form} NAMESPACE LumoApi:: DESTINATION ${package_dir} COMPONENT development)
endforeach()

install(FILES ${LUMOAPI_PUBLIC_HEADERS} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/LumoApi COMPONENT development)

set(LUMOAPI_PKG_CONFIG_MODULES webp)
set(LUMOAPI_PC_LIBS "-lboost_json -ljpeg -lpng -lwebp")
if(LUMOAPI_HEIF_FOUND)
  string(APPEND LUMOAPI_PKG_CONFIG_MODULES " heif")
  string(APPEND LUMOAPI_PC_LIBS " -lheif")
endif()
configure_package_config_file(cmake/LumoApiConfig.cmake.in LumoApiConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(LumoApiConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/LumoApiConfig.cmake ${PROJECT_BINARY_DIR}/LumoApiConfigVersion.cmake
  DESTINATION ${package_dir} COMPONENT development)

file(RELATIVE_PATH prefix_from_pc /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(cmake/lumoapi.pc.in lumoapi.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/lumoapi.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

if(LUMOAPI_BUILD_TOOL)
  install(TARGETS lumoapi DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
  install(DIRECTORY ${PROJECT_BINARY_DIR}/share/ DESTINATION ${CMAKE_INSTALL_DATADIR} COMPONENT tool)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "The LumoApi developers <developers@lumoapi.invalid>")
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(library_package liblumoapi${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${library_package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "${PROJECT_DESCRIPTION}: shared library")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME liblumoapi-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
# What static linking takes besides.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "${library_package} (= ${PROJECT_VERSION}), libboost-json1.81-dev, libjpeg62-turbo-dev, libpng-dev, libwebp-dev")
if(LUMOAPI_HEIF_FOUND)
  string(APPEND CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ", libheif-dev")
endif()
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "${PROJECT_DESCRIPTION}: headers and static library")
set(CPACK_DEBIAN_TOOL_PACKAGE_NAME lumoapi)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION utils)
set(CPACK_COMPONENT_TOOL_DESCRIPTION "${PROJECT_DESCRIPTION}: command-line tool")
include(CPack)
