#include "automation/controls/control_data.h"

#include <algorithm>

#include "automation/com/enumerator.h"

namespace tornby::automation {

template <>
struct EnumeratorItem<FORMATETC> {
  using Kept = FORMATETC;
  static HRESULT copy(const Kept& kept, FORMATETC* out) {
    *out = kept;
    return S_OK;
  }
  static void free(FORMATETC*) {}
};

template <>
struct EnumeratorItem<STATDATA> {
  using Kept = ControlData::Connection;
  static HRESULT copy(const Kept& kept, STATDATA* out) {
    *out = {kept.format, kept.flags, ComPtr<IAdviseSink>(kept.sink).detach(), kept.number};
    return S_OK;
  }
  static void free(STATDATA* item) { item->pAdvSink->Release(); }
};

namespace {

constexpr FORMATETC formats[] = {{CF_METAFILEPICT, nullptr, DVASPECT_CONTENT, -1, TYMED_MFPICT},
                                 {CF_ENHMETAFILE, nullptr, DVASPECT_CONTENT, -1, TYMED_ENHMF}};

struct CloseMetafile {
  void operator()(HMETAFILE file) const { ::DeleteMetaFile(file); }
};

/// A metafile being recorded; given up unless it is finished.
class Recording {
 public:
  explicit Recording(HDC context) : context_(context) {
    if (!context) throw ComError(E_OUTOFMEMORY);
  }
  Recording(const Recording&) = delete;
  Recording& operator=(const Recording&) = delete;
  ~Recording() {
    if (!context_) return;
    if (::GetObjectType(context_) == OBJ_METADC)
      ::DeleteMetaFile(::CloseMetaFile(context_));
    else
      ::DeleteEnhMetaFile(::CloseEnhMetaFile(context_));
  }
  HDC context() const { return context_; }
  HDC finish() { return std::exchange(context_, nullptr); }

 private:
  HDC context_;
};

/// Counted in hundredths of a millimetre, finer than any screen.
HGLOBAL metafile_picture(windows::WindowHost& host, SIZEL himetric) {
  Recording recording(::CreateMetaFileW(nullptr));
  ::SetMapMode(recording.context(), MM_ANISOTROPIC);
  ::SetWindowOrgEx(recording.context(), 0, 0, nullptr);
  ::SetWindowExtEx(recording.context(), himetric.cx, himetric.cy, nullptr);
  host.draw(recording.context(), {0, 0, himetric.cx, himetric.cy});
  std::unique_ptr<std::remove_pointer_t<HMETAFILE>, CloseMetafile> file(::CloseMetaFile(recording.finish()));
  const HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE, sizeof(METAFILEPICT));
  if (!file || !block) {
    ::GlobalFree(block);
    throw ComError(E_OUTOFMEMORY);
  }
  auto* picture = static_cast<METAFILEPICT*>(::GlobalLock(block));
  *picture = {MM_ANISOTROPIC, himetric.cx, himetric.cy, file.release()};
  ::GlobalUnlock(block);
  return block;
}

HENHMETAFILE enhanced_metafile(windows::WindowHost& host, SIZEL himetric) {
  const RECT frame = {0, 0, himetric.cx, himetric.cy};
  Recording recording(::CreateEnhMetaFileW(nullptr, nullptr, &frame, nullptr));
  const HDC context = recording.context();
  // The frame in units of the device that the metafile refers to.
  const auto in_units = [&](LONG length, int units, int millimetres) {
    return ::MulDiv(length, ::GetDeviceCaps(context, units), 100 * ::GetDeviceCaps(context, millimetres));
  };
  host.draw(context, {0, 0, in_units(himetric.cx, HORZRES, HORZSIZE), in_units(himetric.cy, VERTRES, VERTSIZE)});
  const HENHMETAFILE file = ::CloseEnhMetaFile(recording.finish());
  if (!file) throw ComError(E_OUTOFMEMORY);
  return file;
}

}  // namespace

HRESULT ControlData::QueryGetData(FORMATETC* format) {
  if (!format) return E_POINTER;
  if (format->dwAspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  if (format->lindex != -1) return DV_E_LINDEX;
  for (const FORMATETC& offered : formats)
    if (offered.cfFormat == format->cfFormat) return offered.tymed & format->tymed ? S_OK : DV_E_TYMED;
  return DV_E_FORMATETC;
}

HRESULT ControlData::GetData(FORMATETC* format, STGMEDIUM* medium) {
  if (!medium) return E_POINTER;
  *medium = {};
  if (const HRESULT result = QueryGetData(format); FAILED(result)) return result;
  return run([&] {
    make_ready();
    SIZEL himetric = {};
    check(extent(DVASPECT_CONTENT, &himetric));
    if (himetric.cx <= 0 || himetric.cy <= 0) throw ComError(OLE_E_BLANK);
    if (format->cfFormat == CF_METAFILEPICT) {
      medium->hMetaFilePict = metafile_picture(host(), himetric);
      medium->tymed = TYMED_MFPICT;
    } else {
      medium->hEnhMetaFile = enhanced_metafile(host(), himetric);
      medium->tymed = TYMED_ENHMF;
    }
  });
}

HRESULT ControlData::GetCanonicalFormatEtc(FORMATETC* format, FORMATETC* canonical) {
  if (!format || !canonical) return E_POINTER;
  *canonical = *format;
  canonical->ptd = nullptr;  // no device gets a picture of its own
  return DATA_S_SAMEFORMATETC;
}

HRESULT ControlData::EnumFormatEtc(DWORD direction, IEnumFORMATETC** result) {
  if (!result) return E_POINTER;
  *result = nullptr;
  if (direction != DATADIR_GET) return E_NOTIMPL;
  return run([&] { *result = make_enumerator<IEnumFORMATETC, FORMATETC>({std::begin(formats), std::end(formats)}); });
}

HRESULT ControlData::DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink, DWORD* connection) {
  if (!format || !sink || !connection) return E_POINTER;
  *connection = 0;
  if (const HRESULT result = QueryGetData(format); FAILED(result)) return result;
  return run([&] {
    Connection added{*format, flags, ComPtr<IAdviseSink>(sink), last_number_ + 1};
    added.format.ptd = nullptr;
    connections_.push_back(added);
    *connection = ++last_number_;
    if ((flags & ADVF_PRIMEFIRST) != 0) tell(added);
  });
}

HRESULT ControlData::DUnadvise(DWORD connection) {
  return std::erase_if(connections_, [&](const Connection& kept) { return kept.number == connection; }) > 0
             ? S_OK
             : OLE_E_NOCONNECTION;
}

HRESULT ControlData::EnumDAdvise(IEnumSTATDATA** advises) {
  if (!advises) return E_POINTER;
  *advises = nullptr;
  return run([&] { *advises = make_enumerator<IEnumSTATDATA, STATDATA>(connections_); });
}

void ControlData::tell_data() {
  run([&] {
    for (const Connection& connection : std::vector<Connection>(connections_)) tell(connection);
  });
}

void ControlData::tell(const Connection& connection) {
  if ((connection.flags & ADVF_ONLYONCE) != 0) DUnadvise(connection.number);
  FORMATETC format = connection.format;
  STGMEDIUM medium = {};
  if ((connection.flags & ADVF_NODATA) == 0 && FAILED(GetData(&format, &medium))) return;
  connection.sink->OnDataChange(&format, &medium);
  ::ReleaseStgMedium(&medium);
}

}  // namespace tornby::automation
