#include "automation/controls/control_settings.h"

#include "automation/controls/storage.h"

namespace tornby::automation {
namespace {

// A stream has the size too, which forms keep for themselves and documents do not.
constexpr StringView width_name = u"_ExtentX";
constexpr StringView height_name = u"_ExtentY";
constexpr const wchar_t* contents = L"Contents";

ComPtr<IStream> open_contents(IStorage* storage, DWORD mode) {
  ComPtr<IStream> stream;
  check((mode & STGM_CREATE) != 0 ? storage->CreateStream(contents, mode, 0, 0, stream.out())
                                  : storage->OpenStream(contents, nullptr, mode, 0, stream.out()));
  return stream;
}

}  // namespace

HRESULT ControlSettings::GetClassID(CLSID* clsid) {
  if (!clsid) return E_POINTER;
  *clsid = this->clsid();
  return S_OK;
}

HRESULT ControlSettings::InitNew() {
  return take_settings([&] { control().InitProperties(); });
}

HRESULT ControlSettings::Load(LPSTREAM stream) {
  if (!stream) return E_POINTER;
  return take_settings([&] { load(stream); });
}

HRESULT ControlSettings::Save(LPSTREAM stream, BOOL clear) {
  if (!stream) return E_POINTER;
  return run([&] {
    save(stream);
    if (clear) clear_dirty();
  });
}

void ControlSettings::load(IStream* stream) {
  StreamSource source(stream);
  const StreamBag bag = StreamBag::load(source);
  control().ReadProperties(bag);
  const auto length = [&](StringView name) {
    return std::get<std::int32_t>(bag.read(name, PropertyKind::int32, PropertyValue(std::int32_t{0})));
  };
  const SIZEL himetric = {length(width_name), length(height_name)};
  if (himetric.cx > 0 && himetric.cy > 0) set_extent(himetric);
}

void ControlSettings::save(IStream* stream) {
  make_ready();
  StreamBag bag;
  control().WriteProperties(bag);
  SIZEL himetric = {};
  check(extent(DVASPECT_CONTENT, &himetric));
  bag.write(width_name, std::int32_t{himetric.cx}, std::int32_t{0});
  bag.write(height_name, std::int32_t{himetric.cy}, std::int32_t{0});
  StreamTarget target(stream);
  bag.save(target);
}

HRESULT ControlSettings::Load(IPropertyBag* bag, IErrorLog* log) {
  if (!bag) return E_POINTER;
  return take_settings([&] { control().ReadProperties(ContainerBag(bag, log)); });
}

HRESULT ControlSettings::Save(IPropertyBag* bag, BOOL clear, BOOL save_all) {
  if (!bag) return E_POINTER;
  return run([&] {
    make_ready();
    ContainerBag container(bag, nullptr, save_all != FALSE);
    control().WriteProperties(container);
    if (clear) clear_dirty();
  });
}

HRESULT ControlSettings::InitNew(IStorage* storage) {
  if (!storage) return E_POINTER;
  if (storage_ != Storage::none) return CO_E_ALREADYINITIALIZED;
  const HRESULT result = InitNew();
  if (SUCCEEDED(result)) storage_ = Storage::ready;
  return result;
}

HRESULT ControlSettings::Load(IStorage* storage) {
  if (!storage) return E_POINTER;
  if (storage_ != Storage::none) return CO_E_ALREADYINITIALIZED;
  const HRESULT result = take_settings([&] { load(open_contents(storage, STGM_READ | STGM_SHARE_EXCLUSIVE).get()); });
  if (SUCCEEDED(result)) storage_ = Storage::ready;
  return result;
}

HRESULT ControlSettings::Save(IStorage* storage, BOOL same_as_loaded) {
  if (!storage) return E_POINTER;
  if (storage_ == Storage::hands_off) return E_UNEXPECTED;
  return run([&] {
    save(open_contents(storage, STGM_CREATE | STGM_WRITE | STGM_SHARE_EXCLUSIVE).get());
    storage_ = Storage::no_scribble;
    saved_ = true;
    saved_in_place_ = same_as_loaded != FALSE;
  });
}

HRESULT ControlSettings::SaveCompleted(IStorage* storage) {
  if (storage_ == Storage::none || storage_ == Storage::ready) return E_UNEXPECTED;
  if (storage_ == Storage::hands_off && !storage) return E_INVALIDARG;
  storage_ = Storage::ready;
  if (!std::exchange(saved_, false)) return S_OK;
  if (saved_in_place_ || storage) clear_dirty();
  tell_of_save();
  return S_OK;
}

HRESULT ControlSettings::HandsOffStorage() {
  if (storage_ == Storage::none) return E_UNEXPECTED;
  storage_ = Storage::hands_off;
  return S_OK;
}

}  // namespace tornby::automation
