// Where a container keeps a control's settings: a stream, or its property bag.
#pragma once

#include "automation/controls/control_core.h"

namespace tornby::automation {

class ControlSettings : public IPersistStreamInit, public IPersistPropertyBag, public virtual ControlCore {
 public:
  HRESULT STDMETHODCALLTYPE GetClassID(CLSID* clsid) override;
  HRESULT STDMETHODCALLTYPE InitNew() override;
  HRESULT STDMETHODCALLTYPE IsDirty() override { return dirty() ? S_OK : S_FALSE; }
  HRESULT STDMETHODCALLTYPE Load(LPSTREAM stream) override;
  HRESULT STDMETHODCALLTYPE Save(LPSTREAM stream, BOOL clear) override;
  HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Load(IPropertyBag* bag, IErrorLog* log) override;
  HRESULT STDMETHODCALLTYPE Save(IPropertyBag* bag, BOOL clear, BOOL save_all) override;
};

}  // namespace tornby::automation
