#include "automation/controls/font_property.h"

#include "automation/controls/ole_values.h"

namespace tornby::automation {

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
    auto listener = ComPtr<ChangeSink>::adopt(new ChangeSink([this] { take(font_.get()); }));
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
  listener_ = ComPtr<ChangeSink>();
}

}  // namespace tornby::automation
