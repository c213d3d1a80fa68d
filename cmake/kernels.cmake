# tornby_kernels(variant "flags" source...): the sources once more, compiled for the instructions that the flags name.
# What a source defines it puts into a namespace called TORNBY_KERNEL, which is the variant's name. The whole file has
# the instructions, so that the compiler also aligns the stack for them; base/kernel.h says who may call it.
function(tornby_kernels variant flags)
  get_filename_component(folder ${CMAKE_CURRENT_SOURCE_DIR} NAME)
  set(name tornby_${folder}_${variant})
  add_library(${name} OBJECT ${ARGN})
  set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)
  separate_arguments(flags)
  # Loops stand at the same place of a cache line whatever is linked before them: it made a sixth of their time.
  target_compile_options(${name} PRIVATE ${flags} -falign-functions=64 -falign-loops=32)
  target_compile_definitions(${name} PRIVATE TORNBY_KERNEL=${variant})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR}/include)
  target_link_libraries(${name} PRIVATE tornby_options)
  target_sources(tornby PRIVATE $<TARGET_OBJECTS:${name}>)
endfunction()

# Flags for 512 bits, of whose header GCC 12 itself warns.
set(avx512 "-mavx512f -mavx512bw -mavx512vl")
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  string(APPEND avx512 " -Wno-uninitialized -Wno-maybe-uninitialized")
endif()

if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|i.86|x86)$")
  set(TORNBY_X86 TRUE)
  target_compile_definitions(tornby PRIVATE TORNBY_X86_KERNELS)
endif()
