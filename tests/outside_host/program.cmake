# Builds a program with libzkmocap, against the tree that run.cmake installed and moved. run.cmake
# includes this file. PROGRAM is the program's source, which README shows.
file(GLOB_RECURSE program_library ${WORK_DIR}/moved/libzkmocap.so)
run(readelf --dynamic ${program_library})
if(NOT output MATCHES "Library soname: \\[libzkmocap\\.so\\.0\\]")
  message(FATAL_ERROR "libzkmocap.so has another SONAME:\n${output}")
endif()

file(READ ${PROGRAM} source)
file(READ ${README} readme)
string(FIND "${readme}" "${source}" position)
if(position EQUAL -1)
  message(FATAL_ERROR "${README} does not show ${PROGRAM} as it is")
endif()

run(${pkg_config} --cflags --libs zkmocap)
separate_arguments(program_package UNIX_COMMAND "${output}")
set(compilers c++)
find_program(clang clang++)
if(clang AND NOT FLAGS MATCHES "-fsanitize")
  list(APPEND compilers ${clang})
endif()
foreach(compiler IN LISTS compilers)
  run(${compiler} -std=c++20 -Wall -Wextra ${flags} ${PROGRAM} -o ${WORK_DIR}/program ${program_package}
    -Wl,-rpath,${library_folder})
  run(${WORK_DIR}/program ${SAMPLE} ${WORK_DIR}/walk.glb)
  file(READ ${WORK_DIR}/walk.glb magic LIMIT 4 HEX)
  file(SIZE ${WORK_DIR}/walk.glb size)
  if(NOT magic STREQUAL "676c5446" OR size LESS 10000)
    message(FATAL_ERROR "the program that ${compiler} built wrote no glTF file")
  endif()
  file(REMOVE ${WORK_DIR}/walk.glb)
  execute_process(COMMAND ${WORK_DIR}/program ${WORK_DIR}/missing.bvh ${WORK_DIR}/walk.glb
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  if(NOT result EQUAL 1 OR NOT output STREQUAL "" OR EXISTS ${WORK_DIR}/walk.glb
      OR NOT errors STREQUAL "${WORK_DIR}/missing.bvh: error: no such file [unreadable]\n")
    message(FATAL_ERROR "the program gave ${result} for a missing file: ${output}${errors}")
  endif()
endforeach()

# Builds the same program with CMake's package.
file(WRITE ${WORK_DIR}/program_source/CMakeLists.txt "cmake_minimum_required(VERSION 3.25)
project(program LANGUAGES CXX)
find_package(zkmocaputils REQUIRED)
add_executable(program ${PROGRAM})
target_link_libraries(program PRIVATE zkmocap::zkmocap)
")
run(${CMAKE_COMMAND} -S ${WORK_DIR}/program_source -B ${WORK_DIR}/program_build
  -DCMAKE_PREFIX_PATH=${WORK_DIR}/moved -DCMAKE_CXX_FLAGS=${FLAGS})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/program_build)
run(${WORK_DIR}/program_build/program ${SAMPLE} ${WORK_DIR}/walk.glb)
