// A control's picture as data, for documents that show it while it sleeps.
#pragma once

#include <vector>

#include "automation/controls/control_core.h"

namespace tornby::automation {

/// Offers a metafile of either kind. Both are drawn anew for each question, as large as the control.
class ControlData : public IDataObject, public virtual ControlCore {
 public:
  HRESULT STDMETHODCALLTYPE GetData(FORMATETC* format, STGMEDIUM* medium) override;
  HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) override { return DV_E_FORMATETC; }
  HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* format) override;
  HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC* format, FORMATETC* canonical) override;
  HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) override;
  HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink, DWORD* connection) override;
  HRESULT STDMETHODCALLTYPE DUnadvise(DWORD connection) override;
  HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA** advises) override;

  struct Connection {
    FORMATETC format;
    DWORD flags;
    ComPtr<IAdviseSink> sink;
    DWORD number;
  };

 protected:
  /// Those who asked hear of the new picture.
  void tell_data();

 private:
  void tell(const Connection& connection);

  std::vector<Connection> connections_;
  DWORD last_number_ = 0;
};

}  // namespace tornby::automation
