#include <cstdio>

bool library_works();

int main() {
  std::puts(library_works() ? "passed" : "FAILED");
  return library_works() ? 0 : 1;
}
