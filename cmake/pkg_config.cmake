# write_pkg_config_file(target path): a .pc file that finds its folders from where it stands, and names the libraries
# that the target is linked with.
function(write_pkg_config_file target path)
  get_target_property(libraries ${target} INTERFACE_LINK_LIBRARIES)
  set(link)
  foreach(library IN LISTS libraries)
    string(REGEX REPLACE "^\\$<LINK_ONLY:([a-z0-9]+)>$" "\\1" library "${library}")
    if(library MATCHES "^[a-z0-9]+$")
      string(APPEND link " -l${library}")
    endif()
  endforeach()
  cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_INCLUDEDIR BASE_DIRECTORY ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig
    OUTPUT_VARIABLE include_dir)
  file(CONFIGURE OUTPUT ${path} @ONLY CONTENT "Name: @target@
Description: @PROJECT_DESCRIPTION@
Version: @PROJECT_VERSION@
Cflags: -I\${pcfiledir}/@include_dir@
Libs: -L\${pcfiledir}/.. -l@target@@link@
")
endfunction()
