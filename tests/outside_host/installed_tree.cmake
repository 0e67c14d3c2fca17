# Checks the tree that run.cmake installed and moved. run.cmake includes this file.

# Headers for the project's own tests must not be installed.
foreach(header testing.h faults.h)
  file(GLOB_RECURSE found ${WORK_DIR}/moved/*/headless/${header})
  if(found)
    message(FATAL_ERROR "installed, but for the project's own tests alone: ${found}")
  endif()
endforeach()

# The SONAME is what programs look for at run time, and the plug-in and zkhost are linked to it.
file(GLOB_RECURSE library ${WORK_DIR}/moved/libzelkhost.so)
cmake_path(GET library PARENT_PATH library_folder)
run(readelf --dynamic ${library})
if(NOT output MATCHES "Library soname: \\[libzelkhost\\.so\\.0\\]")
  message(FATAL_ERROR "libzelkhost.so has another SONAME:\n${output}")
endif()
foreach(user ${library_folder}/libzkmocaputils.so ${WORK_DIR}/moved/bin/zkhost)
  run(readelf --dynamic ${user})
  if(NOT output MATCHES "Shared library: \\[libzelkhost\\.so\\.0\\]")
    message(FATAL_ERROR "${user} does not need libzelkhost.so.0:\n${output}")
  endif()
endforeach()

# Builds a program that includes every installed header of the host, with the flags of pkg-config.
file(GLOB_RECURSE headers RELATIVE ${WORK_DIR}/moved/include/zkmocaputils
  ${WORK_DIR}/moved/include/zkmocaputils/h*/*.h)
list(TRANSFORM headers REPLACE "(.+)" "#include \"\\1\"")
list(JOIN headers "\n" includes)
file(WRITE ${WORK_DIR}/all_headers.cpp "${includes}
int main() { return headless::Session::Current().GetScene().Objects().empty() ? 0 : 1; }
")
set(pkg_config ${CMAKE_COMMAND} -E env PKG_CONFIG_PATH=${library_folder}/pkgconfig
  pkg-config)
run(${pkg_config} --cflags --libs zelkhost)
separate_arguments(package UNIX_COMMAND "${output}")
separate_arguments(flags UNIX_COMMAND "${FLAGS}")
run(c++ -std=c++20 ${flags} ${WORK_DIR}/all_headers.cpp -o ${WORK_DIR}/all_headers ${package}
  -Wl,-rpath,${library_folder})
run(${WORK_DIR}/all_headers)
run(${pkg_config} --variable=plugin zelkhost)
string(STRIP "${output}" plugin)
if(NOT EXISTS ${plugin})
  message(FATAL_ERROR "pkg-config tells of a plug-in that is not there: ${plugin}")
endif()
