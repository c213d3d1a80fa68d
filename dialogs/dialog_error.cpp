#include "dialogs/dialog_error.h"

namespace tornby::dialogs {

StringView error_text(std::int32_t code) {
  switch (code) {
    case -1:  // the system's own code is 65535, which on purpose stays unknown
      return u"Dialog Failure";
    case 0:
      return u"General Codes Failure";
    case 1:
      return u"Structure Size Error";
    case 2:
      return u"Initialization Failure";
    case 3:
      return u"No Template";
    case 4:
      return u"No Instance Handle";
    case 5:
      return u"Load String Failure";
    case 6:
      return u"Find Resource Failure";
    case 7:
      return u"Load Resource Failure";
    case 8:
      return u"Lock Resource Failure";
    case 9:
      return u"Memory Allocation Failure";
    case 10:
      return u"Memory Lock Failure";
    case 11:
      return u"No Hook";
    case 12:
      return u"Register Message Failure";
    case 12288:
      return u"File Name Codes Error";
    case 12289:
      return u"Subclassing Failure";
    case 12290:
      return u"Invalid File Name";
    case 12291:
      return u"File Name/Title Buffer Too Small";
    default:
      return u"Unknown Error";
  }
}

}  // namespace tornby::dialogs
