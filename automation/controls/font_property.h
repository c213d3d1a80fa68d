// A control's font as an object that its users may change: Control.Font.Bold = True takes effect.
#pragma once

#include <functional>

#include "automation/controls/change_sink.h"
#include "controls/values.h"

namespace tornby::automation {

class FontProperty {
 public:
  FontProperty(std::function<Font()> read, std::function<void(const Font&)> write);
  ~FontProperty();
  FontProperty(const FontProperty&) = delete;
  FontProperty& operator=(const FontProperty&) = delete;

  /// A font object that writes its changes back.
  ComPtr<IFontDisp> object();

  /// Takes the font that an object describes; the object itself is not kept. Raises 91 for null.
  void assign(IUnknown* font);

 private:
  void let_go();
  void take(IUnknown* font);

  std::function<Font()> read_;
  std::function<void(const Font&)> write_;
  ComPtr<IFont> font_;
  Font known_;  // what font_ stands for; the control may have got another one since
  ComPtr<ChangeSink> listener_;
  DWORD cookie_ = 0;
};

}  // namespace tornby::automation
