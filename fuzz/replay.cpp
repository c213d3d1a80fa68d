// Every target over its corpus and kept crashes, and over inputs made up anew, always the same ones.
// Usage: fuzz_replay folder count    `folder` has one folder a target; `count` inputs are made up for each
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

#include "fuzz/target.h"

using namespace tornby;

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const struct {
    const char* name;
    void (*run)(fuzz::Input);
    int share;  // of `count`; some are slow
  } targets[] = {
      {"base64", fuzz::base64, 1},
      {"control_properties", fuzz::control_properties, 1},
      {"dialog_memory", fuzz::dialog_memory, 4},
      {"hex", fuzz::hex, 1},
      {"kernels", fuzz::kernels, 1},
      {"paths", fuzz::paths, 1},
      {"settings", fuzz::settings, 1},
      {"tag_finder", fuzz::tag_finder, 4},
  };
  for (const auto& [name, run, share] : targets) {
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(argv[1]) / name)) {
      std::ifstream file(entry.path(), std::ios::binary);
      const Bytes bytes(std::istreambuf_iterator<char>(file), {});
      std::fprintf(stderr, "%s: %s\n", name, entry.path().filename().string().c_str());
      run(fuzz::Input(bytes));
      ++files;
    }
    const int count = (std::getenv("TORNBY_THOROUGH") ? 10 : 1) * std::stoi(argv[2]) / share;
    for (int seed = 1; seed <= count; ++seed) {
      std::mt19937 random(static_cast<unsigned>(seed));
      Bytes bytes(random() % 400);
      for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
      run(fuzz::Input(bytes));
    }
    std::printf("%s: %d files, %d made up\n", name, files, count);
  }
  return 0;
}
