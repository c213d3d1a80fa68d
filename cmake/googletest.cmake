# GTest::gtest, from wherever it is: a package for this compiler, or the sources that Debian's package googletest
# installs. Under sanitizers it is always built with them.
set(TORNBY_GOOGLETEST_SOURCE /usr/src/googletest CACHE PATH "The sources of GoogleTest, where no package of it serves")
if(NOT TORNBY_SANITIZE)
  find_package(GTest CONFIG QUIET)
endif()
if(NOT TARGET GTest::gtest)
  if(NOT EXISTS ${TORNBY_GOOGLETEST_SOURCE}/CMakeLists.txt)
    message(FATAL_ERROR "The tests need GoogleTest, which is neither found as a CMake package nor as sources in "
      "${TORNBY_GOOGLETEST_SOURCE}. Install it (tools/setup test, or Debian's package googletest), name its sources with "
      "-DTORNBY_GOOGLETEST_SOURCE=FOLDER, or do without the tests: -DTORNBY_TESTS=OFF.")
  endif()
  set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
  set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
  add_subdirectory(${TORNBY_GOOGLETEST_SOURCE} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
endif()
