# Gives all files of a package one time, SOURCE_DATE_EPOCH, so that the same source makes the same package.
file(GLOB_RECURSE files LIST_DIRECTORIES true ${CPACK_TEMPORARY_DIRECTORY}/*)
foreach(file IN LISTS files)
  execute_process(COMMAND touch -h -d @$ENV{SOURCE_DATE_EPOCH} ${file} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
