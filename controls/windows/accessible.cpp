#include "controls/windows/accessible.h"

#include <oleacc.h>

#include <atomic>
#include <string>

#include "controls/mnemonic.h"
#include "controls/windows/window_host.h"
#include "platform/windows/system_library.h"

// Interfaces of the system have no virtual destructor: objects end by Release.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

namespace tornby::windows {
namespace {

BSTR new_bstr(StringView text) {
  const std::wstring wide(text.begin(), text.end());
  return ::SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
}

bool is_self(const VARIANT& child) {
  return child.vt == VT_I4 && child.lVal == CHILDID_SELF;
}

/// The standard object, except for what the control knows better. A screen reader may keep it longer than the control.
class Accessible final : public IAccessible {
 public:
  Accessible(const std::shared_ptr<WindowHost>& host, IAccessible* standard) : host_(host), standard_(standard) {}
  Accessible(const Accessible&) = delete;
  Accessible& operator=(const Accessible&) = delete;

  STDMETHODIMP QueryInterface(REFIID id, void** object) override {
    if (id == __uuidof(IUnknown) || id == __uuidof(IDispatch) || id == __uuidof(IAccessible)) {
      *object = static_cast<IAccessible*>(this);
      AddRef();
      return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  STDMETHODIMP get_accName(VARIANT child, BSTR* name) override {
    const auto host = host_.lock();
    if (!host || !is_self(child)) return standard_->get_accName(child, name);
    *name = new_bstr(without_mnemonic(host->control().accessible_name()));
    return *name ? S_OK : E_OUTOFMEMORY;
  }
  STDMETHODIMP get_accRole(VARIANT child, VARIANT* role) override {
    const auto host = host_.lock();
    if (!host || !is_self(child)) return standard_->get_accRole(child, role);
    role->vt = VT_I4;
    switch (host->control().accessible_role()) {
      case AccessibleRole::text:
        role->lVal = ROLE_SYSTEM_STATICTEXT;
        break;
      case AccessibleRole::link:
        role->lVal = ROLE_SYSTEM_LINK;
        break;
      case AccessibleRole::combo_box:
        role->lVal = ROLE_SYSTEM_COMBOBOX;
        break;
    }
    return S_OK;
  }
  STDMETHODIMP accDoDefaultAction(VARIANT child) override {
    const auto host = host_.lock();
    if (!host || !is_self(child)) return standard_->accDoDefaultAction(child);
    try {
      host->control().activate();
      return S_OK;
    } catch (...) {
      return E_FAIL;
    }
  }

  STDMETHODIMP GetTypeInfoCount(UINT* count) override { return standard_->GetTypeInfoCount(count); }
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** information) override {
    return standard_->GetTypeInfo(index, locale, information);
  }
  STDMETHODIMP GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override {
    return standard_->GetIDsOfNames(id, names, count, locale, ids);
  }
  STDMETHODIMP Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT* argument) override {
    return standard_->Invoke(member, id, locale, flags, parameters, result, exception, argument);
  }
  STDMETHODIMP get_accParent(IDispatch** parent) override { return standard_->get_accParent(parent); }
  STDMETHODIMP get_accChildCount(LONG* count) override { return standard_->get_accChildCount(count); }
  STDMETHODIMP get_accChild(VARIANT child, IDispatch** object) override {
    return standard_->get_accChild(child, object);
  }
  STDMETHODIMP get_accValue(VARIANT child, BSTR* value) override { return standard_->get_accValue(child, value); }
  STDMETHODIMP get_accDescription(VARIANT child, BSTR* text) override {
    return standard_->get_accDescription(child, text);
  }
  STDMETHODIMP get_accState(VARIANT child, VARIANT* state) override { return standard_->get_accState(child, state); }
  STDMETHODIMP get_accHelp(VARIANT child, BSTR* text) override { return standard_->get_accHelp(child, text); }
  STDMETHODIMP get_accHelpTopic(BSTR* file, VARIANT child, LONG* topic) override {
    return standard_->get_accHelpTopic(file, child, topic);
  }
  STDMETHODIMP get_accKeyboardShortcut(VARIANT child, BSTR* key) override {
    const auto host = host_.lock();
    const char16_t letter = host && is_self(child) ? mnemonic(host->control().accessible_name()) : u'\0';
    if (!letter) return standard_->get_accKeyboardShortcut(child, key);
    *key = new_bstr(String(u"Alt+") + letter);
    return *key ? S_OK : E_OUTOFMEMORY;
  }
  STDMETHODIMP get_accFocus(VARIANT* child) override { return standard_->get_accFocus(child); }
  STDMETHODIMP get_accSelection(VARIANT* children) override { return standard_->get_accSelection(children); }
  STDMETHODIMP get_accDefaultAction(VARIANT child, BSTR* action) override {
    return standard_->get_accDefaultAction(child, action);
  }
  STDMETHODIMP accSelect(LONG flags, VARIANT child) override { return standard_->accSelect(flags, child); }
  STDMETHODIMP accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT child) override {
    return standard_->accLocation(left, top, width, height, child);
  }
  STDMETHODIMP accNavigate(LONG direction, VARIANT start, VARIANT* end) override {
    return standard_->accNavigate(direction, start, end);
  }
  STDMETHODIMP accHitTest(LONG left, LONG top, VARIANT* child) override {
    return standard_->accHitTest(left, top, child);
  }
  STDMETHODIMP put_accName(VARIANT child, BSTR name) override { return standard_->put_accName(child, name); }
  STDMETHODIMP put_accValue(VARIANT child, BSTR value) override { return standard_->put_accValue(child, value); }

 private:
  ~Accessible() { standard_->Release(); }

  std::atomic<ULONG> references_{1};
  std::weak_ptr<WindowHost> host_;
  IAccessible* standard_;
};

}  // namespace

LRESULT answer_accessible_request(const std::shared_ptr<WindowHost>& host, WPARAM wparam) {
  static const auto create_standard =
      system_function<decltype(::CreateStdAccessibleObject)>(L"oleacc.dll", "CreateStdAccessibleObject");
  static const auto answer_with = system_function<decltype(::LresultFromObject)>(L"oleacc.dll", "LresultFromObject");
  void* standard = nullptr;
  if (!create_standard || !answer_with) return 0;
  if (FAILED(create_standard(host->window(), OBJID_CLIENT, __uuidof(IAccessible), &standard))) return 0;
  IAccessible* accessible = new Accessible(host, static_cast<IAccessible*>(standard));
  const LRESULT answer = answer_with(__uuidof(IAccessible), wparam, accessible);
  accessible->Release();
  return answer;
}

}  // namespace tornby::windows
