// COM enumerators over a list that does not change: a snapshot of what there was when the enumeration began.
#pragma once

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "automation/com/counted.h"

namespace tornby::automation {

/// How an enumerator keeps its items and hands out copies, which the caller frees. Specialised for each kind of item.
template <class Item>
struct EnumeratorItem;

template <>
struct EnumeratorItem<IConnectionPoint*> {
  using Kept = ComPtr<IConnectionPoint>;
  static HRESULT copy(const Kept& kept, IConnectionPoint** out) {
    *out = Kept(kept).detach();
    return S_OK;
  }
  static void free(IConnectionPoint** item) { (*item)->Release(); }
};

struct KeptConnection {
  ComPtr<IUnknown> sink;
  DWORD cookie;
};

template <>
struct EnumeratorItem<CONNECTDATA> {
  using Kept = KeptConnection;
  static HRESULT copy(const Kept& kept, CONNECTDATA* out) {
    *out = {ComPtr<IUnknown>(kept.sink).detach(), kept.cookie};
    return S_OK;
  }
  static void free(CONNECTDATA* item) { item->pUnk->Release(); }
};

/// Implements IEnumConnections and the like.
template <class Interface, class Item>
class Enumerator final : public CountedAs<Interface> {
 public:
  using Kept = typename EnumeratorItem<Item>::Kept;
  using Items = std::shared_ptr<const std::vector<Kept>>;

  explicit Enumerator(Items items, std::size_t next = 0) : items_(std::move(items)), next_(next) {}

  HRESULT STDMETHODCALLTYPE Next(ULONG wanted, Item* out, ULONG* fetched) override {
    if (fetched) *fetched = 0;
    if (!out || (!fetched && wanted != 1)) return E_POINTER;
    ULONG count = 0;
    for (; count < wanted && next_ < items_->size(); ++count, ++next_) {
      const HRESULT result = EnumeratorItem<Item>::copy((*items_)[next_], out + count);
      if (FAILED(result)) {
        while (count > 0) EnumeratorItem<Item>::free(out + --count);
        return result;
      }
    }
    if (fetched) *fetched = count;
    return count == wanted ? S_OK : S_FALSE;
  }

  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    const std::size_t left = items_->size() - next_;
    next_ += std::min<std::size_t>(count, left);
    return count <= left ? S_OK : S_FALSE;
  }

  HRESULT STDMETHODCALLTYPE Reset() override {
    next_ = 0;
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE Clone(Interface** clone) override {
    return create_object<Enumerator>(__uuidof(Interface), reinterpret_cast<void**>(clone), items_, next_);
  }

 private:
  Items items_;
  std::size_t next_;
};

/// A new enumerator over `items`, which the caller releases.
template <class Interface, class Item>
Interface* make_enumerator(std::vector<typename EnumeratorItem<Item>::Kept> items) {
  using Kept = typename EnumeratorItem<Item>::Kept;
  return new Enumerator<Interface, Item>(std::make_shared<const std::vector<Kept>>(std::move(items)));
}

}  // namespace tornby::automation
