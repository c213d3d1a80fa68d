# What is installed, in three components: development (headers, the static library, the CMake package, the pkg-config
# file; on Windows also what other compilers need of the DLL), runtime (the DLL, its manifest and its help page) and documentation.
include(CMakePackageConfigHelpers)
include(cmake/pkg_config.cmake)

set(data_dir ${CMAKE_INSTALL_DATAROOTDIR}/tornby)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/tornby)

install(TARGETS tornby EXPORT tornby ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
foreach(header IN LISTS public_headers)
  cmake_path(GET header PARENT_PATH folder)
  install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tornby/${folder} COMPONENT development)
endforeach()
install(EXPORT tornby NAMESPACE tornby:: DESTINATION ${package_dir} FILE tornbyConfig.cmake COMPONENT development)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/tornbyConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/tornbyConfigVersion.cmake DESTINATION ${package_dir} COMPONENT development)
write_pkg_config_file(tornby ${PROJECT_BINARY_DIR}/tornby.pc)
install(FILES ${PROJECT_BINARY_DIR}/tornby.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

if(TARGET tornby_server)
  install(TARGETS tornby_server RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
  install(FILES ${PROJECT_BINARY_DIR}/automation/Tornby.Components.manifest ${PROJECT_BINARY_DIR}/automation/tornby.html
    DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
  install(FILES ${PROJECT_BINARY_DIR}/automation/generated/tornby_idl.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tornby/automation COMPONENT development)
  install(FILES ${PROJECT_BINARY_DIR}/automation/generated/tornby.tlb DESTINATION ${data_dir} COMPONENT development)
  # The system's own files, of which automation/idl has short forms, come with the user's compiler.
  install(DIRECTORY automation/idl DESTINATION ${data_dir} COMPONENT development
    FILES_MATCHING PATTERN "*.idl" REGEX "/(oaidl|ocidl|stdole2)\\.idl$" EXCLUDE)
endif()

# Programs to copy from, without what tests them.
install(DIRECTORY samples DESTINATION ${data_dir} COMPONENT development
  FILES_MATCHING REGEX "\\.(c|cpp|h|vbs|js|pas)$" REGEX "/(answer|user)\\.cpp$" EXCLUDE PATTERN expected EXCLUDE)

if(TORNBY_SYMBOLS AND TARGET tornby_server)
  install(FILES ${PROJECT_BINARY_DIR}/automation/tornby.dll.debug DESTINATION symbols COMPONENT symbols)
endif()

if(WIN32)  # how to start, at the top of the archive
  include(cmake/start_text.cmake)
  install(FILES ${PROJECT_BINARY_DIR}/START.txt DESTINATION . COMPONENT documentation)
endif()

# The pages as a browser shows them, where tools/docs has made them; else their source.
set(TORNBY_HTML "" CACHE PATH "The folder of the documentation that tools/docs has made, to install it")
if(TORNBY_HTML)
  install(DIRECTORY ${TORNBY_HTML}/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/html COMPONENT documentation)
else()
  install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation PATTERN site EXCLUDE)
endif()
install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation)
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation OPTIONAL)
