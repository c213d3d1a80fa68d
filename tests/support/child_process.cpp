#include "support/child_process.h"

#include <stdexcept>

#ifdef _WIN32
#include <windows.h>
#else
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace tornby::testing {

#ifdef _WIN32

std::filesystem::path program_beside(const std::string& name) {
  wchar_t own[MAX_PATH] = {};
  ::GetModuleFileNameW(nullptr, own, MAX_PATH);
  return std::filesystem::path(own).replace_filename(name + ".exe");
}

ChildProcess::ChildProcess(const std::filesystem::path& program, const std::vector<std::string>& arguments) {
  std::string line = program.string();
  for (const auto& argument : arguments) line += " " + argument;
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION started{};
  if (!::CreateProcessA(program.string().c_str(), line.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS, nullptr,
                        nullptr, &startup, &started))
    throw std::runtime_error("cannot start " + line);
  ::CloseHandle(started.hThread);
  process_ = started.hProcess;
}

void ChildProcess::kill() {
  if (!process_) return;
  ::TerminateProcess(process_, 9);
  ::WaitForSingleObject(process_, INFINITE);
  ::CloseHandle(process_);
  process_ = nullptr;
}

#else

std::filesystem::path program_beside(const std::string& name) {
  return std::filesystem::read_symlink("/proc/self/exe").replace_filename(name);
}

ChildProcess::ChildProcess(const std::filesystem::path& program, const std::vector<std::string>& arguments) {
  std::string name = program.string();
  std::vector<std::string> copies = arguments;
  std::vector<char*> pointers = {name.data()};
  for (auto& copy : copies) pointers.push_back(copy.data());
  pointers.push_back(nullptr);
  pid_t pid = 0;
  if (::posix_spawn(&pid, name.c_str(), nullptr, nullptr, pointers.data(), environ) != 0)
    throw std::runtime_error("cannot start " + name);
  process_ = reinterpret_cast<void*>(static_cast<std::intptr_t>(pid));
}

void ChildProcess::kill() {
  if (!process_) return;
  const auto pid = static_cast<pid_t>(reinterpret_cast<std::intptr_t>(process_));
  ::kill(pid, SIGKILL);
  ::waitpid(pid, nullptr, 0);
  process_ = nullptr;
}

#endif

}  // namespace tornby::testing
