# A room is one folder of sources and one library. Its headers are seen only by those who name it
# under USES: every room has an include folder of its own that holds nothing but a link to it, so
# that an include along an arrow that does not exist fails to build.
#
#   corvane_room(NAME [PATH folder] [USES rooms...] [LIBRARIES libraries...] [SOURCES files...])

set(CORVANE_ROOMS ${CMAKE_BINARY_DIR}/rooms)

# Off where a build has to notice that a source lacks an include of its own.
option(CORVANE_PRECOMPILE "Read what most sources include of the libraries only once" OFF)

function(corvane_room name)
  cmake_parse_arguments(ROOM "" "PATH" "USES;LIBRARIES;SOURCES" ${ARGN})
  if(NOT ROOM_PATH)
    set(ROOM_PATH ${name})
  endif()
  if(NOT ROOM_SOURCES)
    file(GLOB ROOM_SOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${ROOM_PATH}/*.cpp)
  endif()

  set(include_root ${CORVANE_ROOMS}/${name})
  get_filename_component(parent ${include_root}/${ROOM_PATH} DIRECTORY)
  file(MAKE_DIRECTORY ${parent})
  file(CREATE_LINK ${CMAKE_SOURCE_DIR}/${ROOM_PATH} ${include_root}/${ROOM_PATH} SYMBOLIC)

  if(ROOM_SOURCES)
    add_library(${name} STATIC ${ROOM_SOURCES})
    target_link_libraries(${name} PRIVATE corvane_warnings)
    if(CORVANE_PRECOMPILE AND TARGET base AND NOT name STREQUAL base)
      target_precompile_headers(${name} REUSE_FROM base)
    elseif(CORVANE_PRECOMPILE AND name STREQUAL base)
      target_precompile_headers(${name} PRIVATE
        <algorithm> <array> <charconv> <chrono> <filesystem> <functional> <map> <memory> <mutex>
        <optional> <string> <string_view> <utility> <variant> <vector> <fmt/format.h>)
    endif()
    set(scope PUBLIC)
  else()
    add_library(${name} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_include_directories(${name} ${scope} ${include_root})
  target_link_libraries(${name} ${scope} ${ROOM_USES} ${ROOM_LIBRARIES})

  set_target_properties(${name} PROPERTIES CORVANE_FOLDER ${ROOM_PATH})
  set_property(GLOBAL APPEND PROPERTY CORVANE_ROOM_NAMES ${name})
endfunction()
