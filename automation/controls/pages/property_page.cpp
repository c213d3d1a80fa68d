#include "automation/controls/pages/property_page.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>

#include "automation/com/help.h"
#include "automation/controls/change_sink.h"
#include "automation/controls/pages/page_window.h"
#include "automation/controls/task_memory.h"

namespace tornby::automation {
namespace {

constexpr const wchar_t* title = L"General";
constexpr const wchar_t* summary = L"The properties that are neither colours, fonts nor pictures";

/// The properties of every control of the type library: frames ask for the page's size before they have an object.
SIZE size_for_all_controls() {
  const ComPtr<ITypeLib> library = load_type_library();
  PageLayout largest({});
  for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
    ComPtr<ITypeInfo> type;
    TYPEATTR* attributes = nullptr;
    check(library->GetTypeInfo(i, type.out()));
    check(type->GetTypeAttr(&attributes));
    const bool is_control = attributes->typekind == TKIND_COCLASS && (attributes->wTypeFlags & TYPEFLAG_FCONTROL) != 0;
    type->ReleaseTypeAttr(attributes);
    if (!is_control) continue;
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> members;
    check(type->GetRefTypeOfImplType(0, &reference));
    check(type->GetRefTypeInfo(reference, members.out()));
    const PageLayout layout(page_properties(members.get(), nullptr));
    if (layout.height > largest.height) largest = layout;
  }
  return size_in_pixels(largest);
}

class PropertyPage final : public CountedAs<IPropertyPage2, IPropertyPage> {
 public:
  PropertyPage() : sink_(ComPtr<ChangeSink>::adopt(new ChangeSink([this] { objects_changed(); }))) {}

  HRESULT STDMETHODCALLTYPE SetPageSite(IPropertyPageSite* site) override {
    if (site && site_) return E_UNEXPECTED;
    site_ = ComPtr<IPropertyPageSite>(site);
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE Activate(HWND parent, LPCRECT place, BOOL) override {
    if (!place) return E_POINTER;
    if (window_) return E_UNEXPECTED;
    return run([&] {
      place_ = *place;
      parent_ = parent;
      open_window();
    });
  }

  HRESULT STDMETHODCALLTYPE Deactivate() override {
    if (!window_) return E_UNEXPECTED;
    const HRESULT result = run([&] { window_->collect(); });
    window_.reset();
    return result;
  }

  HRESULT STDMETHODCALLTYPE GetPageInfo(PROPPAGEINFO* info) override {
    if (!info) return E_POINTER;
    *info = {};
    info->cb = sizeof *info;  // which some frames do not say
    return run([&] {
      const SIZE pixels = size_for_all_controls();
      auto page_title = task_text(title), page_summary = task_text(summary), file = task_text(help_file());
      info->pszTitle = page_title.release();
      info->pszDocString = page_summary.release();
      info->pszHelpFile = file.release();
      info->size = pixels;
      info->dwHelpContext = property_page_help;
    });
  }

  HRESULT STDMETHODCALLTYPE SetObjects(ULONG count, IUnknown** objects) override {
    if (count > 0 && (!objects || std::find(objects, objects + count, nullptr) != objects + count)) return E_POINTER;
    return run([&] {
      if (busy_) {  // an object tells of its change while the page works with it
        std::vector<ComPtr<IUnknown>> given;
        for (ULONG i = 0; i < count; ++i) given.emplace_back(objects[i]);
        later_ = std::move(given);
        return;
      }
      take_objects(std::span<IUnknown* const>(objects, count));
    });
  }

  HRESULT STDMETHODCALLTYPE Show(UINT command) override {
    if (!window_) return E_UNEXPECTED;
    if (command != SW_SHOW && command != SW_SHOWNORMAL && command != SW_HIDE) return E_INVALIDARG;
    ::ShowWindow(window_->handle(), static_cast<int>(command));
    if (command != SW_HIDE && wanted_) focus(*std::exchange(wanted_, std::nullopt));
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE Move(LPCRECT place) override {
    if (!place) return E_POINTER;
    if (!window_) return E_UNEXPECTED;
    place_ = *place;
    ::MoveWindow(window_->handle(), place_.left, place_.top, place_.right - place_.left, place_.bottom - place_.top,
                 TRUE);
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE IsPageDirty() override { return draft_.is_dirty() ? S_OK : S_FALSE; }

  HRESULT STDMETHODCALLTYPE Apply() override {
    if (busy_) return E_UNEXPECTED;
    const ComPtr<IUnknown> alive(this);
    HRESULT outcome = S_OK;
    const HRESULT failure = run([&] {
      if (window_) window_->collect();
      std::optional<PageDraft::Refusal> refusal;
      work([&] { refusal = draft_.apply(); });
      if (refusal) {
        outcome = refusal->result;
        explain(*refusal);
        return;
      }
      if (window_) window_->show_draft();
      tell_whether_dirty();
    });
    return FAILED(failure) ? failure : outcome;
  }

  HRESULT STDMETHODCALLTYPE Help(LPCOLESTR) override {
    return run([&] { show_help(window_ ? window_->handle() : nullptr, property_page_help); });
  }

  HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message) override {
    if (!message) return E_POINTER;
    const ComPtr<IUnknown> alive(this);
    bool taken = false;
    const HRESULT failure = run([&] {
      const auto leave = [&] { return site_ && site_->TranslateAccelerator(message) == S_OK; };
      taken = window_ && window_->translate(message, leave);
    });
    return FAILED(failure) ? failure : taken ? S_OK : S_FALSE;
  }

  HRESULT STDMETHODCALLTYPE EditProperty(DISPID property) override {
    if (draft_.find(property) == draft_.fields().size()) return DISP_E_MEMBERNOTFOUND;
    wanted_ = property;
    if (window_ && ::IsWindowVisible(window_->handle())) focus(*std::exchange(wanted_, std::nullopt));
    return S_OK;
  }

 private:
  ~PropertyPage() override {
    sink_->cut();
    release_objects();
  }

  template <class Action>
  HRESULT run(Action&& action) noexcept {
    return guarded(IID_IPropertyPage2, L"Tornby", action);
  }

  void take_objects(std::span<IUnknown* const> objects) {
    PageDraft draft(objects);
    release_objects();
    const bool was_open = window_ != nullptr;
    const bool was_visible = was_open && ::IsWindowVisible(window_->handle());
    window_.reset();
    draft_ = std::move(draft);
    for (EditedObject& object : draft_.objects()) object.advise(sink_.get());
    if (was_open) open_window();
    if (was_visible) ::ShowWindow(window_->handle(), SW_SHOW);
    tell_whether_dirty();
  }

  /// Works with the objects. Those that the page is given meanwhile it takes afterwards.
  template <class Action>
  void work(Action&& action) {
    const ComPtr<IUnknown> alive(this);
    busy_ = true;
    const struct Done {
      PropertyPage& page;
      ~Done() {
        page.busy_ = false;
        const auto later = std::exchange(page.later_, std::nullopt);
        if (!later) return;
        static_cast<void>(page.run([&] {
          std::vector<IUnknown*> objects;
          for (const auto& object : *later) objects.push_back(object.get());
          page.take_objects(objects);
        }));
      }
    } done{*this};
    action();
  }

  void release_objects() {
    for (EditedObject& object : draft_.objects()) object.unadvise();
  }

  void open_window() {
    window_ = std::make_unique<PageWindow>(parent_, place_, draft_, [this] {
      const ComPtr<IUnknown> alive(this);
      tell_whether_dirty();
    });
  }

  void focus(DISPID property) const { window_->focus(draft_.find(property)); }

  void tell_whether_dirty() {
    const bool dirty = draft_.is_dirty();
    if (dirty == std::exchange(told_dirty_, dirty) || !site_) return;
    ComPtr<IPropertyPageSite>(site_)->OnStatusChange(dirty ? PROPPAGESTATUS_DIRTY : PROPPAGESTATUS_CLEAN);
  }

  void objects_changed() {
    if (busy_) return;
    const ComPtr<IUnknown> alive(this);
    work([&] { draft_.refresh(); });
    if (window_) window_->show_draft();
    tell_whether_dirty();
  }

  /// Says why a value cannot be applied, and goes to it.
  void explain(const PageDraft::Refusal& refusal) {
    if (!window_ || !::IsWindowVisible(window_->handle())) return;
    ::MessageBoxW(window_->handle(), refusal.reason.c_str(), L"Properties", MB_OK | MB_ICONEXCLAMATION);
    if (window_) window_->focus(refusal.field);
  }

  ComPtr<ChangeSink> sink_;
  ComPtr<IPropertyPageSite> site_;
  PageDraft draft_;
  std::unique_ptr<PageWindow> window_;
  HWND parent_ = nullptr;
  RECT place_ = {};
  std::optional<DISPID> wanted_;  // to have the focus when the page is shown
  bool told_dirty_ = false;
  bool busy_ = false;
  std::optional<std::vector<ComPtr<IUnknown>>> later_;  // objects to take when it is not busy any more
};

}  // namespace

HRESULT create_PropertyPage(REFIID iid, void** object) {
  return create_object<PropertyPage>(iid, object);
}

}  // namespace tornby::automation
