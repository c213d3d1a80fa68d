// A control's life in place: its window in the container, and the keyboard.
#pragma once

#include "automation/controls/control_core.h"

namespace tornby::automation {

class ControlInPlace : public IOleInPlaceObject, public IOleInPlaceActiveObject, public virtual ControlCore {
 public:
  HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
  HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE InPlaceDeactivate() override;
  HRESULT STDMETHODCALLTYPE UIDeactivate() override;
  HRESULT STDMETHODCALLTYPE SetObjectRects(LPCRECT place, LPCRECT visible) override;
  HRESULT STDMETHODCALLTYPE ReactivateAndUndo() override { return INPLACE_E_NOTUNDOABLE; }
  HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG message) override;
  HRESULT STDMETHODCALLTYPE OnFrameWindowActivate(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnDocWindowActivate(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE EnableModeless(BOOL) override { return S_OK; }

 protected:
  /// Gives the control its window. Throws when the container refuses.
  void activate_in_place();
  /// Makes the control the one that the user works in.
  void activate_interface();

  bool request_size(SIZE wanted) override;
  void focus_changed(bool here) override;
  LRESULT filter(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                 const std::function<LRESULT()>& handle) override;

 private:
  ComPtr<IOleInPlaceSite> in_place_site_;  // while active in place
  ComPtr<IOleInPlaceFrame> frame_;
  bool interface_active_ = false;
};

}  // namespace tornby::automation
