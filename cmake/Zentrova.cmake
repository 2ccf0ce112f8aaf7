# Settings that all targets of the project share: warnings, sanitizers, include root.

add_library(zentrova_options INTERFACE)
target_include_directories(zentrova_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(zentrova_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
# g++ 12 warns of overlapping and of endless copies inside std::string at -O2 and above that cannot
# happen (GCC bug 105651). Every other build keeps the warnings.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_BUILD_TYPE STREQUAL "Release")
  target_compile_options(zentrova_options INTERFACE
    -Wno-restrict -Wno-stringop-overflow -Wno-array-bounds)
endif()
# Several sources in one translation unit look to it like headers, where a type of an unnamed
# namespace would be a mistake.
if(CMAKE_UNITY_BUILD)
  target_compile_options(zentrova_options INTERFACE
    $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
endif()
find_package(Threads REQUIRED)
target_link_libraries(zentrova_options INTERFACE Threads::Threads)

if(ZENTROVA_SANITIZE)
  target_compile_options(zentrova_options INTERFACE
    -fsanitize=${ZENTROVA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer -g1)
  target_link_options(zentrova_options INTERFACE -fsanitize=${ZENTROVA_SANITIZE} -fuse-ld=lld)
endif()
if(ZENTROVA_FUZZERS)
  # A fuzzer needs the coverage of the code under test.
  target_compile_options(zentrova_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(ZENTROVA_COVERAGE)
  target_compile_options(zentrova_options INTERFACE --coverage)
  target_link_options(zentrova_options INTERFACE --coverage)
endif()

# Headers that nearly every source includes are compiled once: the standard library's, with JSON for
# the application, and with GoogleTest for the tests. One target, named here, compiles each set; all
# others of its kind, which have the same flags, reuse it.
option(ZENTROVA_PRECOMPILE "Precompile the headers of the standard library and of JSON" ON)
set(standard_headers <algorithm> <array> <atomic> <chrono> <cmath> <concepts> <cstdint> <deque>
  <filesystem> <fstream> <functional> <iterator> <limits> <map> <memory> <mutex> <optional> <ranges>
  <set> <span> <sstream> <string> <string_view> <thread> <tuple> <type_traits> <unordered_map>
  <utility> <variant> <vector>)

# zentrova_precompile(NAME PROVIDER HEADER...): makes the target use the precompiled headers of the
# provider. The provider itself compiles them.
function(zentrova_precompile name provider)
  if(NOT ZENTROVA_PRECOMPILE)
    return()
  endif()
  if(name STREQUAL provider)
    target_precompile_headers(${name} PRIVATE ${standard_headers} ${ARGN})
  else()
    target_precompile_headers(${name} REUSE_FROM ${provider})
  endif()
endfunction()

# zentrova_optimise_less(NAME): with sanitizers, only the platform and the bundle are optimised.
# Optimising the application and the tests takes longer than it saves. A release optimises the
# application less than the platform, which does the work.
function(zentrova_optimise_less name)
  if(ZENTROVA_SANITIZE)
    target_compile_options(${name} PRIVATE -O0)
  elseif(CMAKE_BUILD_TYPE STREQUAL "Release")
    target_compile_options(${name} PRIVATE -O2)
    # JSON is compiled in every unit, so that fewer units take less time.
    set_target_properties(${name} PROPERTIES UNITY_BUILD_BATCH_SIZE 16)
  endif()
endfunction()

# zentrova_folder(NAME [dependency...]): the sources of this folder and of the rooms in it as one
# object library. The sources are globbed, so a new file needs no second entry.
function(zentrova_folder name)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  if(sources)
    add_library(${name} OBJECT ${sources})
    target_link_libraries(${name} PUBLIC zentrova_options ${ARGN})
    if(name MATCHES "^settings_")
      zentrova_optimise_less(${name})
      zentrova_precompile(${name} settings_device <nlohmann/json.hpp>)
    else()
      zentrova_precompile(${name} platform_foundation)
    endif()
  else()
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE zentrova_options ${ARGN})
  endif()
endfunction()

# zentrova_shared_folder(NAME FOLDER): copies the folder to bin/../share/NAME, where programs look for
# their data, as the target settings_NAME. Files deleted from the folder are deleted there too.
function(zentrova_shared_folder name folder)
  set(shared ${CMAKE_BINARY_DIR}/share/${name})
  file(GLOB_RECURSE files CONFIGURE_DEPENDS ${folder}/*)
  string(MD5 names "${files}")
  add_custom_command(OUTPUT ${shared}.copied
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${shared}
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${folder} ${shared}
    COMMAND ${CMAKE_COMMAND} -E echo ${names} > ${shared}.copied
    DEPENDS ${files})
  add_custom_target(settings_${name} ALL)
  if(files)
    target_sources(settings_${name} PRIVATE ${shared}.copied)
  endif()
endfunction()

# zentrova_test(NAME library...): builds the *Test.cpp of this folder and its rooms as one program.
function(zentrova_test name)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*Test.cpp)
  # A folder "threads" is a separate program, because ThreadSanitizer needs only that.
  if(NOT name MATCHES "threads")
    list(FILTER sources EXCLUDE REGEX "/threads/")
  endif()
  if(NOT sources)
    return()
  endif()
  add_executable(${name} ${sources})
  target_link_libraries(${name} PRIVATE zentrova_options zentrova_test_support ${ARGN})
  zentrova_optimise_less(${name})
  zentrova_precompile(${name} platform_foundation_test <gmock/gmock.h> <gtest/gtest.h>
    <nlohmann/json.hpp>)
  gtest_discover_tests(${name} TEST_PREFIX "${name}." DISCOVERY_MODE PRE_TEST
    PROPERTIES TIMEOUT 300)
endfunction()
