#include "automation/server/class_factory.h"

#include <new>

#include "automation/com/counted.h"
#include "automation/server/module.h"

namespace tornby::automation {
namespace {

class ClassFactory final : public CountedAs<IClassFactory> {
 public:
  explicit ClassFactory(const ClassEntry& entry) : entry_(entry) {}

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
