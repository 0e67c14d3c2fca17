# zk_fuzzer(NAME SOURCES ... LINKS ... CORPUS folder [DICTIONARY file] [DEFINITIONS ...]): a fuzzer,
# which is always built. With ZKMOCAP_FUZZ_ENGINE it runs under libFuzzer, for which everything must be
# compiled by clang with the preset "fuzz". Without it, a plain program reads the files of the corpus.
# Either way, a test runs the corpus.
include_guard(GLOBAL)

option(ZKMOCAP_FUZZ_ENGINE "Link the fuzzers to libFuzzer" OFF)
# Builds all fuzzers.
add_custom_target(fuzzers)

function(zk_fuzzer name)
  cmake_parse_arguments(FUZZER "" "CORPUS;DICTIONARY" "SOURCES;LINKS;DEFINITIONS" ${ARGN})
  add_executable(${name} ${FUZZER_SOURCES})
  target_link_libraries(${name} PRIVATE ${FUZZER_LINKS})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  target_compile_definitions(${name} PRIVATE ${FUZZER_DEFINITIONS})
  zk_common(${name})
  add_dependencies(fuzzers ${name})
  if(ZKMOCAP_FUZZ_ENGINE)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    set(arguments -runs=0 -timeout=30)
  else()
    target_sources(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests/fuzz/replay_main.cpp)
    set(arguments)
  endif()
  add_test(NAME Corpus.${name} COMMAND ${name} ${arguments} ${FUZZER_CORPUS})
  set_tests_properties(Corpus.${name} PROPERTIES
    TIMEOUT 600 ENVIRONMENT "${ZKMOCAP_TEST_ENVIRONMENT}")
  # scripts/fuzz reads these lines.
  set_property(GLOBAL APPEND PROPERTY ZK_FUZZERS "${name} ${FUZZER_CORPUS} ${FUZZER_DICTIONARY}")
endfunction()

# zk_fuzzer_list(FILE): a line for each fuzzer: its name, its corpus, its dictionary.
function(zk_fuzzer_list file)
  get_property(lines GLOBAL PROPERTY ZK_FUZZERS)
  list(JOIN lines "\n" text)
  file(WRITE ${file} "${text}\n")
endfunction()
