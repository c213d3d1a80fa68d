# How the project's targets are compiled: tornby_flags says it for the samples, which see what users see, and
# tornby_options for all others, which also see the internal headers. A target takes it with
# target_link_libraries(... PRIVATE tornby_options).
add_library(tornby_flags INTERFACE)
target_compile_features(tornby_flags INTERFACE cxx_std_20)
target_compile_options(tornby_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion
  -Woverloaded-virtual -Wno-psabi
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>  # GCC 12 warns of overlaps in its own strings
  $<$<BOOL:${TORNBY_WERROR}>:-Werror>)
if(NOT WIN32)  # COM interfaces have no destructors
  target_compile_options(tornby_flags INTERFACE -Wnon-virtual-dtor)
endif()
if(TORNBY_SANITIZE)
  target_compile_options(tornby_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
  target_link_options(tornby_flags INTERFACE -fsanitize=address,undefined)
  target_compile_definitions(tornby_flags INTERFACE _GLIBCXX_ASSERTIONS)
endif()
if(TORNBY_FUZZ)
  target_compile_options(tornby_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(WIN32 AND CMAKE_SIZEOF_VOID_P EQUAL 4)
  # Every processor of a supported Windows has SSE2; without it, text would go through these programs unit by unit.
  target_compile_options(tornby_flags INTERFACE -msse2)
endif()
if(WIN32)
  # The runtimes are linked in, so that the DLL and the programs need nothing but the system's own libraries.
  target_link_options(tornby_flags INTERFACE -static)
  target_compile_definitions(tornby_flags INTERFACE _WIN32_WINNT=0x0601 STRICT)
endif()

add_library(tornby_options INTERFACE)
target_link_libraries(tornby_options INTERFACE tornby_flags)
target_include_directories(tornby_options INTERFACE ${PROJECT_SOURCE_DIR})

set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
