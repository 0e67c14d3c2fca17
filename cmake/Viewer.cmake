# The page that shows takes: esbuild bundles the sources in viewer/ with three.js into one C++ source. The
# packages are installed in the build tree, in the versions of viewer/package-lock.json.
find_program(ZKMOCAP_NODE node)
find_program(ZKMOCAP_NPM npm)
set(default OFF)
if(ZKMOCAP_NODE AND ZKMOCAP_NPM AND NOT CMAKE_CROSSCOMPILING AND NOT EMSCRIPTEN)
  set(default ON)
endif()
option(ZKMOCAP_BUILD_VIEWER "Build the page that shows takes; it needs Node.js, npm and its registry" ${default})

# zk_add_viewer(TARGET): adds the page to a library, or a source that says that it is missing.
function(zk_add_viewer target)
  if(NOT ZKMOCAP_BUILD_VIEWER)
    message(STATUS "No viewer: .html outputs and zkhost view will say that they are missing")
    target_sources(${target} PRIVATE no_page_template.cpp)
    return()
  endif()
  set(source ${PROJECT_SOURCE_DIR}/viewer)
  set(folder ${PROJECT_BINARY_DIR}/viewer)
  set(page ${folder}/page_template.cpp)
  file(MAKE_DIRECTORY ${folder})
  add_custom_command(OUTPUT ${folder}/node_modules/.package-lock.json
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${source}/package.json ${source}/package-lock.json ${folder}
    COMMAND ${ZKMOCAP_NPM} ci --omit=dev --ignore-scripts --no-audit --no-fund --loglevel=error
    DEPENDS ${source}/package.json ${source}/package-lock.json
    WORKING_DIRECTORY ${folder}
    COMMENT "Installing the packages of the viewer (-DZKMOCAP_BUILD_VIEWER=OFF leaves it out)"
    VERBATIM)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${source}/src/*)
  add_custom_command(OUTPUT ${page}
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${source}/build.mjs ${folder}
    COMMAND ${ZKMOCAP_NODE} ${folder}/build.mjs ${source}/src ${page}
    DEPENDS ${source}/build.mjs ${sources} ${folder}/node_modules/.package-lock.json
    COMMENT "Bundling the viewer"
    VERBATIM)
  target_sources(${target} PRIVATE ${page})
  set_source_files_properties(${page} PROPERTIES
    SKIP_UNITY_BUILD_INCLUSION ON
    # The standard promises only 65,536 characters of a text; these compilers take more.
    COMPILE_OPTIONS -Wno-overlength-strings)
endfunction()
