// Every target over its corpus and kept crashes, and over inputs made up of these and anew, always the same ones.
// Usage: fuzz_replay folder count    `folder` has one folder a target; `count` inputs are made up for each
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "fuzz/target.h"

using namespace tornby;

namespace {

/// Bytes of any kind, or an input of the corpus with some of its bytes changed, left out or doubled.
Bytes made_up(std::mt19937& random, const std::vector<Bytes>& corpus) {
  const auto any_byte = [&] { return static_cast<std::uint8_t>(random()); };
  Bytes bytes;
  if (random() % 2 == 0) {
    bytes.resize(random() % 400);
    std::generate(bytes.begin(), bytes.end(), any_byte);
    return bytes;
  }
  bytes = corpus[random() % corpus.size()];
  for (unsigned changes = random() % 4 + 1; changes != 0 && !bytes.empty(); --changes) {
    const auto at = bytes.begin() + static_cast<std::ptrdiff_t>(random() % bytes.size());
    switch (random() % 4) {
      case 0:
        bytes.erase(at, at + static_cast<std::ptrdiff_t>(random() % 8) % (bytes.end() - at));
        break;
      case 1:
        bytes.insert(at, any_byte());
        break;
      default:
        *at = any_byte();
    }
  }
  return bytes;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const struct {
    const char* name;
    void (*run)(fuzz::Input);
    int share;  // of `count`; some are slow
  } targets[] = {
      {"base64", fuzz::base64, 1},
      {"control_properties", fuzz::control_properties, 1},
      {"control_streams", fuzz::control_streams, 1},
      {"dialog_memory", fuzz::dialog_memory, 4},
      {"hex", fuzz::hex, 1},
#ifndef _WIN32  // for want of zlib
      {"kernels", fuzz::kernels, 1},
#endif
      {"paths", fuzz::paths, 1},
      {"settings", fuzz::settings, 1},
      {"tag_finder", fuzz::tag_finder, 4},
  };
  for (const auto& [name, run, share] : targets) {
    std::vector<Bytes> corpus;
    std::set<std::filesystem::path> paths;  // in one order on every machine
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(argv[1]) / name))
      paths.insert(entry.path());
    for (const auto& path : paths) {
      std::ifstream file(path, std::ios::binary);
      const Bytes bytes(std::istreambuf_iterator<char>(file), {});
      std::fprintf(stderr, "%s: %s\n", name, path.filename().string().c_str());
      run(fuzz::Input(bytes));
      corpus.push_back(bytes);
    }
    const int count = (std::getenv("TORNBY_THOROUGH") ? 10 : 1) * std::stoi(argv[2]) / share;
    for (int seed = 1; seed <= count; ++seed) {
      std::mt19937 random(static_cast<unsigned>(seed));
      run(fuzz::Input(made_up(random, corpus)));
    }
    std::printf("%s: %zu files, %d made up\n", name, corpus.size(), count);
  }
  return 0;
}
