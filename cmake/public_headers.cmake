# The headers that users include, all of them as <tornby/FOLDER/NAME.h>: in the build through small headers in
# include/tornby of the build folder, which lead here, and installed as copies. Nothing else of ours can be found there.
set(public_headers
  base/ansi_code_page.h
  base/event.h
  base/hashing.h
  base/key_index.h
  base/letter_case.h
  base/ordered_collection.h
  base/runtime_error.h
  base/text.h
  base/variant.h
  checksums/clsApi.h
  checksums/clsCRC.h
  checksums/clsEncryptXOR.h
  checksums/clsWebEncryption.h
  controls/control.h
  controls/host.h
  controls/kelBrowseButton.h
  controls/kelHyperLabel.h
  controls/kelLabel.h
  controls/property_bag.h
  controls/values.h
  dialogs/clsDIALOGS.h
  platform/code_page.h
  platform/dialogs.h
  platform/files.h
  platform/folders.h
  platform/message_box.h
  platform/module.h
  platform/pointer.h
  platform/process.h
  platform/profile.h
  platform/registry.h
  platform/text.h
  platform/window_handle.h
  settings/PathClass.h
  settings/ValueCollection.h
  settings/XML_Settings.h)
if(WIN32)
  list(APPEND public_headers
    controls/windows/drawings.h
    controls/windows/gdi.h
    controls/windows/window_host.h
    platform/windows/system.h)
endif()

set(public_include_dir ${PROJECT_BINARY_DIR}/include)
file(GLOB_RECURSE earlier_headers RELATIVE ${public_include_dir}/tornby ${public_include_dir}/tornby/*)
list(REMOVE_ITEM earlier_headers ${public_headers})
list(TRANSFORM earlier_headers PREPEND ${public_include_dir}/tornby/)
if(earlier_headers)
  file(REMOVE ${earlier_headers})
endif()
foreach(header IN LISTS public_headers)
  file(CONFIGURE OUTPUT ${public_include_dir}/tornby/${header} CONTENT "#include \"${PROJECT_SOURCE_DIR}/${header}\"\n"
    @ONLY)
endforeach()
target_include_directories(tornby PUBLIC $<BUILD_INTERFACE:${public_include_dir}>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
