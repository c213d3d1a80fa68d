#include "automation/controls/ole_control.h"

#include <cmath>

#include "automation/com/convert.h"
#include "automation/com/error_edge.h"
#include "automation/controls/ole_values.h"
#include "automation/controls/storage.h"
#include "controls/mnemonic.h"

namespace tornby::automation {
namespace {

constexpr const wchar_t* source = L"Tornby";
constexpr int himetric_per_inch = 2540;
constexpr SIZE initial_size = {121, 33};  // pixels, until a container says otherwise

LONG to_himetric(LONG pixels, int dots_per_inch) {
  return ::MulDiv(pixels, himetric_per_inch, dots_per_inch);
}

LONG to_pixels(LONG himetric, int dots_per_inch) {
  return ::MulDiv(himetric, dots_per_inch, himetric_per_inch);
}

template <class Action>
HRESULT run(Action&& action) {
  return guarded(IID_IOleObject, source, action);
}

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

/// A picture of the control, as large as the control, in memory.
class ControlImage {
 public:
  explicit ControlImage(windows::WindowHost& host)
      : size_(host.size()), context_(::CreateCompatibleDC(nullptr)), bitmap_(make_bitmap()) {
    if (!context_ || !bitmap_.get()) {
      ::DeleteDC(context_);
      throw std::bad_alloc();
    }
    before_ = ::SelectObject(context_, bitmap_.get());
    host.draw(context_, {0, 0, size_.cx, size_.cy});
    ::GdiFlush();
  }
  ~ControlImage() {
    ::SelectObject(context_, before_);
    ::DeleteDC(context_);
  }
  ControlImage(const ControlImage&) = delete;
  ControlImage& operator=(const ControlImage&) = delete;

  /// Works on any device context, one that records a metafile too: the mapping stays the container's.
  void show(HDC target, const RECTL& area) const {
    ::StretchDIBits(target, area.left, area.top, area.right - area.left, area.bottom - area.top, 0, 0, size_.cx,
                    size_.cy, bits_, &header_, DIB_RGB_COLORS, SRCCOPY);
  }

 private:
  HBITMAP make_bitmap() {
    header_.bmiHeader.biSize = sizeof header_.bmiHeader;
    header_.bmiHeader.biWidth = size_.cx;
    header_.bmiHeader.biHeight = size_.cy;
    header_.bmiHeader.biPlanes = 1;
    header_.bmiHeader.biBitCount = 32;
    header_.bmiHeader.biCompression = BI_RGB;
    return ::CreateDIBSection(context_, &header_, DIB_RGB_COLORS, &bits_, nullptr, 0);
  }

  SIZE size_;
  HDC context_;
  BITMAPINFO header_ = {};
  void* bits_ = nullptr;
  windows::GdiObject<HBITMAP> bitmap_;
  HGDIOBJ before_ = nullptr;
};

}  // namespace

OleControl::~OleControl() {
  if (!link_) return;
  link_->cut();
  host_->detach();
}

RECT OleControl::initial_place() {
  return {0, 0, initial_size.cx, initial_size.cy};
}

void* OleControl::find_ole_interface(REFIID iid) {
  if (iid == IID_IOleObject) return static_cast<IOleObject*>(this);
  if (iid == IID_IOleControl) return static_cast<IOleControl*>(this);
  if (iid == IID_IOleInPlaceObject || iid == IID_IOleWindow) return static_cast<IOleInPlaceObject*>(this);
  if (iid == IID_IOleInPlaceActiveObject) return static_cast<IOleInPlaceActiveObject*>(this);
  if (iid == IID_IViewObject || iid == IID_IViewObject2) return static_cast<IViewObject2*>(this);
  if (iid == IID_IPersist || iid == IID_IPersistStreamInit) return static_cast<IPersistStreamInit*>(this);
  if (iid == IID_IPersistPropertyBag) return static_cast<IPersistPropertyBag*>(this);
  return nullptr;
}

void OleControl::make_ready() {
  if (settings_ != Settings::none) return;
  settings_ = Settings::on_their_way;
  control().InitProperties();
  settings_ = Settings::there;
}

/// Takes settings from a container, in place of what there was.
template <class Read>
HRESULT OleControl::take_settings(Read read) {
  settings_ = Settings::on_their_way;
  const HRESULT result = run(read);
  settings_ = Settings::there;
  if (SUCCEEDED(result)) dirty_ = false;
  return result;
}

bool OleControl::ambient(DISPID property, VARIANT* value) const {
  DISPPARAMS none = {};
  return ambients_ && SUCCEEDED(ambients_->Invoke(property, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                                                  value, nullptr, nullptr));
}

Font OleControl::ambient_font() const {
  OwnedVariant value;
  if (!ambient(DISPID_AMBIENT_FONT, value.get()) || (value->vt != VT_DISPATCH && value->vt != VT_UNKNOWN) ||
      !value->punkVal)
    return Font();
  try {
    return describe_font(value->punkVal);
  } catch (const std::exception&) {
    return Font();  // what the container calls a font is none
  }
}

String OleControl::display_name() const {
  OwnedVariant value;
  if (!ambient(DISPID_AMBIENT_DISPLAYNAME, value.get()) || value->vt != VT_BSTR) return String();
  return String(view(value->bstrVal));
}

void OleControl::property_changed(StringView name) {
  if (settings_ != Settings::there) return;
  dirty_ = true;
  const DISPID id = property_id(name);
  property_notices().for_each<IPropertyNotifySink>([id](IPropertyNotifySink* sink) { sink->OnChanged(id); });
  view_changed();
}

void OleControl::view_changed() {
  if (!view_sink_ || (view_sink_aspects_ & DVASPECT_CONTENT) == 0) return;
  const ComPtr<IAdviseSink> sink = view_sink_;
  if ((view_sink_flags_ & ADVF_ONLYONCE) != 0) view_sink_ = ComPtr<IAdviseSink>();
  sink->OnViewChange(DVASPECT_CONTENT, -1);
}

/// In place, the container decides on the size; it answers through SetObjectRects.
bool OleControl::request_size(SIZE wanted) {
  if (!in_place_site_ || !host_->window()) return false;
  RECT place = {};
  ::GetWindowRect(host_->window(), &place);
  ::MapWindowPoints(nullptr, ::GetParent(host_->window()), reinterpret_cast<POINT*>(&place), 2);
  place.right = place.left + wanted.cx;
  place.bottom = place.top + wanted.cy;
  return in_place_site_->OnPosRectChange(&place) == S_OK;
}

void OleControl::caption_changed() {
  if (!host_) return;  // the control is being made
  const bool another = accelerators_.set(mnemonic(control().accessible_name()));
  if (another && control_site_) control_site_->OnControlInfoChanged();
}

/// The user, or the program, gave the control the keyboard without asking the container.
void OleControl::focus_changed(bool here) {
  const ComPtr<IUnknown> alive(identity());
  if (here) run([&] { activate_interface(); });
  if (control_site_) control_site_->OnFocus(here);
}

/// The container hears of each message first, and again afterwards: some of them concern the controls inside.
LRESULT OleControl::filter(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                           const std::function<LRESULT()>& handle) {
  if (!frame_site_) return handle();
  const ComPtr<IUnknown> alive(identity());
  const ComPtr<ISimpleFrameSite> site = frame_site_;
  LRESULT result = 0;
  DWORD cookie = 0;
  if (site->PreMessageFilter(window, message, wparam, lparam, &result, &cookie) == S_FALSE) return result;
  result = handle();
  site->PostMessageFilter(window, message, wparam, lparam, &result, cookie);
  return result;
}

HRESULT OleControl::SetClientSite(IOleClientSite* site) {
  return run([&] {
    if (!site) InPlaceDeactivate();
    site_ = ComPtr<IOleClientSite>(site);
    ambients_ = ComPtr<IDispatch>();
    control_site_ = ComPtr<IOleControlSite>();
    frame_site_ = ComPtr<ISimpleFrameSite>();
    if (!site) return;
    site->QueryInterface(IID_IDispatch, ambients_.out_void());
    site->QueryInterface(IID_IOleControlSite, control_site_.out_void());
    if (has(OLEMISC_SIMPLEFRAME)) site->QueryInterface(IID_ISimpleFrameSite, frame_site_.out_void());
  });
}

HRESULT OleControl::GetClientSite(IOleClientSite** site) {
  if (!site) return E_POINTER;
  *site = ComPtr<IOleClientSite>(site_).detach();
  return S_OK;
}

HRESULT OleControl::Close(DWORD save) {
  const ComPtr<IUnknown> alive(identity());
  if (save != OLECLOSE_NOSAVE && dirty_ && site_) site_->SaveObject();
  InPlaceDeactivate();
  if (advises_) advises_->SendOnClose();
  return S_OK;
}

HRESULT OleControl::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
  if (!moniker) return E_POINTER;
  *moniker = nullptr;
  return E_NOTIMPL;
}

HRESULT OleControl::GetClipboardData(DWORD, IDataObject** data) {
  if (!data) return E_POINTER;
  *data = nullptr;
  return E_NOTIMPL;
}

HRESULT OleControl::DoVerb(LONG verb, LPMSG, IOleClientSite*, LONG, HWND, LPCRECT) {
  const ComPtr<IUnknown> alive(identity());
  switch (verb) {
    case OLEIVERB_INPLACEACTIVATE:
    case OLEIVERB_SHOW:
      return run([&] { activate_in_place(); });
    case OLEIVERB_PRIMARY:
    case OLEIVERB_UIACTIVATE:
      return run([&] {
        activate_in_place();
        activate_interface();
      });
    case OLEIVERB_HIDE:
      return InPlaceDeactivate();
    case OLEIVERB_DISCARDUNDOSTATE:
      return S_OK;
    default:
      return verb > 0 ? OLEOBJ_S_INVALIDVERB : E_NOTIMPL;
  }
}

void OleControl::activate_in_place() {
  make_ready();
  if (in_place_site_) return;
  if (!site_) throw ComError(E_UNEXPECTED);
  ComPtr<IOleInPlaceSite> site;
  check(site_->QueryInterface(IID_IOleInPlaceSite, site.out_void()));
  if (site->CanInPlaceActivate() != S_OK) throw ComError(E_FAIL);
  HWND parent = nullptr;
  check(site->GetWindow(&parent));
  check(site->OnInPlaceActivate());
  in_place_site_ = site;
  try {
    ComPtr<IOleInPlaceUIWindow> document;
    OLEINPLACEFRAMEINFO frame_info = {};
    frame_info.cb = sizeof frame_info;
    RECT place = {};
    RECT visible = {};
    check(site->GetWindowContext(frame_.out(), document.out(), &place, &visible, &frame_info));
    host_->attach(parent, place);
    clip(host_->window(), place, visible);
  } catch (...) {
    InPlaceDeactivate();
    throw;
  }
  site_->ShowObject();
}

void OleControl::activate_interface() {
  if (interface_active_ || !in_place_site_ || has(OLEMISC_NOUIACTIVATE)) return;
  interface_active_ = true;
  if (const HRESULT result = in_place_site_->OnUIActivate(); FAILED(result)) {
    interface_active_ = false;
    throw ComError(result);
  }
  if (host_->window() && !host_->has_focus()) ::SetFocus(host_->window());
  if (!frame_) return;
  frame_->SetActiveObject(this, nullptr);
  frame_->SetBorderSpace(nullptr);
}

HRESULT OleControl::UIDeactivate() {
  if (!interface_active_) return S_OK;
  interface_active_ = false;
  const ComPtr<IUnknown> alive(identity());
  if (frame_) frame_->SetActiveObject(nullptr, nullptr);
  if (in_place_site_) in_place_site_->OnUIDeactivate(FALSE);
  return S_OK;
}

HRESULT OleControl::InPlaceDeactivate() {
  if (!in_place_site_) return S_OK;
  const ComPtr<IUnknown> alive(identity());
  UIDeactivate();
  const ComPtr<IOleInPlaceSite> site = std::move(in_place_site_);
  in_place_site_ = ComPtr<IOleInPlaceSite>();
  frame_ = ComPtr<IOleInPlaceFrame>();
  host_->detach();
  if (site) site->OnInPlaceDeactivate();
  return S_OK;
}

HRESULT OleControl::EnumVerbs(IEnumOLEVERB** verbs) {
  if (!verbs) return E_POINTER;
  *verbs = nullptr;
  return OLE_S_USEREG;
}

HRESULT OleControl::GetUserType(DWORD form, LPOLESTR* type) {
  if (!type) return E_POINTER;
  *type = nullptr;
  return ::OleRegGetUserType(*clsid_, form, type);
}

HRESULT OleControl::SetExtent(DWORD aspect, SIZEL* himetric) {
  if (!himetric) return E_POINTER;
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  if (himetric->cx < 0 || himetric->cy < 0) return E_INVALIDARG;
  return run([&] {
    make_ready();
    if (in_place_site_) return;  // the container follows up with SetObjectRects
    const int dots = host_->dots_per_inch();
    host_->place({0, 0, to_pixels(himetric->cx, dots), to_pixels(himetric->cy, dots)});
    view_changed();
  });
}

HRESULT OleControl::GetExtent(DWORD aspect, SIZEL* himetric) {
  if (!himetric) return E_POINTER;
  *himetric = {};
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  const int dots = host_->dots_per_inch();
  *himetric = {to_himetric(host_->size().cx, dots), to_himetric(host_->size().cy, dots)};
  return S_OK;
}

HRESULT OleControl::Advise(IAdviseSink* sink, DWORD* connection) {
  if (!connection) return E_POINTER;
  if (!advises_)
    if (const HRESULT result = ::CreateOleAdviseHolder(advises_.out()); FAILED(result)) return result;
  return advises_->Advise(sink, connection);
}

HRESULT OleControl::Unadvise(DWORD connection) {
  return advises_ ? advises_->Unadvise(connection) : OLE_E_NOCONNECTION;
}

HRESULT OleControl::EnumAdvise(IEnumSTATDATA** advises) {
  if (!advises) return E_POINTER;
  *advises = nullptr;
  return advises_ ? advises_->EnumAdvise(advises) : S_OK;
}

HRESULT OleControl::GetMiscStatus(DWORD aspect, DWORD* status) {
  if (!status) return E_POINTER;
  *status = aspect == DVASPECT_CONTENT ? misc_status_ : 0;
  return S_OK;
}

HRESULT OleControl::GetControlInfo(CONTROLINFO* info) {
  if (!info) return E_POINTER;
  if (info->cb < sizeof *info) return E_INVALIDARG;
  info->hAccel = accelerators_.table();
  info->cAccel = accelerators_.count();
  info->dwFlags = has(OLEMISC_NOUIACTIVATE) ? 0 : CTRLINFO_EATS_RETURN;
  return S_OK;
}

HRESULT OleControl::OnMnemonic(MSG*) {
  const ComPtr<IUnknown> alive(identity());
  return run([&] { control().activate(); });
}

HRESULT OleControl::OnAmbientPropertyChange(DISPID) {
  host_->redraw();
  view_changed();
  return S_OK;
}

HRESULT OleControl::FreezeEvents(BOOL freeze) {
  if (!freeze && freezes_ == 0) return E_UNEXPECTED;
  freezes_ += freeze ? 1 : -1;
  return S_OK;
}

HRESULT OleControl::GetWindow(HWND* window) {
  if (!window) return E_POINTER;
  *window = host_->window();
  return *window ? S_OK : E_FAIL;
}

HRESULT OleControl::SetObjectRects(LPCRECT place, LPCRECT visible) {
  if (!place) return E_POINTER;
  if (!in_place_site_) return E_UNEXPECTED;
  return run([&] {
    host_->place(*place);
    clip(host_->window(), *place, visible ? *visible : *place);
  });
}

HRESULT OleControl::TranslateAccelerator(LPMSG message) {
  if (!message) return E_POINTER;
  const ComPtr<IUnknown> alive(identity());
  if (host_->wants_key(*message)) {
    ::TranslateMessage(message);
    ::DispatchMessageW(message);
    return S_OK;
  }
  if (!control_site_) return S_FALSE;
  const auto keys = static_cast<DWORD>(windows::shift_state());  // as in KEYMODIFIERS
  return control_site_->TranslateAccelerator(message, keys) == S_OK ? S_OK : S_FALSE;
}

HRESULT OleControl::Draw(DWORD aspect, LONG, void*, DVTARGETDEVICE*, HDC, HDC context, LPCRECTL area, LPCRECTL,
                         BOOL(CALLBACK*)(ULONG_PTR), ULONG_PTR) {
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  if (!context || !area) return E_INVALIDARG;
  const SIZE size = host_->size();
  if (size.cx <= 0 || size.cy <= 0) return S_OK;
  return run([&] {
    make_ready();
    ControlImage(*host_).show(context, *area);
  });
}

HRESULT OleControl::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
  view_sink_ = ComPtr<IAdviseSink>(sink);
  view_sink_aspects_ = aspects;
  view_sink_flags_ = flags;
  if ((flags & ADVF_PRIMEFIRST) != 0) view_changed();
  return S_OK;
}

HRESULT OleControl::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) {
  if (aspects) *aspects = view_sink_aspects_;
  if (flags) *flags = view_sink_flags_;
  if (sink) *sink = ComPtr<IAdviseSink>(view_sink_).detach();
  return S_OK;
}

HRESULT OleControl::GetClassID(CLSID* clsid) {
  if (!clsid) return E_POINTER;
  *clsid = *clsid_;
  return S_OK;
}

HRESULT OleControl::InitNew() {
  return take_settings([&] { control().InitProperties(); });
}

HRESULT OleControl::Load(LPSTREAM stream) {
  if (!stream) return E_POINTER;
  return take_settings([&] { control().ReadProperties(StreamBag::load(stream)); });
}

HRESULT OleControl::Save(LPSTREAM stream, BOOL clear_dirty) {
  if (!stream) return E_POINTER;
  return run([&] {
    make_ready();
    StreamBag bag;
    control().WriteProperties(bag);
    bag.save(stream);
    if (clear_dirty) dirty_ = false;
  });
}

HRESULT OleControl::Load(IPropertyBag* bag, IErrorLog* log) {
  if (!bag) return E_POINTER;
  return take_settings([&] { control().ReadProperties(ContainerBag(bag, log)); });
}

HRESULT OleControl::Save(IPropertyBag* bag, BOOL clear_dirty, BOOL) {
  if (!bag) return E_POINTER;
  return run([&] {
    make_ready();
    ContainerBag container(bag, nullptr);
    control().WriteProperties(container);
    if (clear_dirty) dirty_ = false;
  });
}

}  // namespace tornby::automation
