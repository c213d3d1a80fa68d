# Configures a project that consists of a page's lines and a small program, and builds it where BUILT is not -1. The library is installed where it
# looks for packages, and its sources stand in its folder "tornby".
# Variables: SNIPPET, BUILD, SOURCE, WORK, GENERATOR, BUILT
file(REMOVE_RECURSE ${WORK})
file(READ ${SNIPPET} snippet)
file(WRITE ${WORK}/CMakeLists.txt "cmake_minimum_required(VERSION 3.25)\nproject(page LANGUAGES CXX)\n"
  "add_executable(program main.cpp)\n${snippet}")
file(WRITE ${WORK}/main.cpp "#include <tornby/checksums/clsCRC.h>\n"
  "int main() { return std::get<int>(tornby::clsCRC().AddString(u\"123456789\")) == -873187034 ? 0 : 1; }\n")
file(CREATE_LINK ${SOURCE} ${WORK}/tornby SYMBOLIC)
function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${ARGN} failed:\n${output}")
  endif()
endfunction()
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/installed)
run(${CMAKE_COMMAND} -S ${WORK} -B ${WORK}/build -G ${GENERATOR} -DCMAKE_PREFIX_PATH=${WORK}/installed)
if(NOT BUILT EQUAL -1)
  run(${CMAKE_COMMAND} --build ${WORK}/build --target program)
  run(${WORK}/build/program)
endif()
