#include "automation/server/class_factory.h"

#include <new>

#include "automation/com/counted.h"
#include "automation/server/module.h"

namespace tornby::automation {
namespace {

class ClassFactory final : public Counted<IClassFactory> {
 public:
  explicit ClassFactory(const ClassEntry& entry) : entry_(entry) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (iid != IID_IUnknown && iid != IID_IClassFactory) return E_NOINTERFACE;
    AddRef();
    *object = static_cast<IClassFactory*>(this);
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    return outer ? CLASS_E_NOAGGREGATION : entry_.create(iid, object);
  }

  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
    lock ? add_module_reference() : release_module_reference();
    return S_OK;
  }

 private:
  const ClassEntry& entry_;
};

}  // namespace

HRESULT create_class_factory(const ClassEntry& entry, REFIID iid, void** factory) {
  return create_object<ClassFactory>(iid, factory, entry);
}

}  // namespace tornby::automation
