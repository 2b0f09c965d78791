# Language level, warnings, and where programs are put.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

option(CORVANE_WERROR "Treat warnings as errors" ON)
set(CORVANE_SANITIZE "" CACHE STRING "Sanitizers for every target, as -fsanitize= takes them")

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()

add_library(corvane_warnings INTERFACE)
if(MSVC)
  target_compile_options(corvane_warnings INTERFACE /W4 /utf-8)
else()
  target_compile_options(corvane_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Wold-style-cast
    -Woverloaded-virtual -Wcast-align -Wformat=2 -Wimplicit-fallthrough -Wundef)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(corvane_warnings INTERFACE
      -Wduplicated-cond -Wduplicated-branches -Wlogical-op -Wredundant-decls -Wextra-semi
      -Wcast-qual -Wsuggest-override -Wzero-as-null-pointer-constant)
  endif()
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 sees overlapping copies in plain assignments of string literals.
    target_compile_options(corvane_warnings INTERFACE -Wno-restrict)
  endif()
  if(CORVANE_WERROR)
    target_compile_options(corvane_warnings INTERFACE -Werror)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
      # What GCC guesses of the flow of optimised code is often wrong: told, but no error.
      target_compile_options(corvane_warnings INTERFACE
        -Wno-error=maybe-uninitialized -Wno-error=uninitialized -Wno-error=array-bounds
        -Wno-error=stringop-overflow -Wno-error=stringop-overread -Wno-error=free-nonheap-object
        -Wno-error=use-after-free -Wno-error=dangling-pointer -Wno-error=nonnull
        -Wno-error=null-dereference -Wno-error=format-overflow -Wno-error=format-truncation
        -Wno-error=alloc-size-larger-than= -Wno-error=mismatched-new-delete)
    endif()
  endif()
endif()

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 leaves out the rounding to float when it vectorises two conversions from int by way of
  # float to double, and device formats of single precision depend on it.
  add_compile_options(-fno-tree-slp-vectorize)
endif()

if(CORVANE_SANITIZE)
  add_compile_options(-fsanitize=${CORVANE_SANITIZE} -fno-omit-frame-pointer
                      -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${CORVANE_SANITIZE})
endif()
