// The tests' main: a crash ends the program at once with a status that nobody takes for success.
#include <gtest/gtest.h>

#ifdef _WIN32
#include <windows.h>

#include <cstdio>

namespace {

LONG WINAPI end_on_crash(EXCEPTION_POINTERS* crash) {
  std::fprintf(stderr, "crash: exception %08lx at %p\n", crash->ExceptionRecord->ExceptionCode,
               crash->ExceptionRecord->ExceptionAddress);
  std::fflush(stderr);
  ::TerminateProcess(::GetCurrentProcess(), 101);
  return EXCEPTION_EXECUTE_HANDLER;
}

}  // namespace
#endif

int main(int argc, char** argv) {
#ifdef _WIN32
  ::SetUnhandledExceptionFilter(end_on_crash);
#endif
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
