// The ActiveX controls in documents: compound files that are made, saved, closed, opened again and drawn, all by the
// system's own means.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>

#include "placed_control.h"
#include "support/holdings.h"
#include "support/temporary_folder.h"

namespace tornby {
namespace {

using namespace testing;

constexpr const CLSID* all_controls[] = {&CLSID_kelLabel, &CLSID_kelHyperLabel, &CLSID_kelBrowseButton};
constexpr DWORD whole = STGM_READWRITE | STGM_SHARE_EXCLUSIVE;

struct Pixels {
  int drawn = 0;   ///< differ from a ground that no control has
  int marked = 0;  ///< differ from the control's own most frequent colour too
};

/// Of whatever draws into a memory bitmap.
template <class Draw>
Pixels pixels_of(Draw draw) {
  constexpr int width = 240, height = 60;
  const COLORREF ground = 0x00FF00;
  const HDC context = ::CreateCompatibleDC(nullptr);
  BITMAPINFO header = {};
  header.bmiHeader = {sizeof header.bmiHeader, width, height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* bits = nullptr;
  const HBITMAP bitmap = ::CreateDIBSection(context, &header, DIB_RGB_COLORS, &bits, nullptr, 0);
  const HGDIOBJ before = ::SelectObject(context, bitmap);
  const HBRUSH brush = ::CreateSolidBrush(ground);
  RECT area = {0, 0, width, height};
  ::FillRect(context, &area, brush);
  ::DeleteObject(brush);
  draw(context, area);
  ::GdiFlush();
  Pixels pixels;
  std::map<DWORD, int> colors;
  for (int i = 0; i < width * height; ++i) {
    const DWORD color = static_cast<DWORD*>(bits)[i] & 0xFFFFFF;
    if (color != ground) ++pixels.drawn, ++colors[color];
  }
  int most = 0;
  for (const auto& [color, count] : colors) most = std::max(most, count);
  pixels.marked = pixels.drawn - most;
  ::SelectObject(context, before);
  ::DeleteObject(bitmap);
  ::DeleteDC(context);
  return pixels;
}

/// A document with one embedded object.
class Document {
 public:
  Document(const std::wstring& path, bool is_new) {
    const HRESULT result =
        is_new ? ::StgCreateDocfile(path.c_str(), whole | STGM_CREATE | STGM_TRANSACTED, 0, file_.out())
               : ::StgOpenStorage(path.c_str(), nullptr, whole | STGM_TRANSACTED, nullptr, 0, file_.out());
    EXPECT_EQ(result, S_OK);
    EXPECT_EQ(is_new ? file_->CreateStorage(L"Object", whole, 0, 0, place_.out())
                     : file_->OpenStorage(L"Object", nullptr, whole, nullptr, 0, place_.out()),
              S_OK);
  }
  IStorage* place() const { return place_.get(); }
  void save(IUnknown* object) const {
    const auto persist = as<IPersistStorage>(object);
    EXPECT_EQ(::OleSave(persist.get(), place_.get(), TRUE), S_OK);
    EXPECT_EQ(persist->SaveCompleted(nullptr), S_OK);
    EXPECT_EQ(place_->Commit(STGC_DEFAULT), S_OK);
    EXPECT_EQ(file_->Commit(STGC_DEFAULT), S_OK);
  }

 private:
  ComPtr<IStorage> file_, place_;
};

/// The system's handler stands before the control, and keeps a picture of what it showed.
void make_and_save(const Server& server, const std::wstring& path, REFCLSID clsid, FakeContainer& container) {
  const Document document(path, true);
  ComPtr<IOleObject> object;
  ASSERT_EQ(::OleCreateEmbeddingHelper(clsid, nullptr, EMBDHLP_INPROC_SERVER | EMBDHLP_CREATENOW,
                                       server.factory(clsid).get(), IID_IOleObject, object.out_void()),
            S_OK);
  EXPECT_EQ(object->SetClientSite(&container), S_OK);
  ASSERT_EQ(as<IPersistStorage>(object)->InitNew(document.place()), S_OK);
  if (clsid == CLSID_kelBrowseButton) {
    as<IkelBrowseButton>(object)->put_Text(Bstr(L"C:\\kept.txt"));
    EXPECT_EQ(as<IPersistStorage>(object)->IsDirty(), S_OK);
  }
  if (clsid == CLSID_kelLabel) as<IkelLabel>(object)->put_AutoSize(VARIANT_FALSE);
  SIZEL size = {5000, 900};
  EXPECT_EQ(object->SetExtent(DVASPECT_CONTENT, &size), S_OK);
  FORMATETC format = {CF_METAFILEPICT, nullptr, DVASPECT_CONTENT, -1, TYMED_MFPICT};
  DWORD connection = 0;
  ASSERT_EQ(as<IOleCache>(object)->Cache(&format, ADVF_PRIMEFIRST, &connection), S_OK);
  EXPECT_EQ(as<IOleCache2>(object)->UpdateCache(as<IDataObject>(object).get(), UPDFCACHE_ALL, nullptr), S_OK);
  document.save(object.get());
  EXPECT_EQ(as<IPersistStorage>(object)->IsDirty(), S_FALSE);
  EXPECT_EQ(object->Close(OLECLOSE_NOSAVE), S_OK);
  object->SetClientSite(nullptr);
}

void draw_whole(IUnknown* object) {
  const auto draw = [&](HDC context, const RECT& area) {
    EXPECT_EQ(::OleDraw(object, DVASPECT_CONTENT, context, &area), S_OK);
  };
  EXPECT_GE(pixels_of(draw).drawn, 240 * 60 - 200);
}

void open_asleep_and_draw(const Server& server, const std::wstring& path, REFCLSID clsid) {
  const Document document(path, false);
  ComPtr<IOleObject> asleep;
  ASSERT_EQ(::OleCreateDefaultHandler(clsid, nullptr, IID_IOleObject, asleep.out_void()), S_OK);
  ASSERT_EQ(as<IPersistStorage>(asleep)->Load(document.place()), S_OK);
  draw_whole(asleep.get());
  EXPECT_TRUE(server.is_idle()) << "nobody woke the control";
}

void open_and_draw(const std::wstring& path, REFCLSID clsid, FakeContainer& container) {
  const Document document(path, false);
  ComPtr<IOleObject> object;
  ASSERT_EQ(::OleLoad(document.place(), IID_IOleObject, &container, object.out_void()), S_OK);
  if (clsid == CLSID_kelBrowseButton) {
    Bstr text;
    as<IkelBrowseButton>(object)->get_Text(text.address());
    EXPECT_STREQ(text, L"C:\\kept.txt");
  }
  SIZEL size = {};
  EXPECT_EQ(object->GetExtent(DVASPECT_CONTENT, &size), S_OK);
  EXPECT_NEAR(size.cx, 5000, 14) << "documents leave the size to the object";
  draw_whole(object.get());
  object->Close(OLECLOSE_NOSAVE);
  object->SetClientSite(nullptr);
}

TEST(ControlsInDocument, AreSavedAndDrawnAndLeaveNothingBehind) {
  const OleLibraries ole;
  const Server server;
  const ManifestActivation manifest;
  const TemporaryFolder folder;
  FakeContainer container;
  const std::wstring path = (folder.path() / "document").wstring();
  expect_nothing_left_behind([&] {
    for (const CLSID* clsid : all_controls) {
      make_and_save(server, path, *clsid, container);
      open_asleep_and_draw(server, path, *clsid);
      open_and_draw(path, *clsid, container);
    }
  });
  EXPECT_EQ(container.references(), 0u);
  EXPECT_TRUE(server.is_idle());
}

TEST(ControlsInDocument, FollowTheOrderOfStorageCalls) {
  const Server server;
  const TemporaryFolder folder;
  const Document document((folder.path() / "document").wstring(), true);
  const auto control = server.create<IkelBrowseButton>(CLSID_kelBrowseButton);
  const auto storage = as<IPersistStorage>(control);
  EXPECT_EQ(storage->SaveCompleted(nullptr), E_UNEXPECTED);
  EXPECT_EQ(storage->InitNew(document.place()), S_OK);
  EXPECT_EQ(storage->InitNew(document.place()), CO_E_ALREADYINITIALIZED);
  control->put_MaxLength(7);
  EXPECT_EQ(storage->Save(document.place(), FALSE), S_OK);
  EXPECT_EQ(storage->HandsOffStorage(), S_OK);
  EXPECT_EQ(storage->Save(document.place(), FALSE), E_UNEXPECTED);
  EXPECT_EQ(storage->SaveCompleted(nullptr), E_INVALIDARG);
  EXPECT_EQ(storage->IsDirty(), S_OK) << "a copy only, so far";
  EXPECT_EQ(storage->SaveCompleted(document.place()), S_OK);
  EXPECT_EQ(storage->IsDirty(), S_FALSE);

  // The stream in the storage is one like any other.
  ComPtr<IStream> contents;
  ASSERT_EQ(document.place()->OpenStream(L"Contents", nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, contents.out()),
            S_OK);
  const auto other = server.create<IkelBrowseButton>(CLSID_kelBrowseButton);
  EXPECT_EQ(as<IPersistStreamInit>(other)->Load(contents.get()), S_OK);
  LONG length = 0;
  other->get_MaxLength(&length);
  EXPECT_EQ(length, 7);
}

// A control's metafiles hold all that it draws, and who asked hears of each change.
TEST(ControlsInDocument, OfferTheirPictureAsData) {
  const Server server;
  for (const CLSID* clsid : all_controls) {
    const auto data = server.create<IDataObject>(*clsid);
    SIZEL size = {6350, 1587};
    if (*clsid == CLSID_kelLabel) as<IkelLabel>(data)->put_AutoSize(VARIANT_FALSE);
    as<IOleObject>(data)->SetExtent(DVASPECT_CONTENT, &size);
    ComPtr<IEnumFORMATETC> formats;
    ASSERT_EQ(data->EnumFormatEtc(DATADIR_GET, formats.out()), S_OK);
    FORMATETC format = {};
    int offered = 0;
    for (; formats->Next(1, &format, nullptr) == S_OK; ++offered) {
      STGMEDIUM medium = {};
      ASSERT_EQ(data->GetData(&format, &medium), S_OK);
      const Pixels pixels = pixels_of([&](HDC context, const RECT& area) {
        if (medium.tymed == TYMED_ENHMF) {
          ::PlayEnhMetaFile(context, medium.hEnhMetaFile, &area);
          return;
        }
        const auto* picture = static_cast<METAFILEPICT*>(::GlobalLock(medium.hMetaFilePict));
        ::SetMapMode(context, MM_ANISOTROPIC);
        ::SetViewportExtEx(context, area.right, area.bottom, nullptr);
        ::PlayMetaFile(context, picture->hMF);
        ::GlobalUnlock(medium.hMetaFilePict);
      });
      EXPECT_GE(pixels.drawn, 240 * 60 - 400) << format.cfFormat;
      EXPECT_GE(pixels.marked, 30) << format.cfFormat << ": text or a button";
      ::ReleaseStgMedium(&medium);
    }
    EXPECT_EQ(offered, 2);
    const std::pair<FORMATETC, HRESULT> refused[] = {
        {{CF_TEXT, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL}, DV_E_FORMATETC},
        {{CF_ENHMETAFILE, nullptr, DVASPECT_ICON, -1, TYMED_ENHMF}, DV_E_DVASPECT},
        {{CF_ENHMETAFILE, nullptr, DVASPECT_CONTENT, 0, TYMED_ENHMF}, DV_E_LINDEX},
        {{CF_ENHMETAFILE, nullptr, DVASPECT_CONTENT, -1, TYMED_MFPICT}, DV_E_TYMED}};
    for (auto [wanted, answer] : refused) {
      STGMEDIUM medium = {};
      EXPECT_EQ(data->GetData(&wanted, &medium), answer);
    }
  }

  FakeView view;
  const auto label = server.create<IkelLabel>(CLSID_kelLabel);
  const auto data = as<IDataObject>(label);
  FORMATETC format = {CF_ENHMETAFILE, nullptr, DVASPECT_CONTENT, -1, TYMED_ENHMF};
  DWORD always = 0, once = 0;
  EXPECT_EQ(data->DAdvise(&format, 0, &view, &always), S_OK);
  EXPECT_EQ(data->DAdvise(&format, ADVF_ONLYONCE | ADVF_NODATA, &view, &once), S_OK);
  label->put_Caption(Bstr(L"one change"));
  EXPECT_EQ(view.data, "picture none ");
  label->put_Caption(Bstr(L"another change"));
  EXPECT_EQ(view.data, "picture none picture ");
  EXPECT_EQ(data->DUnadvise(once), OLE_E_NOCONNECTION);
  EXPECT_EQ(data->DUnadvise(always), S_OK);
  EXPECT_EQ(view.references(), 0u);
}

}  // namespace
}  // namespace tornby
