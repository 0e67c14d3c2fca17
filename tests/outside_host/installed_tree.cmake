# What must be true of the tree that run.cmake installed and moved; a part of that script.

# What only the project's own tests may call is not installed.
foreach(header testing.h faults.h)
  file(GLOB_RECURSE found ${WORK_DIR}/moved/*/headless/${header})
  if(found)
    message(FATAL_ERROR "installed, but for the project's own tests alone: ${found}")
  endif()
endforeach()
