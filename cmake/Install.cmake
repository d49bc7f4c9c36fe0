# Installed: the library with its SONAME, the public headers, and what find_package(DBService) and
# pkg-config need. dbservice/statement/ and the other internal headers stay out. The components are
# runtime and development; the tool, which is not made of the library's file, is in tools.
include(CMakePackageConfigHelpers)

install(TARGETS DBService EXPORT DBServiceTargets
  LIBRARY COMPONENT runtime NAMELINK_COMPONENT development)
install(EXPORT DBServiceTargets NAMESPACE DBService::
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/DBService COMPONENT development)

set(public_headers
  base/Export.h dbaccess/DataAccess.h dbaccess/Engine.h dbaccess/EscapeText.h dbaccess/LastError.h dbaccess/ResultSet.h
  dbaccess/Stats.h
  log/Log.h schema/Schema.h threadlib/ReadWriteMutex.h)
file(GLOB entity_headers RELATIVE ${PROJECT_SOURCE_DIR} CONFIGURE_DEPENDS
  dbservice/*.h dbservice/accounts/*.h dbservice/devices/*.h dbservice/recording/*.h
  dbservice/layouts/*.h dbservice/maps/*.h dbservice/events/*.h dbservice/convenience/*.h)
list(REMOVE_ITEM entity_headers
  dbservice/events/TimeRange.h dbservice/recording/ScheduleTable.h)
foreach(header IN LISTS public_headers entity_headers)
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/DBService/${folder}
    COMPONENT development)
endforeach()
install(FILES ${PROJECT_BINARY_DIR}/generated/base/Version.h
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/DBService/base COMPONENT development)

configure_package_config_file(cmake/DBServiceConfig.cmake.in
  ${PROJECT_BINARY_DIR}/DBServiceConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/DBService)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/DBServiceConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
# Relative, so that an installation may be moved.
file(RELATIVE_PATH prefix_from_pkgconfig /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(cmake/DBService.pc.in ${PROJECT_BINARY_DIR}/DBService.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/DBServiceConfig.cmake ${PROJECT_BINARY_DIR}/DBServiceConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/DBService COMPONENT development)
install(FILES ${PROJECT_BINARY_DIR}/DBService.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
