# Headers, the static library and a package for find_package(tornby); on Windows the DLL and its manifest too.
include(CMakePackageConfigHelpers)

install(TARGETS tornby EXPORT tornby ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY base platform ${tornby_folders} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tornby
  FILES_MATCHING PATTERN "*.h" PATTERN "windows" EXCLUDE PATTERN "posix" EXCLUDE)
if(WIN32)
  install(DIRECTORY controls/windows DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tornby/controls FILES_MATCHING PATTERN "*.h")
  install(FILES platform/windows/system.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tornby/platform/windows)
endif()
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/tornby)
install(EXPORT tornby NAMESPACE tornby:: DESTINATION ${package_dir} FILE tornbyConfig.cmake)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/tornbyConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/tornbyConfigVersion.cmake DESTINATION ${package_dir})
if(WIN32)
  install(TARGETS tornby_server RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES ${PROJECT_BINARY_DIR}/automation/Tornby.Components.manifest DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
