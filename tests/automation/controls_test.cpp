// The ActiveX controls in a container that states which calls it expects.
#include <gtest/gtest.h>

#include "fake_container.h"

namespace tornby {
namespace {

using testing::Bstr;
using testing::ComPtr;
using testing::FakeBag;
using testing::FakeContainer;
using testing::FakeSink;
using testing::OwnedVariant;
using testing::Server;

template <class Interface, class Object>
ComPtr<Interface> as(const Object& object) {
  ComPtr<Interface> answer;
  EXPECT_EQ(object->QueryInterface(__uuidof(Interface), answer.out_void()), S_OK);
  return answer;
}

/// Connects a sink to one outgoing interface for as long as it lives.
class Connection {
 public:
  template <class Object>
  Connection(const Object& object, REFIID iid, IUnknown* sink) {
    EXPECT_EQ(as<IConnectionPointContainer>(object)->FindConnectionPoint(iid, point_.out()), S_OK);
    EXPECT_EQ(point_->Advise(sink, &cookie_), S_OK);
  }
  ~Connection() { leave(); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  void leave() {
    if (point_) point_->Unadvise(cookie_);
    point_ = ComPtr<IConnectionPoint>();
  }

 private:
  ComPtr<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

/// A control in a container, active in place.
template <class Interface>
struct Placed {
  Placed(const Server& server, REFCLSID clsid, FakeContainer& place)
      : container(place), control(server.create<Interface>(clsid)) {
    object = as<IOleObject>(control);
    in_place = as<IOleInPlaceObject>(control);
    container.active = in_place.get();
    EXPECT_EQ(as<IPersistStreamInit>(control)->InitNew(), S_OK);
    EXPECT_EQ(object->SetClientSite(&container), S_OK);
    EXPECT_EQ(object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, &container, 0, container.window(), &container.place),
              S_OK);
    EXPECT_EQ(in_place->GetWindow(&window), S_OK);
  }
  ~Placed() {
    if (!object) return;
    object->Close(OLECLOSE_NOSAVE);
    object->SetClientSite(nullptr);
    container.active = nullptr;
  }

  FakeContainer& container;
  ComPtr<Interface> control;
  ComPtr<IOleObject> object;
  ComPtr<IOleInPlaceObject> in_place;
  HWND window = nullptr;
};

TEST(Controls, ActivateAndDeactivateInOrder) {
  const Server server;
  for (const CLSID* clsid : {&CLSID_kelLabel, &CLSID_kelHyperLabel, &CLSID_kelBrowseButton}) {
    FakeContainer container;
    {
      Placed<IDispatch> placed(server, *clsid, container);
      EXPECT_TRUE(::IsWindow(placed.window));
      EXPECT_EQ(::GetParent(placed.window), container.window());
      EXPECT_EQ(container.calls().find("OnInPlaceActivate GetWindowContext "), 0u);
      EXPECT_EQ(placed.object->DoVerb(OLEIVERB_UIACTIVATE, nullptr, &container, 0, nullptr, nullptr), S_OK);
      EXPECT_EQ(placed.object->DoVerb(OLEIVERB_UIACTIVATE, nullptr, &container, 0, nullptr, nullptr), S_OK);
      EXPECT_EQ(container.calls(), "OnUIActivate ");
      EXPECT_EQ(placed.in_place->InPlaceDeactivate(), S_OK);
      EXPECT_EQ(container.calls(), "OnUIDeactivate OnInPlaceDeactivate ");
      EXPECT_EQ(placed.in_place->InPlaceDeactivate(), S_OK);
      EXPECT_EQ(container.calls(), "");
      EXPECT_FALSE(::IsWindow(placed.window));
      EXPECT_EQ(placed.object->DoVerb(OLEIVERB_SHOW, nullptr, &container, 0, nullptr, nullptr), S_OK);
      EXPECT_EQ(placed.object->DoVerb(1234, nullptr, &container, 0, nullptr, nullptr), OLEOBJ_S_INVALIDVERB);
      EXPECT_EQ(placed.object->DoVerb(-1234, nullptr, &container, 0, nullptr, nullptr), E_NOTIMPL);
    }
    EXPECT_TRUE(server.is_idle());
  }
}

TEST(Controls, AContainerMayRefuse) {
  const Server server;
  FakeContainer container;
  container.allows_activation = false;
  const auto object = server.create<IOleObject>(CLSID_kelLabel);
  EXPECT_EQ(object->DoVerb(OLEIVERB_SHOW, nullptr, nullptr, 0, nullptr, nullptr), E_UNEXPECTED) << "without a site";
  object->SetClientSite(&container);
  EXPECT_EQ(object->DoVerb(OLEIVERB_SHOW, nullptr, nullptr, 0, nullptr, nullptr), E_FAIL);
  EXPECT_EQ(container.calls(), "");
  object->SetClientSite(nullptr);
}

TEST(Controls, TellOfChangedProperties) {
  const Server server;
  FakeContainer container;
  FakeSink sink;
  Placed<IkelLabel> placed(server, CLSID_kelLabel, container);
  const Connection notices(placed.control, IID_IPropertyNotifySink, static_cast<IPropertyNotifySink*>(&sink));
  EXPECT_EQ(placed.control->put_Caption(Bstr(L"A caption")), S_OK);
  EXPECT_EQ(placed.control->put_VerticalAlignment(2), S_OK);
  EXPECT_EQ(sink.changes, (std::vector<DISPID>{DISPID_CAPTION, 4}));
  EXPECT_EQ(as<IPersistStreamInit>(placed.control)->IsDirty(), S_OK);

  ComPtr<IFontDisp> disp;
  ASSERT_EQ(placed.control->get_Font(disp.out()), S_OK);
  sink.changes.clear();
  EXPECT_EQ(as<IFont>(disp)->put_Bold(TRUE), S_OK);
  ASSERT_FALSE(sink.changes.empty()) << "a change of the font object is one of the control";
  EXPECT_EQ(sink.changes[0], DISPID_FONT);
  ComPtr<IFontDisp> again;
  ASSERT_EQ(placed.control->get_Font(again.out()), S_OK);
  BOOL bold = FALSE;
  as<IFont>(again)->get_Bold(&bold);
  EXPECT_TRUE(bold);
  EXPECT_EQ(static_cast<ULONG>(placed.control->putref_Font(nullptr)), 0x800A005Bul);
}

TEST(Controls, RaiseEventsUnlessFrozen) {
  const Server server;
  FakeContainer container;
  FakeSink sink;
  Placed<IkelLabel> placed(server, CLSID_kelLabel, container);
  const Connection events(placed.control, __uuidof(DkelLabelEvents), static_cast<IDispatch*>(&sink));
  std::int16_t button = 0;
  sink.on_event = [&](DISPID, DISPPARAMS* parameters) {
    if (parameters->cArgs == 1 && parameters->rgvarg[0].vt == (VT_BYREF | VT_I2)) button = *parameters->rgvarg[0].piVal;
  };
  ::SendMessageA(placed.window, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(5, 5));
  ::SendMessageA(placed.window, WM_RBUTTONUP, 0, MAKELPARAM(5, 5));
  EXPECT_EQ(sink.events, (std::vector<DISPID>{1, 2}));
  EXPECT_EQ(button, 2);

  const auto control = as<IOleControl>(placed.control);
  sink.events.clear();
  EXPECT_EQ(control->FreezeEvents(TRUE), S_OK);
  ::SendMessageA(placed.window, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
  EXPECT_TRUE(sink.events.empty());
  EXPECT_EQ(control->FreezeEvents(FALSE), S_OK);
  EXPECT_EQ(control->FreezeEvents(FALSE), E_UNEXPECTED);
  ::SendMessageA(placed.window, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
  EXPECT_EQ(sink.events, (std::vector<DISPID>{2}));
}

TEST(Controls, SurviveWhatASinkDoesInsideAnEvent) {
  const Server server;
  FakeContainer container;
  FakeSink sink;
  {
    Placed<IkelLabel> placed(server, CLSID_kelLabel, container);
    Connection events(placed.control, __uuidof(DkelLabelEvents), static_cast<IDispatch*>(&sink));
    sink.on_event = [&](DISPID, DISPPARAMS*) { events.leave(); };
    ::SendMessageA(placed.window, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    ::SendMessageA(placed.window, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    EXPECT_EQ(sink.events.size(), 1u);
  }
  sink.events.clear();
  Placed<IkelLabel> placed(server, CLSID_kelLabel, container);
  Connection events(placed.control, __uuidof(DkelLabelEvents), static_cast<IDispatch*>(&sink));
  sink.on_event = [&](DISPID, DISPPARAMS*) {  // the form closes and forgets the control
    events.leave();
    placed.object->Close(OLECLOSE_NOSAVE);
    placed.object->SetClientSite(nullptr);
    container.active = nullptr;
    placed.in_place = ComPtr<IOleInPlaceObject>();
    placed.object = ComPtr<IOleObject>();
    placed.control = ComPtr<IkelLabel>();
  };
  ::SendMessageA(placed.window, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
  EXPECT_EQ(sink.events.size(), 1u);
  EXPECT_TRUE(server.is_idle());
}

TEST(Controls, KeepTheirSettingsInABag) {
  const Server server;
  FakeBag bag;
  const auto control = server.create<IkelHyperLabel>(CLSID_kelHyperLabel);
  const auto storage = as<IPersistPropertyBag>(control);
  ASSERT_EQ(storage->InitNew(), S_OK);
  control->put_Caption(Bstr(L"A link"));
  control->put_LinkColor(0x008000);
  control->put_HoverColor(0x112233);
  ASSERT_EQ(storage->Save(&bag, TRUE, FALSE), S_OK);
  EXPECT_STREQ(bag.values[L"Caption"].bstrVal, L"A link");
  EXPECT_EQ(bag.values[L"HoverColor"].lVal, 0x112233);
  EXPECT_EQ(bag.values.count(L"LinkColor"), 0u) << "what writing takes for the default is not stored";
  EXPECT_EQ(bag.values.count(L"ClickColor"), 0u);

  const auto other = server.create<IkelHyperLabel>(CLSID_kelHyperLabel);
  ASSERT_EQ(as<IPersistPropertyBag>(other)->Load(&bag, nullptr), S_OK);
  OLE_COLOR color = 0;
  other->get_LinkColor(&color);
  EXPECT_EQ(color, 0xD54600u) << "and reads back as another";
  other->get_HoverColor(&color);
  EXPECT_EQ(color, 0x112233u);
}

TEST(Controls, KeepTheirSettingsInAStream) {
  const Server server;
  ComPtr<IStream> stream;
  ASSERT_EQ(::CreateStreamOnHGlobal(nullptr, TRUE, stream.out()), S_OK);
  const auto control = server.create<IkelBrowseButton>(CLSID_kelBrowseButton);
  const auto storage = as<IPersistStreamInit>(control);
  ASSERT_EQ(storage->InitNew(), S_OK);
  control->put_Text(Bstr(L"C:\\data\\\u0416.txt"));
  control->put_MaxLength(40);
  control->put_Locked(VARIANT_TRUE);
  ASSERT_EQ(storage->Save(stream.get(), TRUE), S_OK);
  EXPECT_EQ(storage->IsDirty(), S_FALSE);

  const LARGE_INTEGER start = {};
  stream->Seek(start, STREAM_SEEK_SET, nullptr);
  const auto other = server.create<IkelBrowseButton>(CLSID_kelBrowseButton);
  FakeSink sink;
  const Connection notices(other, IID_IPropertyNotifySink, static_cast<IPropertyNotifySink*>(&sink));
  ASSERT_EQ(as<IPersistStreamInit>(other)->Load(stream.get()), S_OK);
  EXPECT_TRUE(sink.changes.empty()) << "loading is no change";
  Bstr text(L"");
  ::SysFreeString(std::exchange(*text.address(), nullptr));
  other->get_Text(text.address());
  EXPECT_STREQ(text, L"C:\\data\\\u0416.txt");
  LONG length = 0;
  other->get_MaxLength(&length);
  EXPECT_EQ(length, 40);

  stream->Seek(start, STREAM_SEEK_SET, nullptr);
  stream->Write("nonsense, and more of it", 24, nullptr);
  stream->Seek(start, STREAM_SEEK_SET, nullptr);
  EXPECT_EQ(static_cast<ULONG>(as<IPersistStreamInit>(other)->Load(stream.get())), 0x800A000Dul);
}

TEST(Controls, AreDrawnWithoutSiteOrWindow) {
  const Server server;
  for (const CLSID* clsid : {&CLSID_kelLabel, &CLSID_kelHyperLabel, &CLSID_kelBrowseButton}) {
    const auto object = server.create<IOleObject>(*clsid);
    const auto view = as<IViewObject2>(object);
    if (*clsid == CLSID_kelLabel) as<IkelLabel>(object)->put_AutoSize(VARIANT_FALSE);  // or it takes its text's size
    SIZEL size = {4233, 1058};                                                         // 160 by 40 pixels
    EXPECT_EQ(object->SetExtent(DVASPECT_CONTENT, &size), S_OK);
    SIZEL now = {};
    EXPECT_EQ(view->GetExtent(DVASPECT_CONTENT, -1, nullptr, &now), S_OK);
    EXPECT_EQ(now.cx, 4233);
    const HDC metafile = ::CreateEnhMetaFileA(nullptr, nullptr, nullptr, "drawing");
    const RECTL area = {0, 0, 160, 40};
    EXPECT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, metafile, &area, nullptr, nullptr, 0), S_OK);
    EXPECT_EQ(view->Draw(DVASPECT_ICON, -1, nullptr, nullptr, nullptr, metafile, &area, nullptr, nullptr, 0),
              DV_E_DVASPECT);
    const HENHMETAFILE drawing = ::CloseEnhMetaFile(metafile);
    ENHMETAHEADER header = {};
    ::GetEnhMetaFileHeader(drawing, sizeof header, &header);
    EXPECT_GT(header.nRecords, 2u) << "more than the header and the end";
    ::DeleteEnhMetaFile(drawing);
  }
}

TEST(Controls, TakeFontAndNameFromTheContainer) {
  const Server server;
  FakeContainer container;
  FONTDESC description = {};
  description.cbSizeofstruct = sizeof description;
  description.lpstrName = const_cast<LPOLESTR>(L"DejaVu Sans");
  description.cySize.int64 = 120000;
  description.sWeight = FW_BOLD;
  ComPtr<IFontDisp> font;
  ASSERT_EQ(::OleCreateFontIndirect(&description, IID_IFontDisp, font.out_void()), S_OK);
  VARIANT value;
  ::VariantInit(&value);
  value.vt = VT_DISPATCH;
  value.pdispVal = reinterpret_cast<IDispatch*>(font.get());
  container.add_ambient(DISPID_AMBIENT_FONT, value);
  OwnedVariant name(testing::string_variant(L"Link7"));
  container.add_ambient(DISPID_AMBIENT_DISPLAYNAME, *name);

  const auto control = server.create<IkelHyperLabel>(CLSID_kelHyperLabel);
  const auto object = as<IOleObject>(control);
  object->SetClientSite(&container);
  FakeBag empty;
  ASSERT_EQ(as<IPersistPropertyBag>(control)->Load(&empty, nullptr), S_OK);
  Bstr caption(L"");
  ::SysFreeString(std::exchange(*caption.address(), nullptr));
  control->get_Caption(caption.address());
  EXPECT_STREQ(caption, L"Link7");
  ComPtr<IFontDisp> own;
  ASSERT_EQ(control->get_Font(own.out()), S_OK);
  SHORT weight = 0;
  as<IFont>(own)->get_Weight(&weight);
  EXPECT_EQ(weight, FW_BOLD);
  object->SetClientSite(nullptr);
}

}  // namespace
}  // namespace tornby
