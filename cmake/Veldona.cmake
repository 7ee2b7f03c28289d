# What every target of the house shares: the language, the warnings, and the include rule.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

# What is read from the cache does not depend on when a header was written, nor on where the checkout lies.
find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CMAKE_COMMAND}" -E env "CCACHE_BASEDIR=${CMAKE_SOURCE_DIR}" CCACHE_NOHASHDIR=1
      CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime "${CCACHE}")
endif()

add_library(veldona_warnings INTERFACE)
option(VELDONA_FUZZ "Build for the fuzzers of tests/fuzz, by clang" OFF)
if(VELDONA_FUZZ)
  # The warnings are those of the house's compiler; the other one has other ones.
  add_compile_options(-fsanitize=fuzzer-no-link,float-cast-overflow -fno-sanitize-recover=float-cast-overflow)
else()
  # At -O2 GCC 12 takes joined strings of the standard library for reads behind their end, and the like. The everyday
  # build holds the warnings; a shop's build doesn't fail for them.
  target_compile_options(veldona_warnings INTERFACE -Wall -Wextra -Wconversion -Wshadow
      $<$<NOT:$<CONFIG:RelWithDebInfo>>:-Werror>)
endif()

option(VELDONA_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)
if(VELDONA_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
  # GCC takes the parts of a std::variant that it checks at run time for parts that were never set.
  target_compile_options(veldona_warnings INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
endif()

# What a shop runs is hardened; scripts/check_hardening looks at the programs. The everyday build asks for none of it, and
# the sanitizers are better at all of it.
if(CMAKE_BUILD_TYPE STREQUAL "RelWithDebInfo")
  set(harden ON)
endif()
option(VELDONA_HARDEN "Build as a shop's programs are" ${harden})
if(VELDONA_HARDEN)
  include(CheckPIESupported)
  check_pie_supported(LANGUAGES CXX)
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
  add_compile_options(-fstack-protector-strong -fstack-clash-protection -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
  add_link_options(LINKER:-z,relro,-z,now,-z,noexecstack)
endif()

# Headers of others, read once and not in every source. None of ours is among them: a touched header would rebuild all.
set(VELDONA_STANDARD_HEADERS <algorithm> <chrono> <functional> <map> <memory> <optional> <set> <string>
    <string_view> <unordered_map> <variant> <vector>)
function(veldona_header_set name)
  file(CONFIGURE OUTPUT "${CMAKE_BINARY_DIR}/headers/${name}.cpp" CONTENT "")
  add_library(${name} OBJECT "${CMAKE_BINARY_DIR}/headers/${name}.cpp")
  target_precompile_headers(${name} PRIVATE ${VELDONA_STANDARD_HEADERS} ${ARGN})
endfunction()
veldona_header_set(standard_headers)

# veldona_library(NAME FOLDER SOURCES … LINKS … [PRIVATE_LINKS …] [HEADERS …])
#
# A library of the house. Its headers are reached as "FOLDER/header.h", through a link of that name in a folder of its
# own, so that a target sees the headers of exactly those libraries that it links, directly or through one of them.
# HEADERS: further headers of others to be read once for this library.
function(veldona_library name folder)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;PRIVATE_LINKS;HEADERS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  set(view "${CMAKE_BINARY_DIR}/include/${name}")
  get_filename_component(parent "${view}/${folder}" DIRECTORY)
  if(IS_SYMLINK "${parent}") # of a build made when the folder above was one library
    file(REMOVE "${parent}")
  endif()
  file(MAKE_DIRECTORY "${parent}")
  file(CREATE_LINK "${CMAKE_SOURCE_DIR}/${folder}" "${view}/${folder}" SYMBOLIC)
  target_include_directories(${name} PUBLIC "${view}")
  target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE veldona_warnings ${ARG_PRIVATE_LINKS})
  if(ARG_HEADERS)
    target_precompile_headers(${name} PRIVATE ${VELDONA_STANDARD_HEADERS} ${ARG_HEADERS})
  else()
    target_precompile_headers(${name} REUSE_FROM standard_headers)
  endif()
endfunction()

# veldona_program(NAME SOURCES … LINKS …)
function(veldona_program name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE veldona_warnings ${ARG_LINKS})
endfunction()

# veldona_tool(NAME PACKAGE … SOURCES … LINKS …)
#
# A program that is installed, by the package veldona (what a shop uses) or araclar (what looks for a fault). It is built
# with the packages, has its manual pages in packaging/man, tells about itself, and stands in the metadata.
define_property(GLOBAL PROPERTY VELDONA_TOOLS_veldona)
define_property(GLOBAL PROPERTY VELDONA_TOOLS_araclar)
function(veldona_tool name)
  cmake_parse_arguments(ARG "" "PACKAGE" "SOURCES;LINKS" ${ARGN})
  veldona_program(${name} SOURCES ${ARG_SOURCES} LINKS ${ARG_LINKS} tool)
  set_property(GLOBAL APPEND PROPERTY VELDONA_TOOLS_${ARG_PACKAGE} ${name})
endfunction()
