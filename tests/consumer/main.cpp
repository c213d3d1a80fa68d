#include <checksums/clsCRC.h>

#include <cstdio>

int main() {
  tornby::clsCRC crc;
  const bool right = crc.AddString(u"123456789") == tornby::Variant(-873187034);
  std::puts(right ? "passed" : "FAILED");
  return right ? 0 : 1;
}
