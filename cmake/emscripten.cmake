# Objects of WebAssembly, by Debian's emscripten.
include(/usr/share/emscripten/cmake/Modules/Platform/Emscripten.cmake)

# A program would need the system's libraries, which emscripten has yet to build. Objects need none.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
