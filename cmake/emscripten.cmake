# Compiles for WebAssembly with Debian's emscripten.
include(/usr/share/emscripten/cmake/Modules/Platform/Emscripten.cmake)

# CMake's checks build static libraries, not programs, because the system's libraries that a program is
# linked to do not exist until emscripten has built them.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
