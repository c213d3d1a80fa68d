// Every header that a program includes must be there, with all that it includes itself.
#include <checksums/clsApi.h>
#include <checksums/clsCRC.h>
#include <checksums/clsEncryptXOR.h>
#include <checksums/clsWebEncryption.h>
#include <controls/kelBrowseButton.h>
#include <controls/kelHyperLabel.h>
#include <controls/kelLabel.h>
#include <dialogs/clsDIALOGS.h>
#include <settings/PathClass.h>
#include <settings/ValueCollection.h>
#include <settings/XML_Settings.h>
#ifdef _WIN32
#include <controls/windows/window_host.h>
#endif

#include <cstdio>

int main() {
  tornby::clsCRC crc;
  const bool right = crc.AddString(u"123456789") == tornby::Variant(-873187034);
  std::puts(right ? "passed" : "FAILED");
  return right ? 0 : 1;
}
