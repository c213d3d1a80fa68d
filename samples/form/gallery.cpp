// Shows the three controls in each of their looks.
#include <tornby/controls/kelBrowseButton.h>
#include <tornby/controls/kelHyperLabel.h>
#include <tornby/controls/kelLabel.h>
#include <tornby/controls/windows/window_host.h>

#include <memory>
#include <vector>

namespace {

using tornby::Color;
using tornby::kelBrowseButton;
using tornby::kelHyperLabel;
using tornby::kelLabel;

constexpr int columns = 4;

/// Of the screen, for a length at 96 dots per inch.
int pixels(int length) {
  const HDC screen = ::GetDC(nullptr);
  const int scaled = ::MulDiv(length, ::GetDeviceCaps(screen, LOGPIXELSX), 96);
  ::ReleaseDC(nullptr, screen);
  return scaled;
}

const SIZE cell = {pixels(160), pixels(44)};
const int gap = pixels(12);

/// A window that holds controls, from left to right and row by row.
class Gallery {
 public:
  Gallery() {
    WNDCLASSW description{};
    description.lpfnWndProc = &Gallery::procedure;
    description.hCursor = ::LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
    description.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    description.lpszClassName = L"TornbyGallery";
    ::RegisterClassW(&description);
    window_ =
        ::CreateWindowExW(0, description.lpszClassName, L"Tornby controls", WS_CAPTION | WS_SYSMENU, CW_USEDEFAULT,
                          CW_USEDEFAULT, pixels(712), pixels(316), nullptr, nullptr, nullptr, nullptr);
  }

  template <class C>
  tornby::windows::ControlWindow<C>& add(int height = 44) {
    const int left = gap + count_ % columns * (cell.cx + gap);
    const int top = gap + count_ / columns * (cell.cy + gap);
    ++count_;
    last_place_ = {left, top, left + cell.cx, top + pixels(height)};
    const auto control = std::make_shared<tornby::windows::ControlWindow<C>>(window_, last_place_);
    controls_.push_back(control);
    return *control;
  }

  const RECT& last_place() const { return last_place_; }
  void show() const { ::ShowWindow(window_, SW_SHOWNORMAL); }

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_DESTROY) ::PostQuitMessage(0);
    return ::DefWindowProcW(window, message, wparam, lparam);
  }

  HWND window_;
  int count_ = 0;
  RECT last_place_ = {};
  std::vector<std::shared_ptr<void>> controls_;
};

kelLabel& add_label(Gallery& gallery, tornby::StringView caption, std::int16_t alignment, std::int32_t vertical) {
  auto& label = gallery.add<kelLabel>();
  const RECT place = gallery.last_place();
  label->AutoSize(false);
  label->Alignment(alignment);
  label->VerticalAlignment(vertical);
  label->Caption(caption);
  label.host().place(place);  // until now it was as large as its text
  return label.control();
}

kelHyperLabel& add_link(Gallery& gallery, tornby::StringView caption, Color color) {
  kelHyperLabel& link = gallery.add<kelHyperLabel>(16).control();
  link.Caption(caption);
  link.LinkColor(color);
  return link;
}

kelBrowseButton& add_browse_button(Gallery& gallery, tornby::StringView text) {
  kelBrowseButton& button = gallery.add<kelBrowseButton>(24).control();
  button.Text(text);
  button.setOut();
  return button;
}

void fill(Gallery& gallery) {
  add_label(gallery, u"left, top", 0, 0);
  add_label(gallery, u"centre, centre", 2, 1);
  add_label(gallery, u"right, bottom", 1, 2);
  kelLabel& wrapped = add_label(gallery, u"a text that is wrapped, and centred all the same", 2, 1);
  wrapped.WordWrap(true);
  wrapped.Refresh();

  add_label(gallery, u"border lines", 2, 1).UseBorderLines(true);
  add_label(gallery, u"no frame", 2, 1).DisplayRubberBand(false);
  add_label(gallery, u"disabled", 2, 1).Enabled(false);
  gallery.add<kelLabel>()->Caption(u"as large as its text");

  constexpr Color blue = 0xD54600;
  add_link(gallery, u"A link", blue);
  kelHyperLabel& hovered = add_link(gallery, u"under the pointer", blue);
  hovered.LinkColor(hovered.HoverColor());
  kelHyperLabel& held = add_link(gallery, u"while it is clicked", blue);
  held.LinkColor(held.ClickColor());
  add_link(gallery, u"A long link that wraps and makes its control as high as it needs", blue).UseDynamicHeight(true);

  add_browse_button(gallery, u"C:\\Reports");
  add_browse_button(gallery, u"under the pointer").setOver();
  add_browse_button(gallery, u"pressed").setDown();
  add_browse_button(gallery, u"disabled").Enabled(false);

  add_browse_button(gallery, u"locked").Locked(true);
  add_browse_button(gallery, u"with Style 1").Style(1);
  add_browse_button(gallery, u"flat").BorderApperance(0);
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, char*, int) {
  Gallery gallery;
  fill(gallery);
  gallery.show();
  MSG message;
  while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
  }
  return 0;
}
