# The peers. Those that are not to be had for a system as packages come from the sources of Debian's packages, which
# tools/bench fetches into the folder TORNBY_PEERS.
enable_language(C)

# bench_peer(name INCLUDE folder... SOURCES source...)
function(bench_peer name)
  cmake_parse_arguments(PARSE_ARGV 1 peer "" "" "INCLUDE;SOURCES")
  add_library(${name} STATIC EXCLUDE_FROM_ALL ${peer_SOURCES})
  target_include_directories(${name} SYSTEM PUBLIC ${peer_INCLUDE})
  target_compile_options(${name} PRIVATE -w -O3)
endfunction()

# Base64 by Alfred Klomp, as Node.js carries it.
set(from ${TORNBY_PEERS}/base64)
set(instructions ssse3 sse41 sse42 avx avx2 avx512)
list(TRANSFORM instructions REPLACE "(.+)" "${from}/lib/arch/\\1/codec.c" OUTPUT_VARIABLE codecs)
bench_peer(peer_base64 INCLUDE ${from}/include
  SOURCES ${from}/lib/lib.c ${from}/lib/codec_choose.c ${from}/lib/tables/tables.c ${from}/lib/arch/generic/codec.c
    ${from}/lib/arch/neon32/codec.c ${from}/lib/arch/neon64/codec.c ${codecs})
target_include_directories(peer_base64 PRIVATE ${from}/lib)
target_compile_definitions(peer_base64 PUBLIC BASE64_STATIC_DEFINE
  PRIVATE HAVE_SSSE3=1 HAVE_SSE41=1 HAVE_SSE42=1 HAVE_AVX=1 HAVE_AVX2=1 HAVE_AVX512=1)
set_source_files_properties(${from}/lib/arch/ssse3/codec.c PROPERTIES COMPILE_OPTIONS -mssse3)
set_source_files_properties(${from}/lib/arch/sse41/codec.c PROPERTIES COMPILE_OPTIONS -msse4.1)
set_source_files_properties(${from}/lib/arch/sse42/codec.c PROPERTIES COMPILE_OPTIONS -msse4.2)
set_source_files_properties(${from}/lib/arch/avx/codec.c PROPERTIES COMPILE_OPTIONS -mavx)
set_source_files_properties(${from}/lib/arch/avx2/codec.c PROPERTIES COMPILE_OPTIONS -mavx2)
set_source_files_properties(${from}/lib/arch/avx512/codec.c PROPERTIES COMPILE_OPTIONS "-mavx512vl;-mavx512vbmi")

if(WIN32)
  # The cross toolchain has no packages of these. ISA-L is left out: it has vectors for 64-bit programs alone.
  set(BENCHMARK_ENABLE_TESTING OFF CACHE BOOL "" FORCE)
  set(BENCHMARK_ENABLE_INSTALL OFF CACHE BOOL "" FORCE)
  set(BENCHMARK_ENABLE_WERROR OFF CACHE BOOL "" FORCE)
  set(GIT_VERSION 1.7.1)  # the source package does not say
  add_subdirectory(${TORNBY_PEERS}/benchmark ${PROJECT_BINARY_DIR}/benchmark EXCLUDE_FROM_ALL SYSTEM)
  set(from ${TORNBY_PEERS}/libdeflate)
  bench_peer(peer_libdeflate INCLUDE ${from} SOURCES ${from}/lib/crc32.c ${from}/lib/x86/cpu_features.c)
  set(from ${TORNBY_PEERS}/pugixml/src)
  bench_peer(peer_pugixml INCLUDE ${from} SOURCES ${from}/pugixml.cpp)
  bench_peer(peer_zlib INCLUDE ${TORNBY_PEERS}/zlib SOURCES ${TORNBY_PEERS}/zlib/crc32.c)
else()
  find_package(benchmark REQUIRED)
  find_package(ZLIB REQUIRED)
  find_package(pugixml REQUIRED)
  find_library(libdeflate NAMES deflate REQUIRED)
  find_library(isal NAMES isal REQUIRED)
  find_package(OpenSSL)  # not installed by tools/setup: its versions must match those of what the machine already has
  add_library(peer_libdeflate INTERFACE)
  target_link_libraries(peer_libdeflate INTERFACE ${libdeflate})
  add_library(peer_pugixml INTERFACE)
  target_link_libraries(peer_pugixml INTERFACE pugixml::pugixml)
  add_library(peer_zlib INTERFACE)
  target_link_libraries(peer_zlib INTERFACE ZLIB::ZLIB)
endif()
