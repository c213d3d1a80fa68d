// How a control is drawn by its container, and who is told that it looks different.
#pragma once

#include "automation/controls/control_core.h"

namespace tornby::automation {

class ControlView : public IViewObject2, public virtual ControlCore {
 public:
  HRESULT STDMETHODCALLTYPE Draw(DWORD aspect, LONG index, void* reserved, DVTARGETDEVICE* device, HDC device_context,
                                 HDC context, LPCRECTL area, LPCRECTL window, BOOL(CALLBACK* go_on)(ULONG_PTR),
                                 ULONG_PTR parameter) override;
  HRESULT STDMETHODCALLTYPE GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE**) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Freeze(DWORD, LONG, void*, DWORD*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Unfreeze(DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override;
  HRESULT STDMETHODCALLTYPE GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override;
  HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, LPSIZEL himetric) override {
    return extent(aspect, himetric);
  }

 protected:
  void tell_view();

 private:
  ComPtr<IAdviseSink> sink_;
  DWORD sink_aspects_ = 0;
  DWORD sink_flags_ = 0;
};

}  // namespace tornby::automation
