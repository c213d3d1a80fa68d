#include "automation/controls/control_in_place.h"

#include "controls/windows/input.h"

namespace tornby::automation {
namespace {

/// Shows only what of `place` lies in `visible`. Some containers have nothing to say and give an empty rectangle.
void clip(HWND window, const RECT& place, const RECT& visible) {
  RECT shown = {};
  ::IntersectRect(&shown, &place, &visible);
  HRGN region = nullptr;
  if (!::IsRectEmpty(&visible) && !::EqualRect(&shown, &place)) {
    ::OffsetRect(&shown, -place.left, -place.top);
    region = ::CreateRectRgnIndirect(&shown);
  }
  ::SetWindowRgn(window, region, TRUE);  // the window owns the region from here on
}

}  // namespace

/// In place, the container decides on the size; it answers through SetObjectRects.
bool ControlInPlace::request_size(SIZE wanted) {
  if (!in_place_site_ || !host().window()) return false;
  RECT place = {};
  ::GetWindowRect(host().window(), &place);
  ::MapWindowPoints(nullptr, ::GetParent(host().window()), reinterpret_cast<POINT*>(&place), 2);
  place.right = place.left + wanted.cx;
  place.bottom = place.top + wanted.cy;
  return in_place_site_->OnPosRectChange(&place) == S_OK;
}

/// The user, or the program, gave the control the keyboard without asking the container.
void ControlInPlace::focus_changed(bool here) {
  const ComPtr<IUnknown> alive(identity());
  if (here) run([&] { activate_interface(); });
  if (control_site()) control_site()->OnFocus(here);
}

/// The container hears of each message first, and again afterwards: some of them concern the controls inside.
LRESULT ControlInPlace::filter(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                               const std::function<LRESULT()>& handle) {
  const Change change(*this);
  if (!frame_site()) return handle();
  const ComPtr<ISimpleFrameSite> site = frame_site();
  LRESULT result = 0;
  DWORD cookie = 0;
  if (site->PreMessageFilter(window, message, wparam, lparam, &result, &cookie) == S_FALSE) return result;
  result = handle();
  site->PostMessageFilter(window, message, wparam, lparam, &result, cookie);
  return result;
}

void ControlInPlace::activate_in_place() {
  make_ready();
  if (in_place_site_) return;
  if (!site()) throw ComError(E_UNEXPECTED);
  const ComPtr<IOleClientSite> client = site();
  ComPtr<IOleInPlaceSite> place_site;
  check(client->QueryInterface(IID_IOleInPlaceSite, place_site.out_void()));
  if (place_site->CanInPlaceActivate() != S_OK) throw ComError(E_FAIL);
  HWND parent = nullptr;
  check(place_site->GetWindow(&parent));
  check(place_site->OnInPlaceActivate());
  in_place_site_ = place_site;
  try {
    ComPtr<IOleInPlaceUIWindow> document;
    OLEINPLACEFRAMEINFO frame_info = {};
    frame_info.cb = sizeof frame_info;
    RECT place = {};
    RECT visible = {};
    check(place_site->GetWindowContext(frame_.out(), document.out(), &place, &visible, &frame_info));
    host().attach(parent, place);
    clip(host().window(), place, visible);
  } catch (...) {
    InPlaceDeactivate();
    throw;
  }
  client->ShowObject();
}

void ControlInPlace::activate_interface() {
  if (interface_active_ || !in_place_site_ || has(OLEMISC_NOUIACTIVATE)) return;
  interface_active_ = true;
  if (const HRESULT result = in_place_site_->OnUIActivate(); FAILED(result)) {
    interface_active_ = false;
    throw ComError(result);
  }
  if (host().window() && !host().has_focus()) ::SetFocus(host().window());
  if (!frame_) return;
  frame_->SetActiveObject(this, nullptr);
  frame_->SetBorderSpace(nullptr);
}

HRESULT ControlInPlace::UIDeactivate() {
  if (!interface_active_) return S_OK;
  interface_active_ = false;
  const ComPtr<IUnknown> alive(identity());
  if (frame_) frame_->SetActiveObject(nullptr, nullptr);
  if (in_place_site_) in_place_site_->OnUIDeactivate(FALSE);
  return S_OK;
}

HRESULT ControlInPlace::InPlaceDeactivate() {
  if (!in_place_site_) return S_OK;
  const ComPtr<IUnknown> alive(identity());
  UIDeactivate();
  const ComPtr<IOleInPlaceSite> site = std::move(in_place_site_);
  in_place_site_ = ComPtr<IOleInPlaceSite>();
  frame_ = ComPtr<IOleInPlaceFrame>();
  host().detach();
  if (site) site->OnInPlaceDeactivate();
  return S_OK;
}

HRESULT ControlInPlace::GetWindow(HWND* window) {
  if (!window) return E_POINTER;
  *window = host().window();
  return *window ? S_OK : E_FAIL;
}

HRESULT ControlInPlace::SetObjectRects(LPCRECT place, LPCRECT visible) {
  if (!place) return E_POINTER;
  if (!in_place_site_) return E_UNEXPECTED;
  return run([&] {
    host().place(*place);
    clip(host().window(), *place, visible ? *visible : *place);
  });
}

HRESULT ControlInPlace::TranslateAccelerator(LPMSG message) {
  if (!message) return E_POINTER;
  const ComPtr<IUnknown> alive(identity());
  if (host().wants_key(*message)) {
    ::TranslateMessage(message);
    ::DispatchMessageW(message);
    return S_OK;
  }
  if (!control_site()) return S_FALSE;
  const auto keys = static_cast<DWORD>(windows::shift_state());  // as in KEYMODIFIERS
  return control_site()->TranslateAccelerator(message, keys) == S_OK ? S_OK : S_FALSE;
}

}  // namespace tornby::automation
