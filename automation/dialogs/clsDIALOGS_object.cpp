#include "dialogs/clsDIALOGS.h"

#include "automation/com/dispatch_object.h"
#include "tornby_idl.h"

namespace tornby::automation {
namespace {

class DialogsObject final : public DispatchObject<IclsDIALOGS> {
 public:
  DialogsObject() : DispatchObject(L"Tornby.clsDIALOGS", CLSID_clsDIALOGS) {}

  STDMETHODIMP get_blnShowErrorMessages(VARIANT_BOOL* result) override {
    return answer(result, [&] { return dialogs_.blnShowErrorMessages(); });
  }
  STDMETHODIMP put_blnShowErrorMessages(VARIANT_BOOL value) override {
    return act([&] { dialogs_.blnShowErrorMessages(from_boolean(value)); });
  }
  STDMETHODIMP get_blnUsePersistence(VARIANT_BOOL* result) override {
    return answer(result, [&] { return dialogs_.blnUsePersistence(); });
  }
  STDMETHODIMP put_blnUsePersistence(VARIANT_BOOL value) override {
    return act([&] { dialogs_.blnUsePersistence(from_boolean(value)); });
  }
  STDMETHODIMP get_lngPaperHeight(LONG* result) override {
    return answer(result, [&] { return dialogs_.lngPaperHeight(); });
  }
  STDMETHODIMP get_lngPaperWidth(LONG* result) override {
    return answer(result, [&] { return dialogs_.lngPaperWidth(); });
  }
  STDMETHODIMP get_intBottomMargin(SHORT* result) override {
    return answer(result, [&] { return dialogs_.intBottomMargin(); });
  }
  STDMETHODIMP put_intBottomMargin(SHORT value) override {
    return act([&] { dialogs_.intBottomMargin(value); });
  }
  STDMETHODIMP get_intTopMargin(SHORT* result) override {
    return answer(result, [&] { return dialogs_.intTopMargin(); });
  }
  STDMETHODIMP put_intTopMargin(SHORT value) override {
    return act([&] { dialogs_.intTopMargin(value); });
  }
  STDMETHODIMP get_intRightMargin(SHORT* result) override {
    return answer(result, [&] { return dialogs_.intRightMargin(); });
  }
  STDMETHODIMP put_intRightMargin(SHORT value) override {
    return act([&] { dialogs_.intRightMargin(value); });
  }
  STDMETHODIMP get_intLeftMargin(SHORT* result) override {
    return answer(result, [&] { return dialogs_.intLeftMargin(); });
  }
  STDMETHODIMP put_intLeftMargin(SHORT value) override {
    return act([&] { dialogs_.intLeftMargin(value); });
  }
  STDMETHODIMP get_intMinMarginBottom(SHORT* result) override {
    return answer(result, [&] { return dialogs_.intMinMarginBottom(); });
  }
  STDMETHODIMP put_intMinMarginBottom(SHORT value) override {
    return act([&] { dialogs_.intMinMarginBottom(value); });
  }
  STDMETHODIMP get_intMinMarginTop(SHORT* result) override {
    return answer(result, [&] { return dialogs_.intMinMarginTop(); });
  }
  STDMETHODIMP put_intMinMarginTop(SHORT value) override {
    return act([&] { dialogs_.intMinMarginTop(value); });
  }
  STDMETHODIMP get_intMinMarginRight(SHORT* result) override {
    return answer(result, [&] { return dialogs_.intMinMarginRight(); });
  }
  STDMETHODIMP put_intMinMarginRight(SHORT value) override {
    return act([&] { dialogs_.intMinMarginRight(value); });
  }
  STDMETHODIMP get_intMinMarginLeft(SHORT* result) override {
    return answer(result, [&] { return dialogs_.intMinMarginLeft(); });
  }
  STDMETHODIMP put_intMinMarginLeft(SHORT value) override {
    return act([&] { dialogs_.intMinMarginLeft(value); });
  }
  STDMETHODIMP blnPageSetup(VARIANT_BOOL* result) override {
    return answer(result, [&] { return dialogs_.blnPageSetup(); });
  }
  STDMETHODIMP get_lngFontType(LONG* result) override {
    return answer(result, [&] { return dialogs_.lngFontType(); });
  }
  STDMETHODIMP get_strFontStyle(BSTR* result) override {
    return answer(result, [&] { return dialogs_.strFontStyle(); });
  }
  STDMETHODIMP get_lngFontColor(LONG* result) override {
    return answer(result, [&] { return dialogs_.lngFontColor(); });
  }
  STDMETHODIMP get_strFontFaceName(BSTR* result) override {
    return answer(result, [&] { return dialogs_.strFontFaceName(); });
  }
  STDMETHODIMP get_lngFontSize(LONG* result) override {
    return answer(result, [&] { return dialogs_.lngFontSize(); });
  }
  STDMETHODIMP blnChooseFont(VARIANT_BOOL* result) override {
    return answer(result, [&] { return dialogs_.blnChooseFont(); });
  }
  STDMETHODIMP get_lngNumFilesSelected(LONG* result) override {
    return answer(result, [&] { return dialogs_.lngNumFilesSelected(); });
  }
  STDMETHODIMP get_lngColor(LONG* result) override {
    return answer(result, [&] { return dialogs_.lngColor(); });
  }
  STDMETHODIMP put_lngColor(LONG value) override {
    return act([&] { dialogs_.lngColor(value); });
  }
  STDMETHODIMP get_blnCreatePrompt(VARIANT_BOOL* result) override {
    return answer(result, [&] { return dialogs_.blnCreatePrompt(); });
  }
  STDMETHODIMP put_blnCreatePrompt(VARIANT_BOOL value) override {
    return act([&] { dialogs_.blnCreatePrompt(from_boolean(value)); });
  }
  STDMETHODIMP strGetSaveFileName(BSTR not_used, BSTR* result) override {
    return answer(result, [&] { return dialogs_.strGetSaveFileName(view(not_used)); });
  }
  STDMETHODIMP put_lngHWnd(LONG value) override {
    return act([&] { dialogs_.lngHWnd(value); });
  }
  STDMETHODIMP get_lngMaxFileNameBuffer(LONG* result) override {
    return answer(result, [&] { return dialogs_.lngMaxFileNameBuffer(); });
  }
  STDMETHODIMP put_lngMaxFileNameBuffer(LONG value) override {
    return act([&] { dialogs_.lngMaxFileNameBuffer(value); });
  }
  STDMETHODIMP get_strTitle(BSTR* result) override {
    return answer(result, [&] { return dialogs_.strTitle(); });
  }
  STDMETHODIMP put_strTitle(BSTR value) override {
    return act([&] { dialogs_.strTitle(view(value)); });
  }
  STDMETHODIMP get_lngLastSaveFilter(LONG* result) override {
    return answer(result, [&] { return dialogs_.lngLastSaveFilter(); });
  }
  STDMETHODIMP get_lngLastOpenFilter(LONG* result) override {
    return answer(result, [&] { return dialogs_.lngLastOpenFilter(); });
  }
  STDMETHODIMP put_strDefaultExt(BSTR value) override {
    return act([&] { dialogs_.strDefaultExt(view(value)); });
  }
  STDMETHODIMP get_blnAllowMultipleFileSelect(VARIANT_BOOL* result) override {
    return answer(result, [&] { return dialogs_.blnAllowMultipleFileSelect(); });
  }
  STDMETHODIMP put_blnAllowMultipleFileSelect(VARIANT_BOOL value) override {
    return act([&] { dialogs_.blnAllowMultipleFileSelect(from_boolean(value)); });
  }
  STDMETHODIMP get_strLastSaveFile(BSTR* result) override {
    return answer(result, [&] { return dialogs_.strLastSaveFile(); });
  }
  STDMETHODIMP get_strLastOpenFile(BSTR* result) override {
    return answer(result, [&] { return dialogs_.strLastOpenFile(); });
  }
  STDMETHODIMP put_strFilter(BSTR value) override {
    return act([&] { dialogs_.strFilter(view(value)); });
  }
  STDMETHODIMP get_lngHWnd(LONG* result) override {
    return answer(result, [&] { return dialogs_.lngHWnd(); });
  }
  STDMETHODIMP strGetOpenFileName(BSTR not_used, BSTR* result) override {
    return answer(result, [&] { return dialogs_.strGetOpenFileName(view(not_used)); });
  }
  STDMETHODIMP flngShowAbout(LONG* result) override {
    return answer(result, [&] { return dialogs_.flngShowAbout(); });
  }
  STDMETHODIMP get_strLastSaveFolder(BSTR* result) override {
    return answer(result, [&] { return dialogs_.strLastSaveFolder(); });
  }
  STDMETHODIMP get_strLastOpenFolder(BSTR* result) override {
    return answer(result, [&] { return dialogs_.strLastOpenFolder(); });
  }
  STDMETHODIMP get_strDialogError(BSTR* result) override {
    return answer(result, [&] { return dialogs_.strDialogError(); });
  }
  STDMETHODIMP get_lngDialogError(LONG* result) override {
    return answer(result, [&] { return dialogs_.lngDialogError(); });
  }
  STDMETHODIMP fstrBrowseForFolder(LONG owner, BSTR* result) override {
    return answer(result, [&] { return dialogs_.fstrBrowseForFolder(owner); });
  }
  STDMETHODIMP get_blnIsFontBold(VARIANT_BOOL* result) override {
    return answer(result, [&] { return dialogs_.blnIsFontBold(); });
  }
  STDMETHODIMP get_blnIsFontItalic(VARIANT_BOOL* result) override {
    return answer(result, [&] { return dialogs_.blnIsFontItalic(); });
  }
  STDMETHODIMP blnPrintDialog(VARIANT_BOOL* result) override {
    return answer(result, [&] { return dialogs_.blnPrintDialog(); });
  }
  STDMETHODIMP get_strInitialDir(BSTR* result) override {
    return answer(result, [&] { return dialogs_.strInitialDir(); });
  }
  STDMETHODIMP put_strInitialDir(BSTR value) override {
    return act([&] { dialogs_.strInitialDir(view(value)); });
  }
  STDMETHODIMP fstrReturnSingleFileName(SHORT index, BSTR* result) override {
    return answer(result, [&] { return dialogs_.fstrReturnSingleFileName(index); });
  }

 private:
  clsDIALOGS dialogs_;
};

}  // namespace

HRESULT create_clsDIALOGS(REFIID iid, void** object) {
  return create_object<DialogsObject>(iid, object);
}

}  // namespace tornby::automation
