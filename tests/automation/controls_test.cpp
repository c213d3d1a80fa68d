// What the ActiveX controls do whether they are in place or not: notices, settings, drawing, ambient properties.
#include <gtest/gtest.h>

#include "automation/controls/pages/property_page.h"
#include "placed_control.h"

namespace tornby {
namespace {

using namespace testing;

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
  FakeBag whole;
  ASSERT_EQ(storage->Save(&whole, FALSE, TRUE), S_OK);
  EXPECT_EQ(whole.values[L"ClickColor"].lVal, 255) << "unless everything is to be saved";
  EXPECT_EQ(whole.values.count(L"Picture"), 0u) << "that there is";

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
  const std::wstring text = L"C:\\data\\\u0416.txt" + std::wstring(17'000'000, L'x');
  control->put_Text(Bstr(text.c_str()));
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
  ComPtr<IConnectionPoint> point;
  as<IConnectionPointContainer>(other)->FindConnectionPoint(IID_IPropertyNotifySink, point.out());
  DWORD cookie = 1;
  EXPECT_EQ(point->Advise(control.get(), &cookie), CONNECT_E_CANNOTCONNECT) << "what takes no notices";
  EXPECT_EQ(cookie, 0u);
  EXPECT_EQ(point->Unadvise(77), CONNECT_E_NOCONNECTION);
  LONG length = 0;
  other->get_MaxLength(&length);
  EXPECT_EQ(length, 40);
  Bstr loaded;
  other->get_Text(loaded.address());
  EXPECT_TRUE(text == static_cast<BSTR>(loaded)) << "of any length";
  other->put_MaxLength(41);
  EXPECT_EQ(as<IPersistStreamInit>(other)->IsDirty(), S_OK);
  stream->Seek(start, STREAM_SEEK_SET, nullptr);
  EXPECT_EQ(as<IPersistStreamInit>(other)->Load(stream.get()), S_OK);
  EXPECT_EQ(as<IPersistStreamInit>(other)->IsDirty(), S_FALSE);

  stream->Seek(start, STREAM_SEEK_SET, nullptr);
  stream->Write("nonsense, and more of it", 24, nullptr);
  stream->Seek(start, STREAM_SEEK_SET, nullptr);
  EXPECT_EQ(static_cast<ULONG>(as<IPersistStreamInit>(other)->Load(stream.get())), 0x800A000Dul);
}

SIZEL extent_of(IUnknown* control) {
  SIZEL himetric = {};
  EXPECT_EQ(as<IOleObject>(control)->GetExtent(DVASPECT_CONTENT, &himetric), S_OK);
  return himetric;
}

TEST(Controls, AreLaidOutWithTheirSettings) {
  const Server server;
  const auto link = server.create<IkelHyperLabel>(CLSID_kelHyperLabel);
  const SIZEL text = extent_of(link.get());
  EXPECT_GT(text.cy, 200) << "a new link is as high as its text";

  PICTDESC description = {};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_BITMAP;
  description.bmp.hbitmap = ::CreateBitmap(48, 60, 1, 1, nullptr);
  ComPtr<IPictureDisp> picture;
  ASSERT_EQ(::OleCreatePictureIndirect(&description, IID_IPictureDisp, TRUE, picture.out_void()), S_OK);
  ASSERT_EQ(link->putref_Picture(picture.get()), S_OK);
  OLE_YSIZE_HIMETRIC height = 0;  // of 60 pixels of the screen
  as<IPicture>(picture)->get_Height(&height);
  EXPECT_NEAR(extent_of(link.get()).cy, height, 30);
  ComPtr<IStream> stream;
  ASSERT_EQ(::CreateStreamOnHGlobal(nullptr, TRUE, stream.out()), S_OK);
  ASSERT_EQ(as<IPersistStreamInit>(link)->Save(stream.get(), TRUE), S_OK);
  const LARGE_INTEGER start = {};
  stream->Seek(start, STREAM_SEEK_SET, nullptr);
  const auto copy = server.create<IkelHyperLabel>(CLSID_kelHyperLabel);
  ASSERT_EQ(as<IPersistStreamInit>(copy)->Load(stream.get()), S_OK);
  EXPECT_EQ(extent_of(copy.get()).cy, extent_of(link.get()).cy);

  FakeBag bag;
  OwnedVariant caption(testing::string_variant(L"A caption that is wider than a new label's own"));
  bag.Write(L"Caption", caption.get());
  const auto label = server.create<IkelLabel>(CLSID_kelLabel);
  ASSERT_EQ(as<IPersistPropertyBag>(label)->Load(&bag, nullptr), S_OK);
  EXPECT_GT(extent_of(label.get()).cx, 4000);
}

int CALLBACK count_record(HDC, HANDLETABLE*, const ENHMETARECORD* record, int, LPARAM counts) {
  return ++(*reinterpret_cast<std::map<DWORD, int>*>(counts))[record->iType];
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
    std::map<DWORD, int> records;
    ::EnumEnhMetaFile(nullptr, drawing, &count_record, &records, nullptr);
    EXPECT_EQ(records[EMR_EXTTEXTOUTW] > 0, *clsid != CLSID_kelBrowseButton)
        << "text is text, and so as sharp as the target";
    EXPECT_GT(records[EMR_BITBLT], 0);
    EXPECT_EQ(records[EMR_STRETCHDIBITS], 0);
    ::DeleteEnhMetaFile(drawing);
  }
}

TEST(Controls, TellWhoeverWatchesTheirView) {
  const Server server;
  FakeView view;
  const auto control = server.create<IkelLabel>(CLSID_kelLabel);
  const auto object = as<IViewObject2>(control);
  EXPECT_EQ(object->SetAdvise(DVASPECT_CONTENT, 0, &view), S_OK);
  control->put_ForeColor(0xFF);
  EXPECT_EQ(view.changes, 1);
  EXPECT_EQ(object->SetAdvise(DVASPECT_CONTENT, ADVF_ONLYONCE | ADVF_PRIMEFIRST, &view), S_OK);
  control->put_ForeColor(0xFF00);
  EXPECT_EQ(view.changes, 2) << "at once, and then no more";
  EXPECT_EQ(view.references(), 0u);
  EXPECT_EQ(object->SetAdvise(DVASPECT_ICON, 0, &view), S_OK);
  control->put_ForeColor(0xFF0000);
  EXPECT_EQ(view.changes, 2);
  object->SetAdvise(0, 0, nullptr);

  const auto link = server.create<IkelHyperLabel>(CLSID_kelHyperLabel);
  EXPECT_EQ(link->put_Caption(Bstr(L"first")), S_OK);
  EXPECT_EQ(as<IViewObject2>(link)->SetAdvise(DVASPECT_CONTENT, 0, &view), S_OK);
  EXPECT_EQ(link->put_Caption(Bstr(L"changes no property that is told")), S_OK);
  EXPECT_EQ(view.changes, 3) << "but the picture, once";
  as<IViewObject2>(link)->SetAdvise(0, 0, nullptr);
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
  EXPECT_EQ(container.calls(), "");
  ASSERT_EQ(as<IPersistPropertyBag>(control)->Load(&empty, nullptr), S_OK);
  EXPECT_EQ(container.calls(), "Ambient" + std::to_string(DISPID_AMBIENT_DISPLAYNAME) + " Ambient" +
                                   std::to_string(DISPID_AMBIENT_FONT) + " ");
  Bstr caption;
  control->get_Caption(caption.address());
  EXPECT_STREQ(caption, L"Link7");
  ComPtr<IFontDisp> own;
  const auto weight = [&] {
    SHORT answer = 0;
    control->get_Font(own.out());
    as<IFont>(own)->get_Weight(&answer);
    return answer;
  };
  EXPECT_EQ(weight(), FW_BOLD);

  // Both follow the form while they have what it offers, and only then.
  const auto label = server.create<IkelLabel>(CLSID_kelLabel);
  VARIANT color = testing::long_variant(0x203040);
  container.add_ambient(DISPID_AMBIENT_BACKCOLOR, color);
  container.add_ambient(DISPID_AMBIENT_FORECOLOR, color);
  as<IOleObject>(label)->SetClientSite(&container);
  label->put_ForeColor(1);
  as<IFont>(font)->put_Weight(FW_NORMAL);
  color.lVal = 0x505050;
  container.add_ambient(DISPID_AMBIENT_BACKCOLOR, color);
  container.add_ambient(DISPID_AMBIENT_FORECOLOR, color);
  for (IUnknown* one : {static_cast<IUnknown*>(control.get()), static_cast<IUnknown*>(label.get())})
    EXPECT_EQ(as<IOleControl>(ComPtr<IUnknown>(one))->OnAmbientPropertyChange(DISPID_UNKNOWN), S_OK);
  EXPECT_EQ(weight(), FW_NORMAL);
  OLE_COLOR back = 0, fore = 0;
  label->get_BackColor(&back);
  label->get_ForeColor(&fore);
  EXPECT_EQ(back, 0x505050u);
  EXPECT_EQ(fore, 1u);
  as<IOleObject>(label)->SetClientSite(nullptr);
  object->SetClientSite(nullptr);
}

TEST(Controls, FollowTheFormsDirectionLookAndDefaultButton) {
  const Server server;
  FakeContainer container;
  const DISPID all[] = {DISPID_AMBIENT_RIGHTTOLEFT, DISPID_AMBIENT_APPEARANCE, DISPID_AMBIENT_DISPLAYASDEFAULT};
  const auto offer = [&](DISPID id, VARTYPE type, SHORT value) {
    VARIANT ambient = testing::short_variant(value);
    ambient.vt = type;
    container.add_ambient(id, ambient);
  };
  offer(all[0], VT_BOOL, VARIANT_TRUE);
  offer(all[1], VT_I2, 0);
  offer(all[2], VT_BOOL, VARIANT_TRUE);
  const auto control = server.create<IkelBrowseButton>(CLSID_kelBrowseButton);
  const auto object = as<IOleObject>(control);
  object->SetClientSite(&container);
  as<IPersistStreamInit>(control)->InitNew();
  ASSERT_EQ(object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, &container, 0, container.window(), nullptr), S_OK);
  HWND window = nullptr;
  as<IOleInPlaceObject>(control)->GetWindow(&window);
  const auto expect = [&](bool from_right, SHORT border, bool is_default) {
    EXPECT_EQ((::GetWindowLongA(::GetWindow(window, GW_CHILD), GWL_STYLE) & ES_RIGHT) != 0, from_right);
    SHORT shown = -1;
    control->get_BorderApperance(&shown);
    EXPECT_EQ(shown, border);
    ::UpdateWindow(window);
    RECT client = {};
    ::GetClientRect(window, &client);
    const HDC context = ::GetDC(window);
    EXPECT_EQ(::GetPixel(context, client.right - 5, 0) == ::GetSysColor(COLOR_BTNTEXT), is_default);
    ::ReleaseDC(window, context);
  };
  expect(true, 0, true);
  const auto form = as<IOleControl>(control);
  offer(all[0], VT_BSTR, 0);
  form->OnAmbientPropertyChange(all[0]);
  expect(false, 0, true);
  for (const DISPID id : all) offer(id, VT_BOOL, VARIANT_TRUE);
  offer(all[1], VT_UI4, 1);
  form->OnAmbientPropertyChange(DISPID_UNKNOWN);
  expect(true, 1, true);
  offer(all[1], VT_I2, 7);  // a look that there is not
  offer(all[2], VT_EMPTY, 0);
  form->OnAmbientPropertyChange(DISPID_UNKNOWN);
  expect(true, 1, false);

  FakeView view;
  as<IViewObject2>(control)->SetAdvise(DVASPECT_CONTENT, 0, &view);
  container.calls();
  for (const DISPID unknown : {-5999, -1000, 17}) EXPECT_EQ(form->OnAmbientPropertyChange(unknown), S_OK);
  EXPECT_EQ(view.changes, 0);
  EXPECT_EQ(container.calls(), "");
  as<IViewObject2>(control)->SetAdvise(0, 0, nullptr);
  object->Close(OLECLOSE_NOSAVE);
  object->SetClientSite(nullptr);
}

TEST(Controls, ShowDesignersNamesPagesAndCategories) {
  const Server server;
  const auto pages_of = [&](REFCLSID clsid) {
    CAUUID pages = {};
    EXPECT_EQ(as<ISpecifyPropertyPages>(server.create<IDispatch>(clsid))->GetPages(&pages), S_OK);
    const std::vector<CLSID> list(pages.pElems, pages.pElems + pages.cElems);
    ::CoTaskMemFree(pages.pElems);
    return list;
  };
  EXPECT_EQ(pages_of(CLSID_kelLabel),
            (std::vector<CLSID>{automation::property_page_id, CLSID_CColorPropPage, CLSID_CFontPropPage}));
  EXPECT_EQ(pages_of(CLSID_kelHyperLabel).size(), 4u);

  const auto label = server.create<IkelLabel>(CLSID_kelLabel);
  const auto browsing = as<IPerPropertyBrowsing>(label);
  constexpr DISPID vertical = 4;
  const auto shown = [&](DISPID property) {
    BSTR text = nullptr;
    const HRESULT result = browsing->GetDisplayString(property, &text);
    const std::wstring copy = text ? text : L"";
    ::SysFreeString(text);
    return std::pair(result, copy);
  };
  EXPECT_EQ(shown(vertical), std::pair(S_OK, std::wstring(L"Centre")));
  label->put_VerticalAlignment(9);
  EXPECT_EQ(shown(vertical).first, S_FALSE) << "a number without a name";
  EXPECT_EQ(shown(DISPID_CAPTION).first, S_FALSE);
  CALPOLESTR names = {};
  CADWORD cookies = {};
  ASSERT_EQ(browsing->GetPredefinedStrings(vertical, &names, &cookies), S_OK);
  ASSERT_EQ(names.cElems, 3u);
  EXPECT_STREQ(names.pElems[2], L"Bottom");
  OwnedVariant value;
  EXPECT_EQ(browsing->GetPredefinedValue(vertical, cookies.pElems[2], value.get()), S_OK);
  EXPECT_EQ(value->iVal, 2);
  EXPECT_EQ(browsing->GetPredefinedValue(vertical, 3, value.get()), E_INVALIDARG);
  for (ULONG i = 0; i < names.cElems; ++i) ::CoTaskMemFree(names.pElems[i]);
  ::CoTaskMemFree(names.pElems);
  ::CoTaskMemFree(cookies.pElems);
  CLSID page = {};
  EXPECT_EQ(browsing->MapPropertyToPage(DISPID_FONT, &page), S_OK);
  EXPECT_EQ(page, CLSID_CFontPropPage);
  EXPECT_EQ(browsing->MapPropertyToPage(vertical, &page), S_OK);
  EXPECT_EQ(page, automation::property_page_id);
  EXPECT_EQ(browsing->MapPropertyToPage(50, &page), PERPROP_E_NOPAGEAVAILABLE);
}

TEST(Controls, AreReadyInOneCallAndOfferVerbs) {
  const Server server;
  FakeContainer container;
  FakeSink sink;
  FakeView view;
  const auto link = server.create<IkelHyperLabel>(CLSID_kelHyperLabel);
  QACONTAINER wanted = {};
  wanted.cbSize = sizeof wanted;
  wanted.pClientSite = &container;
  wanted.pAdviseSink = reinterpret_cast<IAdviseSinkEx*>(static_cast<IAdviseSink*>(&view));
  wanted.pPropertyNotifySink = &sink;
  wanted.pUnkEventSink = static_cast<IDispatch*>(&sink);
  QACONTROL got = {};
  got.cbSize = sizeof got;
  ASSERT_EQ(as<IQuickActivate>(link)->QuickActivate(&wanted, &got), S_OK);
  EXPECT_NE(got.dwMiscStatus & OLEMISC_INSIDEOUT, 0u);
  link->put_LinkColor(1);
  EXPECT_EQ(view.changes, 1);
  EXPECT_EQ(sink.changes.size(), 1u);
  as<IOleControl>(link)->OnMnemonic(nullptr);
  EXPECT_EQ(sink.events, (std::vector<DISPID>{DISPID_CLICK}));

  const auto object = as<IOleObject>(link);
  ComPtr<IEnumOLEVERB> verbs;
  ASSERT_EQ(object->EnumVerbs(verbs.out()), S_OK);
  OLEVERB verb = {};
  while (verbs->Next(1, &verb, nullptr) == S_OK) {
    ::CoTaskMemFree(verb.lpszVerbName);
    if (verb.lVerb != OLEIVERB_PRIMARY) {
      EXPECT_EQ(object->DoVerb(verb.lVerb, nullptr, &container, 0, container.window(), nullptr), S_OK);
    }
  }
  EXPECT_EQ(object->DoVerb(OLEIVERB_PROPERTIES, nullptr, &container, 0, container.window(), nullptr), S_OK);
  EXPECT_EQ(container.calls(), "ShowPropertyFrame ShowPropertyFrame ");
  as<IViewObject2>(link)->SetAdvise(0, 0, nullptr);
  object->SetClientSite(nullptr);
}

}  // namespace
}  // namespace tornby
