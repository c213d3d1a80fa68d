// For Each over a collection that may change meanwhile: the loop meets what there is when it gets there.
#pragma once

#include <functional>
#include <utility>

#include "automation/com/counted.h"
#include "automation/com/error_edge.h"
#include "base/ordered_collection.h"

namespace tornby::automation {

/// IEnumVARIANT over an OrderedCollection<T>, whose object it keeps alive.
template <class T>
class CollectionEnumerator final : public CountedAs<IEnumVARIANT> {
 public:
  using Cursor = typename OrderedCollection<T>::Cursor;
  using Convert = std::function<VARIANT(const T&)>;  // makes a VARIANT for the caller to clear

  CollectionEnumerator(ComPtr<IUnknown> owner, Cursor start, Cursor next, Convert convert)
      : owner_(std::move(owner)), start_(start), next_(next), convert_(std::move(convert)) {}

  HRESULT STDMETHODCALLTYPE Next(ULONG wanted, VARIANT* out, ULONG* fetched) override {
    if (fetched) *fetched = 0;
    if (!out || (!fetched && wanted != 1)) return E_POINTER;
    const Cursor before = next_;
    ULONG count = 0;
    const HRESULT result = guarded(IID_IEnumVARIANT, L"Tornby", [&] {
      for (; count < wanted; ++count) {
        const auto item = next_.next();
        if (!item) return;
        out[count] = convert_(*item);
      }
    });
    if (FAILED(result)) {
      while (count > 0) ::VariantClear(out + --count);
      next_ = before;
      return result;
    }
    if (fetched) *fetched = count;
    return count == wanted ? S_OK : S_FALSE;
  }

  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    HRESULT outcome = S_OK;
    const HRESULT result = guarded(IID_IEnumVARIANT, L"Tornby", [&] {
      for (; count > 0; --count)
        if (!next_.next()) {
          outcome = S_FALSE;
          return;
        }
    });
    return FAILED(result) ? result : outcome;
  }

  HRESULT STDMETHODCALLTYPE Reset() override {
    next_ = start_;
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** clone) override {
    return create_object<CollectionEnumerator>(IID_IEnumVARIANT, reinterpret_cast<void**>(clone), owner_, start_, next_,
                                               convert_);
  }

 private:
  ComPtr<IUnknown> owner_;
  Cursor start_;
  Cursor next_;
  Convert convert_;
};

}  // namespace tornby::automation
