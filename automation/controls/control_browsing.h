// What designers show of a control's properties: pages, names in place of numbers, categories; and a control made ready
// in one call.
#pragma once

#include <span>

#include "automation/controls/control_embedding.h"
#include "automation/controls/control_form.h"
#include "automation/controls/control_view.h"

/// As the system defines it, in a header that not every compiler brings.
struct ICategorizeProperties : public IUnknown {
  virtual HRESULT STDMETHODCALLTYPE MapPropertyToCategory(DISPID property, int* category) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetCategoryName(int category, LCID locale, BSTR* name) = 0;
};
__CRT_UUID_DECL(ICategorizeProperties, 0x4D07FC10, 0xF931, 0x11CE, 0xB0, 0x01, 0x00, 0xAA, 0x00, 0x68, 0x84, 0xE5)

namespace tornby::automation {

/// What designers know of one property beside its type.
struct PropertyTraits {
  enum class Page { own, color, font, picture };
  struct Choice {
    SHORT value;
    const wchar_t* name;
  };

  DISPID id;
  int category;
  Page page = Page::own;
  std::span<const Choice> choices = {};
};

// The categories that all designers know.
constexpr int font_category = -3;
constexpr int appearance_category = -5;
constexpr int behavior_category = -6;
constexpr int text_category = -9;

class ControlBrowsing : public ISpecifyPropertyPages,
                        public IPerPropertyBrowsing,
                        public ICategorizeProperties,
                        public IQuickActivate,
                        public ControlEmbedding,
                        public ControlForm,
                        public ControlView {
 public:
  HRESULT STDMETHODCALLTYPE GetPages(CAUUID* pages) override;

  HRESULT STDMETHODCALLTYPE GetDisplayString(DISPID property, BSTR* text) override;
  HRESULT STDMETHODCALLTYPE MapPropertyToPage(DISPID property, CLSID* page) override;
  HRESULT STDMETHODCALLTYPE GetPredefinedStrings(DISPID property, CALPOLESTR* names, CADWORD* cookies) override;
  HRESULT STDMETHODCALLTYPE GetPredefinedValue(DISPID property, DWORD cookie, VARIANT* value) override;

  HRESULT STDMETHODCALLTYPE MapPropertyToCategory(DISPID property, int* category) override;
  HRESULT STDMETHODCALLTYPE GetCategoryName(int category, LCID locale, BSTR* name) override;

  HRESULT STDMETHODCALLTYPE QuickActivate(QACONTAINER* container, QACONTROL* control) override;
  HRESULT STDMETHODCALLTYPE SetContentExtent(LPSIZEL himetric) override {
    return SetExtent(DVASPECT_CONTENT, himetric);
  }
  HRESULT STDMETHODCALLTYPE GetContentExtent(LPSIZEL himetric) override { return extent(DVASPECT_CONTENT, himetric); }

 protected:
  /// What designers are told; other properties have no traits.
  virtual std::span<const PropertyTraits> traits() const = 0;
  /// Those who hear of the control's events.
  virtual ConnectionPoint& event_sinks() = 0;

  void show_properties(HWND parent) override;

 private:
  const PropertyTraits* find(DISPID property) const;
};

}  // namespace tornby::automation
