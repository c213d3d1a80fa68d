#include "automation/controls/font_property.h"

#include "automation/controls/ole_values.h"

namespace tornby::automation {

/// Hears of the font object's changes until it is cut off.
class FontProperty::Listener final : public Counted<IPropertyNotifySink> {
 public:
  explicit Listener(FontProperty& owner) : owner_(&owner) {}
  void cut() { owner_ = nullptr; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (iid != IID_IUnknown && iid != IID_IPropertyNotifySink) return E_NOINTERFACE;
    AddRef();
    *object = static_cast<IPropertyNotifySink*>(this);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE OnChanged(DISPID) override {
    if (!owner_) return S_OK;
    return guarded(IID_IPropertyNotifySink, L"Tornby", [&] { owner_->take(owner_->font_.get()); });
  }
  HRESULT STDMETHODCALLTYPE OnRequestEdit(DISPID) override { return S_OK; }

 private:
  FontProperty* owner_;
};

namespace {

ComPtr<IConnectionPoint> notices_of(IFont* font) {
  ComPtr<IConnectionPointContainer> container;
  ComPtr<IConnectionPoint> point;
  if (SUCCEEDED(font->QueryInterface(IID_IConnectionPointContainer, container.out_void())))
    container->FindConnectionPoint(IID_IPropertyNotifySink, point.out());
  return point;
}

}  // namespace

FontProperty::FontProperty(std::function<Font()> read, std::function<void(const Font&)> write)
    : read_(std::move(read)), write_(std::move(write)) {}

FontProperty::~FontProperty() {
  let_go();
}

ComPtr<IFontDisp> FontProperty::object() {
  Font now = read_();
  if (font_ && now != known_) let_go();
  if (!font_) {
    auto font = make_font(now);
    auto listener = ComPtr<Listener>::adopt(new Listener(*this));
    if (const auto point = notices_of(font.get())) check(point->Advise(listener.get(), &cookie_));
    font_ = std::move(font);
    listener_ = std::move(listener);
    known_ = std::move(now);
  }
  ComPtr<IFontDisp> disp;
  check(font_->QueryInterface(IID_IFontDisp, disp.out_void()));
  return disp;
}

void FontProperty::assign(IUnknown* font) {
  const Font description = describe_font(font);
  let_go();
  write_(description);
}

/// The font object stays in use: it is what the control has now.
void FontProperty::take(IUnknown* font) {
  write_(describe_font(font));
  known_ = read_();
}

void FontProperty::let_go() {
  if (!font_) return;
  listener_->cut();
  if (const auto point = notices_of(font_.get())) point->Unadvise(cookie_);
  font_ = ComPtr<IFont>();
  listener_ = ComPtr<Listener>();
}

}  // namespace tornby::automation
