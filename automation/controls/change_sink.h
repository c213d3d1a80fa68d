// Hears of changes of an object's properties.
#pragma once

#include <functional>

#include "automation/com/counted.h"

namespace tornby::automation {

/// It is told nothing more once it is cut off, as its owner does when it goes: objects may keep it longer.
class ChangeSink final : public CountedAs<IPropertyNotifySink> {
 public:
  explicit ChangeSink(std::function<void()> changed) : changed_(std::move(changed)) {}
  void cut() { changed_ = nullptr; }

  HRESULT STDMETHODCALLTYPE OnChanged(DISPID) override {
    return guarded(IID_IPropertyNotifySink, L"Tornby", [&] {
      const auto changed = changed_;  // whoever is told may cut it off
      if (changed) changed();
    });
  }
  HRESULT STDMETHODCALLTYPE OnRequestEdit(DISPID) override { return S_OK; }

 private:
  std::function<void()> changed_;
};

}  // namespace tornby::automation
