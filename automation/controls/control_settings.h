// Where a container keeps a control's settings: a stream, a storage of a document, or its property bag.
#pragma once

#include "automation/controls/control_core.h"

namespace tornby::automation {

/// A storage holds the stream "Contents", of the form that the container's own stream has: each reads the other's.
class ControlSettings : public IPersistStreamInit,
                        public IPersistPropertyBag,
                        public IPersistStorage,
                        public virtual ControlCore {
 public:
  HRESULT STDMETHODCALLTYPE GetClassID(CLSID* clsid) override;
  HRESULT STDMETHODCALLTYPE InitNew() override;
  HRESULT STDMETHODCALLTYPE IsDirty() override { return dirty() ? S_OK : S_FALSE; }
  HRESULT STDMETHODCALLTYPE Load(LPSTREAM stream) override;
  HRESULT STDMETHODCALLTYPE Save(LPSTREAM stream, BOOL clear) override;
  HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Load(IPropertyBag* bag, IErrorLog* log) override;
  HRESULT STDMETHODCALLTYPE Save(IPropertyBag* bag, BOOL clear, BOOL save_all) override;
  HRESULT STDMETHODCALLTYPE InitNew(IStorage* storage) override;
  HRESULT STDMETHODCALLTYPE Load(IStorage* storage) override;
  HRESULT STDMETHODCALLTYPE Save(IStorage* storage, BOOL same_as_loaded) override;
  HRESULT STDMETHODCALLTYPE SaveCompleted(IStorage* storage) override;
  HRESULT STDMETHODCALLTYPE HandsOffStorage() override;

 private:
  void load(IStream* stream);
  void save(IStream* stream);

  /// What the control may do with the document's storage. It keeps none and writes only when told, but has to keep to
  /// the order of calls, by which containers find their own mistakes.
  enum class Storage { none, ready, no_scribble, hands_off };
  Storage storage_ = Storage::none;
  bool saved_ = false;           // since SaveCompleted
  bool saved_in_place_ = false;  // in the storage that the document goes on with
};

}  // namespace tornby::automation
