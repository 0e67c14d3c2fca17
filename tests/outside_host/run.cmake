# Installs BUILD_DIR, moves the installed tree, builds the outside host against it there and runs it.
# cmake -DBUILD_DIR=... -DSOURCE_DIR=... -DWORK_DIR=... -DSAMPLE=... -DFLAGS=... -P run.cmake
function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    list(JOIN ARGV " " command)
    message(FATAL_ERROR "${command}: ${result}\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${WORK_DIR})
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/first)
file(RENAME ${WORK_DIR}/first ${WORK_DIR}/moved)
run(${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${WORK_DIR}/build -DCMAKE_PREFIX_PATH=${WORK_DIR}/moved
  -DCMAKE_CXX_FLAGS=${FLAGS})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
run(${WORK_DIR}/build/outside_host ${SAMPLE})
if(NOT output MATCHES "^[1-9][0-9]* objects\nImported 1 model successfully\n$")
  message(FATAL_ERROR "outside host printed: ${output}")
endif()
# The installed command finds its plug-in and its host by itself.
run(${WORK_DIR}/moved/bin/zkhost import ${SAMPLE})
file(REMOVE_RECURSE ${WORK_DIR})
