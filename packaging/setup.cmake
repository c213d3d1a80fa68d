# CPack's configuration of the installer. It packs both Windows builds. From the environment:
# TORNBY_VERSION, and the folders of the builds, TORNBY_X86 and TORNBY_X64.
set(CPACK_GENERATOR NSIS)
set(CPACK_PACKAGE_NAME tornby)
set(CPACK_PACKAGE_VENDOR "The Tornby authors")
set(CPACK_PACKAGE_DESCRIPTION "Tornby component library")
set(CPACK_PACKAGE_VERSION $ENV{TORNBY_VERSION})
set(CPACK_PACKAGE_FILE_NAME tornby-$ENV{TORNBY_VERSION}-setup)
set(CPACK_PACKAGE_INSTALL_DIRECTORY Tornby)
set(CPACK_TOPLEVEL_TAG setup)
set(CPACK_MODULE_PATH ${CMAKE_CURRENT_LIST_DIR})
set(CPACK_INSTALL_SCRIPT ${CMAKE_CURRENT_LIST_DIR}/setup_files.cmake)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/same_time.cmake)
