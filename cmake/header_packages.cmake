# Packages that consist of headers only, for a compiler that must not search /usr/include, because the
# other headers there are those of another machine. It searches a folder of links to these packages.
set(zk_headers ${PROJECT_BINARY_DIR}/headers)
file(MAKE_DIRECTORY ${zk_headers})

# zk_header_package(PACKAGE TARGET HEADERS ...): makes find_package(PACKAGE) define TARGET, if its
# headers are installed.
function(zk_header_package package target)
  foreach(header IN LISTS ARGN)
    if(NOT EXISTS /usr/include/${header})
      return()
    endif()
    file(CREATE_LINK /usr/include/${header} ${zk_headers}/${header} SYMBOLIC)
  endforeach()
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} INTERFACE ${zk_headers})
  string(TOLOWER ${package} name)
  file(WRITE ${CMAKE_FIND_PACKAGE_REDIRECTS_DIR}/${name}-config.cmake "set(${package}_FOUND TRUE)\n")
endfunction()

zk_header_package(FastFloat FastFloat::fast_float fast_float)
zk_header_package(nlohmann_json nlohmann_json::nlohmann_json nlohmann)
zk_header_package(ZLIB ZLIB::ZLIB zlib.h zconf.h)
zk_header_package(fmt fmt::fmt-header-only fmt)
if(TARGET fmt::fmt-header-only)
  target_compile_definitions(fmt::fmt-header-only INTERFACE FMT_HEADER_ONLY)
  add_library(fmt::fmt ALIAS fmt::fmt-header-only)
endif()
