# libzkmocap, the library for programs: the rooms from text/ to bridge/ as one shared library, whose
# headers are those listed here. The rooms hide what is not marked ZKMOCAP_API.
set(rooms bridge take pairing export survey files text textio memory threads math)
list(TRANSFORM rooms REPLACE "(.+)" "$<TARGET_OBJECTS:zk_\\1>" OUTPUT_VARIABLE objects)

add_library(zkmocap SHARED ${objects})
add_library(zkmocap::zkmocap ALIAS zkmocap)
target_sources(zkmocap PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES
  bridge/array_scene.h bridge/check_source.h bridge/export_input.h bridge/import_progress.h
  export/csv_names.h export/file_skeleton.h export/formats.h export/json_record.h export/motion_facts.h export/options.h
  export/page.h export/pose_reader.h export/progress.h
  files/system_storage.h files/write_file.h
  pairing/capture_kind.h pairing/skeleton_pairing.h
  plugin/contract.h plugin/user_input.h
  survey/codes.h survey/finding.h survey/finding_text.h survey/outline.h survey/survey.h
  take/findings.h take/import.h take/listener.h take/outcome.h take/plugin_library.h take/rate_origin.h take/request.h take/thread_limit.h
  take/user_input_json.h
  text/api.h text/byte_sink.h text/storage.h)
find_package(fmt REQUIRED)
find_package(ZLIB REQUIRED)
find_package(Threads REQUIRED)
target_link_libraries(zkmocap
  PUBLIC zkmocap::zelkhost
  PRIVATE fmt::fmt ZLIB::ZLIB Threads::Threads ${CMAKE_DL_LIBS})
if(ZKMOCAP_STATIC_PLUGIN)
  target_link_libraries(zkmocap PRIVATE zkmocap::plugin_entry)
endif()
# The number follows the policy that CONTRIBUTING states.
set_target_properties(zkmocap PROPERTIES
  LINKER_LANGUAGE CXX
  VERSION ${PROJECT_VERSION}
  SOVERSION 0
  BUILD_RPATH_USE_ORIGIN ON
  INSTALL_RPATH "$ORIGIN")
zk_common(zkmocap)
# The rooms see to their headers.
set_target_properties(zkmocap PROPERTIES VERIFY_INTERFACE_HEADER_SETS OFF)
