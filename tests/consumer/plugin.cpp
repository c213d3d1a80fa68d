// Every header that a program includes must be there, with all that it includes itself.
#include <tornby/checksums/clsApi.h>
#include <tornby/checksums/clsCRC.h>
#include <tornby/checksums/clsEncryptXOR.h>
#include <tornby/checksums/clsWebEncryption.h>
#include <tornby/controls/kelBrowseButton.h>
#include <tornby/controls/kelHyperLabel.h>
#include <tornby/controls/kelLabel.h>
#include <tornby/dialogs/clsDIALOGS.h>
#include <tornby/settings/PathClass.h>
#include <tornby/settings/ValueCollection.h>
#include <tornby/settings/XML_Settings.h>
#ifdef _WIN32
#include <tornby/controls/windows/window_host.h>
#endif

#include "base/variant.h"

#ifdef _WIN32
__declspec(dllexport)
#endif
    bool library_works() {
  tornby::clsCRC crc;
  const OwnVariant expected = -873187034;
  return crc.AddString(u"123456789") == tornby::Variant(expected);
}
