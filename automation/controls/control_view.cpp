#include "automation/controls/control_view.h"

namespace tornby::automation {

HRESULT ControlView::Draw(DWORD aspect, LONG, void*, DVTARGETDEVICE*, HDC, HDC context, LPCRECTL area, LPCRECTL,
                          BOOL(CALLBACK*)(ULONG_PTR), ULONG_PTR) {
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  if (!context || !area) return E_INVALIDARG;
  return run([&] {
    make_ready();
    host().draw(context, {area->left, area->top, area->right, area->bottom});
  });
}

HRESULT ControlView::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
  sink_ = ComPtr<IAdviseSink>(sink);
  sink_aspects_ = aspects;
  sink_flags_ = flags;
  if ((flags & ADVF_PRIMEFIRST) != 0) tell_view();
  return S_OK;
}

HRESULT ControlView::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) {
  if (aspects) *aspects = sink_aspects_;
  if (flags) *flags = sink_flags_;
  if (sink) *sink = ComPtr<IAdviseSink>(sink_).detach();
  return S_OK;
}

void ControlView::tell_view() {
  if (!sink_ || (sink_aspects_ & DVASPECT_CONTENT) == 0) return;
  const ComPtr<IAdviseSink> sink = sink_;
  if ((sink_flags_ & ADVF_ONLYONCE) != 0) sink_ = ComPtr<IAdviseSink>();
  sink->OnViewChange(DVASPECT_CONTENT, -1);
}

}  // namespace tornby::automation
