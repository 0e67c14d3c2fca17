# The functions that declare the targets of the folders.
include_guard(GLOBAL)
include(CheckCXXSourceCompiles)

# If the system has no shared libraries, libraries and modules are static.
get_property(zk_can_load GLOBAL PROPERTY TARGET_SUPPORTS_SHARED_LIBS)
if(zk_can_load)
  set(ZKMOCAP_SHARED SHARED)
  set(ZKMOCAP_MODULE MODULE)
else()
  set(ZKMOCAP_SHARED STATIC)
  set(ZKMOCAP_MODULE STATIC)
endif()

# Whether the standard library reads and writes doubles; if not, stand-ins need fast_float and fmt.
block()
  set(CMAKE_CXX_STANDARD 20)
  set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
  check_cxx_source_compiles("
    #include <charconv>
    #ifndef __cpp_lib_to_chars
    #error
    #endif
    int main() {}" ZKMOCAP_HAVE_TO_CHARS)
endblock()

# Sets what all targets of this project have in common.
function(zk_common target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    POSITION_INDEPENDENT_CODE ON
    VERIFY_INTERFACE_HEADER_SETS ${ZKMOCAP_VERIFY_HEADERS})
  target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:zk_warnings>)
endfunction()

# zk_room(NAME HEADERS ... SOURCES ... [ALONE ...] LINKS ...): a room, which is a static library that links
# only the rooms it may include. Each of its headers compiles alone: a header with a source is the first one
# that its source includes, as scripts/architecture checks; the others are verified. A unity build compiles
# the sources of a room together, except those that ALONE repeats: a local name of theirs is also in another
# source, or a test looks for what the compiler calls by the name of the source.
function(zk_room name)
  cmake_parse_arguments(ROOM "" "" "HEADERS;SOURCES;ALONE;LINKS" ${ARGN})
  if(ROOM_ALONE)
    set_source_files_properties(${ROOM_ALONE} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
  endif()
  add_library(zk_${name} STATIC)
  add_library(zkmocap::${name} ALIAS zk_${name})
  set(without_source ${ROOM_HEADERS})
  list(TRANSFORM ROOM_SOURCES REPLACE "\\.cpp$" ".h" OUTPUT_VARIABLE with_source)
  list(REMOVE_ITEM without_source ${with_source})
  set(with_source ${ROOM_HEADERS})
  list(REMOVE_ITEM with_source ${without_source})
  target_sources(zk_${name}
    PRIVATE ${ROOM_SOURCES}
    PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${with_source}
      FILE_SET without_source TYPE HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${without_source})
  target_link_libraries(zk_${name} PUBLIC ${ROOM_LINKS})
  zk_common(zk_${name})
  set_target_properties(zk_${name} PROPERTIES INTERFACE_HEADER_SETS_TO_VERIFY without_source)
endfunction()

# gmock is most of what a small test compiles, so its headers are compiled once for all tests. A
# precompiled header can only be used with the options that it was compiled with. It therefore belongs
# to a program that has the options of a test.
function(zk_precompile_gmock)
  file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/precompiled_gmock.cpp "int main() {}\n")
  add_executable(zk_precompiled_gmock ${CMAKE_CURRENT_BINARY_DIR}/precompiled_gmock.cpp)
  target_link_libraries(zk_precompiled_gmock PRIVATE GTest::gmock GTest::gtest_main)
  zk_common(zk_precompiled_gmock)
  target_compile_options(zk_precompiled_gmock PRIVATE ${ZKMOCAP_TEST_OPTIONS})
  target_precompile_headers(zk_precompiled_gmock PRIVATE <gmock/gmock.h> <gtest/gtest.h>)
endfunction()

# zk_test(NAME SOURCES ... LINKS ... [DEFINITIONS ...] [TIMEOUT seconds]): a GoogleTest program. Each of
# its cases is a test of CTest, or all together are one if starting a process for each takes too long.
function(zk_test name)
  cmake_parse_arguments(TEST "" "TIMEOUT" "SOURCES;LINKS;DEFINITIONS" ${ARGN})
  if(NOT TEST_TIMEOUT)
    set(TEST_TIMEOUT 300)
  endif()
  add_executable(${name} ${TEST_SOURCES})
  target_link_libraries(${name} PRIVATE ${TEST_LINKS} GTest::gmock GTest::gtest_main)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  target_compile_definitions(${name} PRIVATE ${TEST_DEFINITIONS})
  zk_common(${name})
  target_compile_options(${name} PRIVATE ${ZKMOCAP_TEST_OPTIONS})
  target_precompile_headers(${name} REUSE_FROM zk_precompiled_gmock)
  if(ZKMOCAP_TEST_TOGETHER)
    # A program whose single cases may take long starts early.
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT 1200 COST ${TEST_TIMEOUT} ENVIRONMENT LC_ALL=C.UTF-8)
    return()
  endif()
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 120
    # Each property has one value; the items of a list would become further properties.
    PROPERTIES TIMEOUT ${TEST_TIMEOUT} ENVIRONMENT LC_ALL=C.UTF-8)
endfunction()

# zk_bench(NAME SOURCES ... LINKS ...): a Google Benchmark program.
function(zk_bench name)
  cmake_parse_arguments(BENCH "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${BENCH_SOURCES})
  target_link_libraries(${name} PRIVATE ${BENCH_LINKS} benchmark::benchmark_main)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  zk_common(${name})
endfunction()
