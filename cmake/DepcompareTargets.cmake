# The shapes that the project's targets share.
include(GenerateExportHeader)
include(GoogleTest)

# depcompare_library(NAME [ALIAS a::b] SOURCES ... [INCLUDE folder] HEADERS ... EXPORT header MACRO
#                    [PUBLIC ...] [PRIVATE ...])
#
# A shared library with hidden visibility, to be installed. Its public headers are named as they are
# included, from the folder INCLUDE (by default "include"); one more is generated, which defines MACRO.
# The alias names the library in this build and in the installed package.
# Debug builds export instances of templates of others too: sanitizers compare their addresses.
function(depcompare_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "ALIAS;INCLUDE" "SOURCES;HEADERS;EXPORT;PUBLIC;PRIVATE")
  add_library(${name} SHARED ${arg_SOURCES})
  if(NOT arg_INCLUDE)
    set(arg_INCLUDE include)
  endif()
  list(TRANSFORM arg_HEADERS PREPEND "${arg_INCLUDE}/")
  target_sources(${name} PUBLIC FILE_SET HEADERS BASE_DIRS ${arg_INCLUDE} FILES ${arg_HEADERS})
  set(generated "${CMAKE_CURRENT_BINARY_DIR}/generated")
  list(POP_FRONT arg_EXPORT header macro)
  generate_export_header(${name}
    EXPORT_FILE_NAME "${generated}/${header}" EXPORT_MACRO_NAME ${macro})
  target_sources(${name} PUBLIC FILE_SET generated TYPE HEADERS BASE_DIRS "${generated}"
                 FILES "${generated}/${header}")
  if(arg_ALIAS)
    add_library(${arg_ALIAS} ALIAS ${name})
    set_property(GLOBAL APPEND_STRING PROPERTY DEPCOMPARE_ALIASES
      "add_library(${arg_ALIAS} ALIAS depcompare::${name})\n")
  endif()
  target_compile_features(${name} PUBLIC cxx_std_20)
  set_target_properties(${name} PROPERTIES
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR})
  if(DEPCOMPARE_INSTALL)
    set_target_properties(${name} PROPERTIES INSTALL_RPATH "$ORIGIN")
  endif()
  target_link_libraries(${name} PUBLIC ${arg_PUBLIC} PRIVATE ${arg_PRIVATE})
  set(exports "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/exports.map")
  target_link_options(${name} PRIVATE
    "$<$<NOT:$<CONFIG:Debug>>:LINKER:--version-script=${exports}>")
  set_property(TARGET ${name} APPEND PROPERTY LINK_DEPENDS "${exports}")
  set_property(GLOBAL APPEND PROPERTY DEPCOMPARE_LIBRARIES ${name})
endfunction()

# depcompare_platform(ALIAS FOLDER): adds the platform library of FOLDER, unless there is a target
# ALIAS already: a project that includes this one brings its own. Those go into DEPCOMPARE_REPLACED.
macro(depcompare_platform alias folder)
  if(TARGET ${alias})
    list(APPEND DEPCOMPARE_REPLACED ${alias})
  else()
    add_subdirectory(${folder})
  endif()
endmacro()

# depcompare_precompile(NAME): precompiles the headers of others that nearly every file needs, most of
# a file's compile time. The preset tidy compiles without, so a missing include does not go unseen.
function(depcompare_precompile name)
  target_precompile_headers(${name} PRIVATE
    <algorithm> <array> <functional> <future> <map> <memory> <optional> <set> <span> <string>
    <string_view> <unordered_map> <utility> <variant> <vector>
    <boost/date_time/posix_time/posix_time_types.hpp>
    <boost/graph/adjacency_list.hpp>
    <boost/range/any_range.hpp>
    <boost/type_erasure/any.hpp>
    ${ARGN})
endfunction()

# depcompare_allocator(NAME): lets a program allocate by jemalloc, which takes less time and memory
# for the many small blocks of a comparison.
function(depcompare_allocator name)
  if(DEPCOMPARE_JEMALLOC)
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(JEMALLOC REQUIRED IMPORTED_TARGET jemalloc)
    target_link_libraries(${name} PRIVATE PkgConfig::JEMALLOC)
  endif()
endfunction()

# depcompare_test(NAME SOURCES ... LIBRARIES ... [LABELS ...]): a GoogleTest program, one CTest
# entry per test. The label "threads" adds it to the tests under the thread sanitizer.
function(depcompare_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES;LABELS")
  add_executable(${name} ${arg_SOURCES})
  target_compile_features(${name} PRIVATE cxx_std_20)
  set_target_properties(${name} PROPERTIES
    CXX_EXTENSIONS OFF
    RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/tests")
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} GTest::gmock_main)
  list(LENGTH arg_SOURCES sources)
  if(sources GREATER 2)
    depcompare_precompile(${name} <gmock/gmock.h> <gtest/gtest.h>)
    # With its headers precompiled, g++ 12 takes joined strings for overflows; ASan looks for real ones.
    target_compile_options(${name} PRIVATE
      $<$<CXX_COMPILER_ID:GNU>:-Wno-stringop-overflow$<SEMICOLON>-Wno-array-bounds>)
  endif()
  gtest_discover_tests(${name}
    TEST_PREFIX "${name}."
    DISCOVERY_MODE PRE_TEST
    PROPERTIES LABELS "${arg_LABELS}")
  if("threads" IN_LIST arg_LABELS)
    if(NOT TARGET thread_tests)
      add_custom_target(thread_tests)
    endif()
    add_dependencies(thread_tests ${name})
  endif()
endfunction()
