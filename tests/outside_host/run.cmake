# Installs BUILD_DIR, moves the installed tree, builds the outside host against it there and runs it.
# cmake -DBUILD_DIR=... -DSOURCE_DIR=... -DWORK_DIR=... -DSAMPLE=... -DFLAGS=...
#   -DPROGRAM=... -DREADME=... -P run.cmake
function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    list(JOIN ARGV " " command)
    message(FATAL_ERROR "${command}: ${result}\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

# Runs a command that must import the sample.
function(run_import)
  run(${ARGV})
  if(NOT output MATCHES "^[1-9][0-9]* objects\nImported 1 model successfully\n$")
    list(JOIN ARGV " " command)
    message(FATAL_ERROR "${command} printed: ${output}")
  endif()
endfunction()

file(REMOVE_RECURSE ${WORK_DIR})
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/first)
file(RENAME ${WORK_DIR}/first ${WORK_DIR}/moved)
include(${SOURCE_DIR}/installed_tree.cmake)
include(${SOURCE_DIR}/program.cmake)
run(${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${WORK_DIR}/build -DCMAKE_PREFIX_PATH=${WORK_DIR}/moved
  -DCMAKE_CXX_FLAGS=${FLAGS})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
set(host ${WORK_DIR}/build/outside_host)
run_import(${host} ${SAMPLE})

# Imports files with a name in UTF-8 and with a name that is not UTF-8, in any locale.
string(ASCII 233 byte)
foreach(name "Übung 歩く.bvh" "w${byte}.bvh")
  file(COPY_FILE ${SAMPLE} "${WORK_DIR}/${name}")
  foreach(locale C.UTF-8 C)
    run_import(${CMAKE_COMMAND} -E env LC_ALL=${locale} ${host} "${WORK_DIR}/${name}")
  endforeach()
endforeach()

# Only the log tells that an import failed.
execute_process(COMMAND ${host} ${WORK_DIR}/missing.bvh
  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
if(NOT result EQUAL 1 OR NOT output STREQUAL ""
    OR NOT errors STREQUAL "ERROR: Failed to read BVH file. Specify a valid file name\n")
  message(FATAL_ERROR "a missing file gave ${result}: ${output}${errors}")
endif()

# The installed command finds its plug-in and its host.
run(${WORK_DIR}/moved/bin/zkhost import ${SAMPLE})
file(REMOVE_RECURSE ${WORK_DIR})
