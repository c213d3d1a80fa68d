// Reference counting, and creation.
#pragma once

#include <atomic>
#include <exception>
#include <new>
#include <utility>

#include "automation/com/com.h"
#include "automation/com/error_edge.h"
#include "automation/server/module.h"

namespace tornby::automation {

/// Counts references to a COM object; the last Release deletes it. The first reference is the creator's.
/// While it lives, the DLL stays loaded.
template <class... Interfaces>
class Counted : public Interfaces... {
 public:
  Counted() { add_module_reference(); }
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;

  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

 protected:
  virtual ~Counted() { release_module_reference(); }

 private:
  std::atomic<ULONG> references_ = 1;
};

/// A COM object of one interface, which answers to the interfaces that this one extends as well.
template <class Interface, class... Extended>
class CountedAs : public Counted<Interface> {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (iid != IID_IUnknown && iid != __uuidof(Interface) && (... && (iid != __uuidof(Extended)))) return E_NOINTERFACE;
    this->AddRef();
    *object = static_cast<Interface*>(this);
    return S_OK;
  }
};

/// Creates an Object and asks it for `iid`. It is gone again when it does not answer. What the run-time library
/// allocates for exceptions in each thread it takes for granted; it does so here, not when memory has run out.
template <class Object, class... Arguments>
HRESULT create_object(REFIID iid, void** object, Arguments&&... arguments) noexcept {
  if (!object) return E_POINTER;
  *object = nullptr;
  static_cast<void>(std::uncaught_exceptions());
  return guarded(iid, L"Tornby", [&] {
    const auto created = ComPtr<Object>::adopt(new Object(std::forward<Arguments>(arguments)...));
    check(created->QueryInterface(iid, object));
  });
}

}  // namespace tornby::automation
