# The DLL's entries must run on a processor without SSE2, where they say that nothing else does.
# Variables: OBJDUMP, OBJECTS, DLL
cmake_minimum_required(VERSION 3.25)
list(FILTER OBJECTS INCLUDE REGEX "/entries\\.cpp\\.")
execute_process(COMMAND ${OBJDUMP} -d ${OBJECTS} OUTPUT_VARIABLE code COMMAND_ERROR_IS_FATAL ANY)
if(NOT code MATCHES "IsProcessorFeaturePresent|<_start_tornby@12>:" OR code MATCHES "%[xyz]mm")
  message(FATAL_ERROR "${OBJECTS} is not free of vector instructions")
endif()
# The entry point is the one that asks: it calls through the import table before anything else.
execute_process(COMMAND ${OBJDUMP} -p ${DLL} OUTPUT_VARIABLE header COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCH "AddressOfEntryPoint[ \t]+([0-9a-f]+)" unused "${header}")
set(entry ${CMAKE_MATCH_1})
string(REGEX MATCH "ImageBase[ \t]+([0-9a-f]+)" unused "${header}")
math(EXPR start "0x${entry} + 0x${CMAKE_MATCH_1}" OUTPUT_FORMAT HEXADECIMAL)
math(EXPR stop "${start} + 48" OUTPUT_FORMAT HEXADECIMAL)
execute_process(COMMAND ${OBJDUMP} -d --start-address=${start} --stop-address=${stop} ${DLL} OUTPUT_VARIABLE code
  COMMAND_ERROR_IS_FATAL ANY)
if(NOT code MATCHES "\\$0xa,\\(%esp\\)|push +\\$0xa")  # PF_XMMI64_INSTRUCTIONS_AVAILABLE
  message(FATAL_ERROR "the entry point does not ask for SSE2:\n${code}")
endif()
