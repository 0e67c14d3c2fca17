# Compiles without making anything: the compiler only says whether it accepts the sources. What would be
# an object or a library is an empty file, so that a second build repeats only what has changed.
set(CMAKE_CXX_COMPILE_OBJECT
  "<CMAKE_CXX_COMPILER> <DEFINES> <INCLUDES> <FLAGS> -fsyntax-only <SOURCE>"
  "${CMAKE_COMMAND} -E touch <OBJECT>")
set(CMAKE_CXX_ARCHIVE_CREATE "${CMAKE_COMMAND} -E touch <TARGET>")
set(CMAKE_CXX_ARCHIVE_APPEND "")
set(CMAKE_CXX_ARCHIVE_FINISH "")
set(CMAKE_CXX_CREATE_SHARED_LIBRARY "${CMAKE_COMMAND} -E touch <TARGET>")
set(CMAKE_CXX_CREATE_SHARED_MODULE "${CMAKE_COMMAND} -E touch <TARGET>")
