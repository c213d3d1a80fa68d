// One page of a property sheet, and the page's way to the sheet.
#pragma once

#include <string>

#include "automation/com/counted.h"

namespace tornby::automation {

/// What the page tells, as the sheet takes it.
class SheetSite final : public CountedAs<IPropertyPageSite> {
 public:
  /// The window of the sheet's that the page fills; null when it is gone.
  void set_place(HWND place) { place_ = place; }

  HRESULT STDMETHODCALLTYPE OnStatusChange(DWORD status) override;
  HRESULT STDMETHODCALLTYPE GetLocaleID(LCID* locale) override;
  HRESULT STDMETHODCALLTYPE GetPageContainer(IUnknown** container) override;
  HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG*) override { return S_FALSE; }

 private:
  HWND place_ = nullptr;
};

class SheetPage {
 public:
  /// Raises what creating the page or asking it fails with.
  SheetPage(REFCLSID clsid, IUnknown* object);
  ~SheetPage();
  SheetPage(const SheetPage&) = delete;
  SheetPage& operator=(const SheetPage&) = delete;

  const std::wstring& title() const { return title_; }
  SIZE size() const { return size_; }  // in pixels
  bool has_help() const { return has_help_; }

  void open(HWND place);
  void close();
  bool apply() { return SUCCEEDED(page_->Apply()); }
  void help() { page_->Help(nullptr); }

 private:
  ComPtr<IPropertyPage> page_;
  ComPtr<SheetSite> site_;
  std::wstring title_;
  SIZE size_ = {};
  bool has_help_ = false;
};

}  // namespace tornby::automation
