# The installed tree works from any folder: programs find their libraries relative to themselves.
include(CMakePackageConfigHelpers)

set(ZKMOCAP_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/zkmocaputils)
set(ZKMOCAP_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/zkmocaputils)
set(ZKMOCAP_DATADIR ${CMAKE_INSTALL_DATADIR}/zkmocaputils)

set(ZKMOCAP_LIBRARIES zelkhost zk_host)
if(TARGET zkmocap)
  list(APPEND ZKMOCAP_LIBRARIES zkmocap)
endif()
install(TARGETS ${ZKMOCAP_LIBRARIES}
  EXPORT zkmocaputilsTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  FILE_SET HEADERS DESTINATION ${ZKMOCAP_INCLUDEDIR})
install(TARGETS zkmocaputils LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
if(ZKMOCAP_BUILD_APP)
  install(TARGETS zkhost RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
install(FILES README.md LICENSE CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES examples/walk.bvh examples/walk.asf examples/walk.amc
  DESTINATION ${ZKMOCAP_DATADIR}/examples)

install(EXPORT zkmocaputilsTargets NAMESPACE zkmocap:: DESTINATION ${ZKMOCAP_CMAKEDIR})
configure_package_config_file(cmake/zkmocaputilsConfig.cmake.in
  ${PROJECT_BINARY_DIR}/zkmocaputilsConfig.cmake
  INSTALL_DESTINATION ${ZKMOCAP_CMAKEDIR}
  PATH_VARS CMAKE_INSTALL_LIBDIR)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zkmocaputilsConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)

# The pkg-config files, for builds without CMake. Their paths are relative to the files themselves.
set(ZKMOCAP_PC_FOLDER ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH ZKMOCAP_PC_PREFIX ${ZKMOCAP_PC_FOLDER} ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" ZKMOCAP_PC_PREFIX "${ZKMOCAP_PC_PREFIX}")
file(RELATIVE_PATH ZKMOCAP_PC_LIBDIR ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH ZKMOCAP_PC_INCLUDEDIR ${CMAKE_INSTALL_PREFIX}
  ${CMAKE_INSTALL_FULL_INCLUDEDIR}/zkmocaputils)
foreach(package zelkhost zkmocap)
  configure_file(cmake/${package}.pc.in ${PROJECT_BINARY_DIR}/${package}.pc @ONLY)
endforeach()
install(FILES ${PROJECT_BINARY_DIR}/zelkhost.pc ${PROJECT_BINARY_DIR}/zkmocap.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(FILES ${PROJECT_BINARY_DIR}/zkmocaputilsConfig.cmake
  ${PROJECT_BINARY_DIR}/zkmocaputilsConfigVersion.cmake
  DESTINATION ${ZKMOCAP_CMAKEDIR})
