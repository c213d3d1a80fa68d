#include <memory>
#include <unordered_map>

#include "automation/com/collection_enumerator.h"
#include "automation/com/dispatch_object.h"
#include "automation/settings/collections.h"

namespace tornby::automation {
namespace {

class PairObject;

/// The objects that stand for a collection's pairs at the moment, so that each pair has one only.
using PairObjects = std::unordered_map<const tornby::PropertyClass*, PairObject*>;

class PairObject final : public DispatchObject<IPropertyClass> {
 public:
  explicit PairObject(tornby::ValueCollection::Pair pair = std::make_shared<tornby::PropertyClass>(),
                      std::shared_ptr<PairObjects> siblings = nullptr)
      : DispatchObject(L"Tornby.PropertyClass", CLSID_PropertyClass),
        pair_(std::move(pair)),
        siblings_(std::move(siblings)) {}
  ~PairObject() override {
    if (siblings_) siblings_->erase(pair_.get());
  }

  STDMETHODIMP get_Value(BSTR* result) override {
    return answer(result, [&]() -> StringView { return pair_->Value(); });
  }
  STDMETHODIMP put_Value(BSTR value) override {
    return act([&] { pair_->Value(view(value)); });
  }
  STDMETHODIMP get_Key(BSTR* result) override {
    return answer(result, [&]() -> StringView { return pair_->Key(); });
  }
  STDMETHODIMP put_Key(BSTR value) override {
    return act([&] { pair_->Key(view(value)); });
  }

 private:
  tornby::ValueCollection::Pair pair_;
  std::shared_ptr<PairObjects> siblings_;
};

using PairPtr = ComPtr<IPropertyClass>;

/// The object of a pair; null for no pair.
PairPtr object_of(const tornby::ValueCollection::Pair& pair, const std::shared_ptr<PairObjects>& objects) {
  if (!pair) return {};
  if (const auto known = objects->find(pair.get()); known != objects->end()) return PairPtr(known->second);
  const auto created = ComPtr<PairObject>::adopt(new PairObject(pair, objects));
  objects->emplace(pair.get(), created.get());
  return PairPtr(created.get());
}

class ValueCollectionObject final : public DispatchObject<IValueCollection> {
 public:
  explicit ValueCollectionObject(tornby::ValueCollection values = {})
      : DispatchObject(L"Tornby.ValueCollection", CLSID_ValueCollection), values_(std::move(values)) {}

  STDMETHODIMP get_DisplayError(VARIANT_BOOL* result) override {
    return answer(result, [&] { return values_.DisplayError(); });
  }
  STDMETHODIMP put_DisplayError(VARIANT_BOOL value) override {
    return act([&] { values_.DisplayError(from_boolean(value)); });
  }
  STDMETHODIMP Sort(LONG order) override {
    return act([&] { values_.Sort(order); });
  }
  STDMETHODIMP Add(BSTR key, BSTR value, IPropertyClass** result) override {
    return answer(result, [&] {
      const auto pair = values_.Add(view(key), view(value));
      try {
        return object_of(pair, objects_);
      } catch (...) {
        values_.Remove(values_.Count());  // a caller who hears of a failure finds nothing added
        throw;
      }
    });
  }
  STDMETHODIMP Item(VARIANT index, IPropertyClass** result) override {
    return answer(result, [&] { return object_of(values_.Item(index_of(index)), objects_); });
  }
  STDMETHODIMP get_Count(LONG* result) override {
    return answer(result, [&] { return values_.Count(); });
  }
  STDMETHODIMP Remove(VARIANT index) override {
    return act([&] { values_.Remove(index_of(index)); });
  }
  STDMETHODIMP NewEnum(IUnknown** result) override {
    return answer(result, [&] {
      const auto convert = [objects = objects_](const tornby::ValueCollection::Pair& pair) {
        VARIANT value;
        ::VariantInit(&value);
        value.pdispVal = object_of(pair, objects).detach();
        value.vt = VT_DISPATCH;
        return value;
      };
      using Walk = CollectionEnumerator<tornby::ValueCollection::Pair>;
      return ComPtr<Walk>::adopt(new Walk(ComPtr<IUnknown>(static_cast<IValueCollection*>(this)), values_.NewEnum(),
                                          values_.NewEnum(), convert));
    });
  }
  STDMETHODIMP Exist(BSTR key, VARIANT_BOOL* result) override {
    return answer(result, [&] { return values_.Exist(view(key)); });
  }

 private:
  /// What is neither a number nor a text is an index to nothing.
  static Variant index_of(const VARIANT& index) {
    try {
      return from_variant(index);
    } catch (const RuntimeError&) {
      return {};
    }
  }

  tornby::ValueCollection values_;
  std::shared_ptr<PairObjects> objects_ = std::make_shared<PairObjects>();
};

}  // namespace

ComPtr<IValueCollection> make_object(tornby::ValueCollection values) {
  return ComPtr<IValueCollection>::adopt(new ValueCollectionObject(std::move(values)));
}

HRESULT create_PropertyClass(REFIID iid, void** object) {
  return create_object<PairObject>(iid, object);
}
HRESULT create_ValueCollection(REFIID iid, void** object) {
  return create_object<ValueCollectionObject>(iid, object);
}

}  // namespace tornby::automation
