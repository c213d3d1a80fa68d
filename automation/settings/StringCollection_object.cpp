#include "automation/com/collection_enumerator.h"
#include "automation/com/dispatch_object.h"
#include "automation/settings/collections.h"
#include "base/runtime_error.h"

namespace tornby::automation {
namespace {

class StringCollectionObject final : public DispatchObject<IStringCollection> {
 public:
  explicit StringCollectionObject(StringCollection strings)
      : DispatchObject(L"Tornby.StringCollection"), strings_(std::move(strings)) {}

  STDMETHODIMP get_Item(VARIANT index, BSTR* result) override {
    return answer(result, [&]() -> StringView {
      const Variant which = from_variant(index);
      if (const auto* key = std::get_if<String>(&which)) return strings_.at(*key);
      return strings_.at(to_int32(which));
    });
  }
  STDMETHODIMP get_Count(LONG* result) override {
    return answer(result, [&] { return static_cast<std::int32_t>(strings_.size()); });
  }
  STDMETHODIMP get__NewEnum(IUnknown** result) override {
    return answer(result, [&] {
      const StringCollection::Cursor start(strings_);
      const auto convert = [](const String& text) { return to_variant(text); };
      return ComPtr<CollectionEnumerator<String>>::adopt(new CollectionEnumerator<String>(
          ComPtr<IUnknown>(static_cast<IStringCollection*>(this)), start, start, convert));
    });
  }

 private:
  StringCollection strings_;
};

}  // namespace

ComPtr<IStringCollection> make_object(StringCollection strings) {
  return ComPtr<IStringCollection>::adopt(new StringCollectionObject(std::move(strings)));
}

}  // namespace tornby::automation
