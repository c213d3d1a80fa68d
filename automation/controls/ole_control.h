// What containers ask of a control, whatever the control is: life in place, size, drawing, settings, ambients, notices.
//
// A control lives without a site, without ambient properties and without a window; it is drawn all the same. It
// survives being deactivated twice, or closed inside its own event.
#pragma once

#include <functional>
#include <memory>

#include "automation/com/connection_point.h"
#include "automation/com/counted.h"
#include "automation/controls/accelerators.h"
#include "automation/server/class_table.h"
#include "controls/windows/window_host.h"

namespace tornby::automation {

class OleControl : public IOleObject,
                   public IOleControl,
                   public IOleInPlaceObject,
                   public IOleInPlaceActiveObject,
                   public IViewObject2,
                   public IPersistStreamInit,
                   public IPersistPropertyBag {
 public:
  OleControl(const OleControl&) = delete;
  OleControl& operator=(const OleControl&) = delete;

  // IOleObject
  HRESULT STDMETHODCALLTYPE SetClientSite(IOleClientSite* site) override;
  HRESULT STDMETHODCALLTYPE GetClientSite(IOleClientSite** site) override;
  HRESULT STDMETHODCALLTYPE SetHostNames(LPCOLESTR, LPCOLESTR) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Close(DWORD save) override;
  HRESULT STDMETHODCALLTYPE SetMoniker(DWORD, IMoniker*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker** moniker) override;
  HRESULT STDMETHODCALLTYPE InitFromData(IDataObject*, BOOL, DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetClipboardData(DWORD, IDataObject** data) override;
  HRESULT STDMETHODCALLTYPE DoVerb(LONG verb, LPMSG message, IOleClientSite* site, LONG index, HWND parent,
                                   LPCRECT place) override;
  HRESULT STDMETHODCALLTYPE EnumVerbs(IEnumOLEVERB** verbs) override;
  HRESULT STDMETHODCALLTYPE Update() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE IsUpToDate() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE GetUserClassID(CLSID* clsid) override { return GetClassID(clsid); }
  HRESULT STDMETHODCALLTYPE GetUserType(DWORD form, LPOLESTR* type) override;
  HRESULT STDMETHODCALLTYPE SetExtent(DWORD aspect, SIZEL* himetric) override;
  HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, SIZEL* himetric) override;
  HRESULT STDMETHODCALLTYPE Advise(IAdviseSink* sink, DWORD* connection) override;
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD connection) override;
  HRESULT STDMETHODCALLTYPE EnumAdvise(IEnumSTATDATA** advises) override;
  HRESULT STDMETHODCALLTYPE GetMiscStatus(DWORD aspect, DWORD* status) override;
  HRESULT STDMETHODCALLTYPE SetColorScheme(LOGPALETTE*) override { return E_NOTIMPL; }

  // IOleControl
  HRESULT STDMETHODCALLTYPE GetControlInfo(CONTROLINFO* info) override;
  HRESULT STDMETHODCALLTYPE OnMnemonic(MSG* message) override;
  HRESULT STDMETHODCALLTYPE OnAmbientPropertyChange(DISPID property) override;
  HRESULT STDMETHODCALLTYPE FreezeEvents(BOOL freeze) override;

  // IOleInPlaceObject and IOleInPlaceActiveObject
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

  // IViewObject2
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
    return GetExtent(aspect, himetric);
  }

  // IPersistStreamInit and IPersistPropertyBag
  HRESULT STDMETHODCALLTYPE GetClassID(CLSID* clsid) override;
  HRESULT STDMETHODCALLTYPE InitNew() override;
  HRESULT STDMETHODCALLTYPE IsDirty() override { return dirty_ ? S_OK : S_FALSE; }
  HRESULT STDMETHODCALLTYPE Load(LPSTREAM stream) override;
  HRESULT STDMETHODCALLTYPE Save(LPSTREAM stream, BOOL clear_dirty) override;
  HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Load(IPropertyBag* bag, IErrorLog* log) override;
  HRESULT STDMETHODCALLTYPE Save(IPropertyBag* bag, BOOL clear_dirty, BOOL save_all) override;

 protected:
  OleControl() = default;
  virtual ~OleControl();

  /// A container that stores nothing may begin with any call: the control has its start values then.
  void make_ready();

  /// To be called first: makes a control of class C.
  template <class C>
  void start(REFCLSID clsid) {
    clsid_ = &clsid;
    misc_status_ = find_class(clsid)->misc_status;
    link_ = std::make_shared<SiteLink>(*this);
    host_ = windows::WindowHost::create<C>(*link_);
    host_->keep_until_gone(link_);
    host_->place(initial_place());
  }

  windows::WindowHost& host() { return *host_; }
  bool events_frozen() const { return freezes_ > 0; }

  /// The object as a whole.
  virtual IUnknown* identity() = 0;
  /// The number of the property of that name.
  virtual DISPID property_id(StringView name) = 0;
  /// Those who want to know of changed properties.
  virtual ConnectionPoint& property_notices() = 0;

  /// The further interfaces that this class answers, or null.
  void* find_ole_interface(REFIID iid);

 private:
  /// The control's way to this object, which may go while the control still works.
  class SiteLink final : public windows::ControlSite {
   public:
    explicit SiteLink(OleControl& owner) : owner_(&owner) {}
    void cut() { owner_ = nullptr; }

    void property_changed(StringView name) override {
      if (owner_) owner_->property_changed(name);
    }
    Font ambient_font() const override { return owner_ ? owner_->ambient_font() : Font(); }
    String display_name() const override { return owner_ ? owner_->display_name() : String(); }
    bool takes_size_request(SIZE wanted) override { return owner_ && owner_->request_size(wanted); }
    /// There is nobody to tell: the container has already got what it could.
    void failed(std::exception_ptr) override {}
    void caption_changed() override {
      if (owner_) owner_->caption_changed();
    }
    void focus_changed(bool here) override {
      if (owner_) owner_->focus_changed(here);
    }
    LRESULT filter(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                   const std::function<LRESULT()>& handle) override {
      return owner_ ? owner_->filter(window, message, wparam, lparam, handle) : handle();
    }

   private:
    OleControl* owner_;
  };

  static RECT initial_place();
  Control& control() { return host_->control(); }
  template <class Read>
  HRESULT take_settings(Read read);
  bool ambient(DISPID property, VARIANT* value) const;
  Font ambient_font() const;
  String display_name() const;
  void property_changed(StringView name);
  bool request_size(SIZE wanted);
  void caption_changed();
  void focus_changed(bool here);
  LRESULT filter(HWND window, UINT message, WPARAM wparam, LPARAM lparam, const std::function<LRESULT()>& handle);
  bool has(DWORD status) const { return (misc_status_ & status) != 0; }
  void activate_in_place();
  void activate_interface();
  void view_changed();

  const CLSID* clsid_ = nullptr;
  DWORD misc_status_ = 0;
  std::shared_ptr<SiteLink> link_;
  std::shared_ptr<windows::WindowHost> host_;
  ComPtr<IOleClientSite> site_;
  ComPtr<IDispatch> ambients_;
  ComPtr<IOleControlSite> control_site_;
  ComPtr<ISimpleFrameSite> frame_site_;    // for a control that others are placed in
  ComPtr<IOleInPlaceSite> in_place_site_;  // while active in place
  ComPtr<IOleInPlaceFrame> frame_;
  ComPtr<IOleAdviseHolder> advises_;
  ComPtr<IAdviseSink> view_sink_;
  DWORD view_sink_aspects_ = 0;
  DWORD view_sink_flags_ = 0;
  Accelerators accelerators_;
  bool interface_active_ = false;
  enum class Settings { none, on_their_way, there };
  Settings settings_ = Settings::none;
  bool dirty_ = false;
  int freezes_ = 0;
};

}  // namespace tornby::automation
