# What users may include: one tree, LumoApi/, in which every public header of every room lies. The build's tree has links
# to the headers where they stand; what is installed looks the same.

set(LUMOAPI_INCLUDE_DIR ${PROJECT_BINARY_DIR}/include)

file(GLOB LUMOAPI_PUBLIC_HEADERS CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/LumoApi/*.h ${PROJECT_SOURCE_DIR}/model/*.h)
foreach(header ContentClasses LogMessage Registered)
  list(REMOVE_ITEM LUMOAPI_PUBLIC_HEADERS ${PROJECT_SOURCE_DIR}/model/${header}.h)
endforeach()
foreach(header Export text/Base64 text/CopyText text/URL values/Data values/Dictionary values/Value)
  list(APPEND LUMOAPI_PUBLIC_HEADERS ${PROJECT_SOURCE_DIR}/platform/${header}.h)
endforeach()

file(REMOVE_RECURSE ${LUMOAPI_INCLUDE_DIR})
file(MAKE_DIRECTORY ${LUMOAPI_INCLUDE_DIR}/LumoApi)
foreach(header ${LUMOAPI_PUBLIC_HEADERS})
  cmake_path(GET header FILENAME name)
  file(CREATE_LINK ${header} ${LUMOAPI_INCLUDE_DIR}/LumoApi/${name} COPY_ON_ERROR SYMBOLIC)
endforeach()
