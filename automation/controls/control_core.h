// What the families of a control's interfaces share: the control in its window host, the container's site, and the
// notices that go out.
//
// A control lives without a site, without ambient properties and without a window; it is drawn all the same. It
// survives being deactivated twice, or closed inside its own event.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "automation/com/connection_point.h"
#include "automation/com/error_edge.h"
#include "automation/controls/ambient_properties.h"
#include "automation/server/class_table.h"
#include "controls/windows/window_host.h"

namespace tornby::automation {

/// OLE measures in hundredths of a millimetre.
constexpr int himetric_per_inch = 2540;

class ControlCore {
 public:
  ControlCore(const ControlCore&) = delete;
  ControlCore& operator=(const ControlCore&) = delete;

  /// One change of the control, whatever it touches: who watches its picture hears of it once, when it is complete.
  class Change {
   public:
    explicit Change(ControlCore& core) : core_(core), alive_(core.identity()) { ++core_.changes_; }
    ~Change() {
      if (--core_.changes_ == 0 && std::exchange(core_.picture_stale_, false)) core_.tell_of_new_picture();
    }
    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;

   private:
    ControlCore& core_;
    ComPtr<IUnknown> alive_;
  };

 protected:
  ControlCore() = default;
  virtual ~ControlCore();

  /// To be called first: makes a control of class C.
  template <class C>
  void start(REFCLSID clsid) {
    clsid_ = &clsid;
    misc_status_ = find_class(clsid)->misc_status;
    link_ = std::make_shared<SiteLink>(*this);
    host_ = windows::WindowHost::create<C>(*link_);
    host_->keep_until_gone(link_);
    host_->place(initial_place);
  }

  /// The object as a whole.
  virtual IUnknown* identity() = 0;
  /// The number of the property of that name.
  virtual DISPID property_id(StringView name) = 0;
  /// Those who want to know of changed properties.
  virtual ConnectionPoint& property_notices() = 0;

  /// False while the control is being made.
  bool is_made() const { return host_ != nullptr; }
  windows::WindowHost& host() const { return *host_; }
  Control& control() const { return host_->control(); }
  REFCLSID clsid() const { return *clsid_; }
  bool has(DWORD misc_status) const { return (misc_status_ & misc_status) != 0; }
  DWORD misc_status() const { return misc_status_; }

  /// Runs a member of an interface; see error_edge.h.
  template <class Action>
  HRESULT run(Action&& action) noexcept {
    const Change change(*this);
    return guarded(IID_IOleObject, L"Tornby", action);
  }

  /// A container that stores nothing may begin with any call: the control has its start values then.
  void make_ready();
  /// Takes settings from a container, in place of what there was.
  HRESULT take_settings(const std::function<void()>& read);
  bool dirty() const { return dirty_; }
  void clear_dirty() { dirty_ = false; }

  /// The size of the control, in hundredths of a millimetre.
  HRESULT extent(DWORD aspect, SIZEL* himetric);
  void set_extent(SIZEL himetric);

  void set_site(IOleClientSite* site);
  const ComPtr<IOleClientSite>& site() const { return site_; }
  const ComPtr<IOleControlSite>& control_site() const { return control_site_; }
  const ComPtr<ISimpleFrameSite>& frame_site() const { return frame_site_; }
  String display_name() const { return ambients_.display_name(); }
  /// Whether the container is a form designer: then the control answers no input and raises no event.
  bool in_design() const { return ambients_.in_design(); }
  /// The container's ambient property, or all of them for DISPID_UNKNOWN, has another value.
  void ambient_changed(DISPID property);

  // What the control tells; each is answered by the family that it concerns.
  virtual bool request_size(SIZE wanted) = 0;
  virtual void caption_changed() = 0;
  virtual void focus_changed(bool here) = 0;
  virtual LRESULT filter(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                         const std::function<LRESULT()>& handle) = 0;
  virtual void tell_of_new_picture() = 0;
  virtual void tell_of_save() = 0;

 private:
  /// The control's way to this object, which may go while the control still works.
  class SiteLink final : public windows::ControlSite {
   public:
    explicit SiteLink(ControlCore& owner) : owner_(&owner) {}
    void cut() { owner_ = nullptr; }

    void property_changed(StringView name) override {
      if (owner_) owner_->property_changed(name);
    }
    Font ambient_font() const override { return owner_ ? owner_->ambients_.font() : Font(); }
    std::optional<Color> ambient_back_color() const override {
      return owner_ ? owner_->ambients_.back_color() : std::nullopt;
    }
    std::optional<Color> ambient_fore_color() const override {
      return owner_ ? owner_->ambients_.fore_color() : std::nullopt;
    }
    std::optional<std::int16_t> ambient_appearance() const override {
      return owner_ ? owner_->ambients_.appearance() : std::nullopt;
    }
    bool right_to_left() const override { return owner_ && owner_->ambients_.right_to_left(); }
    bool displays_as_default() const override { return owner_ && owner_->ambients_.displays_as_default(); }
    String display_name() const override { return owner_ ? owner_->display_name() : String(); }
    bool takes_size_request(SIZE wanted) override { return owner_ && owner_->request_size(wanted); }
    /// There is nobody to tell: the container has already got what it could.
    void failed(std::exception_ptr) override {}
    bool in_design() const override { return owner_ && owner_->in_design(); }
    void view_changed() override {
      if (owner_) owner_->picture_changed();
    }
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
    ControlCore* owner_;
  };

  static constexpr RECT initial_place = {0, 0, 121, 33};  // pixels, until a container says otherwise

  void property_changed(StringView name);
  void picture_changed();

  const CLSID* clsid_ = nullptr;
  DWORD misc_status_ = 0;
  std::shared_ptr<SiteLink> link_;
  std::shared_ptr<windows::WindowHost> host_;
  ComPtr<IOleClientSite> site_;
  AmbientProperties ambients_;
  ComPtr<IOleControlSite> control_site_;
  ComPtr<ISimpleFrameSite> frame_site_;  // for a control that others are placed in
  enum class Settings { none, on_their_way, there };
  Settings settings_ = Settings::none;
  bool dirty_ = false;
  int changes_ = 0;
  bool picture_stale_ = false;
};

}  // namespace tornby::automation
