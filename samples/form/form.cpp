// A small desktop program: a file is chosen, a link shows its CRC-32, and a label tells what happened, aligned and
// framed as the menu says. What was set is kept between runs.
// Usage: sample_form [settings file]    by default "Tornby form.txt" in the local application data
#include <tornby/base/runtime_error.h>
#include <tornby/controls/kelBrowseButton.h>
#include <tornby/controls/kelHyperLabel.h>
#include <tornby/controls/kelLabel.h>
#include <tornby/controls/windows/window_host.h>
#include <tornby/dialogs/clsDIALOGS.h>
#include <tornby/platform/text.h>
#include <tornby/settings/PathClass.h>

#include <shellapi.h>

#include <cstdlib>
#include <exception>
#include <memory>
#include <utility>

#include "file_report.h"
#include "form_menu.h"
#include "form_state.h"

namespace {

using tornby::String;
using tornby::StringView;
using tornby::windows::ControlWindow;

constexpr wchar_t title[] = L"Tornby form";
constexpr tornby::Color link_color = 0xC05000;
constexpr tornby::Color hover_color = 0x0060E0;

struct WindowDeleter {
  using pointer = HWND;
  void operator()(HWND window) const { ::DestroyWindow(window); }
};
using Window = std::unique_ptr<HWND, WindowDeleter>;

/// The font of the system's own message boxes.
tornby::Font message_font(int dots_per_inch) {
  tornby::Font font;
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  if (!::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0)) return font;
  const LOGFONTW& system = metrics.lfMessageFont;
  font.name = tornby::from_wide(system.lfFaceName);
  font.size = std::abs(system.lfHeight) * 72.0 / dots_per_inch;
  font.weight = static_cast<std::int16_t>(system.lfWeight);
  font.charset = system.lfCharSet;
  return font;
}

class Form {
  /// What the controls ask of the form and tell it.
  class Site final : public tornby::windows::ControlSite {
   public:
    explicit Site(Form& form) : form_(form) {}
    String display_name() const override { return u"File"; }  // for the screen reader in the browse button's field
    void failed(std::exception_ptr exception) override { form_.report(exception); }

   private:
    Form& form_;
  };

 public:
  explicit Form(StringView settings_file)
      : settings_file_(settings_file),
        state_(load_state(settings_file)),
        window_(make_window()),
        browse_(window_.get(), {}, site_),
        link_(window_.get(), {}, site_),
        label_(window_.get(), {}, site_),
        focus_(browse_.window()) {
    const tornby::Font font = message_font(dots_per_inch_);
    browse_->Font(font);
    browse_->Text(state_.path);
    link_->Font(font);
    link_->LinkColor(link_color);
    link_->HoverColor(hover_color);
    label_->Font(font);
    label_->AutoSize(false);
    label_->WordWrap(true);

    dialogs_.lngHWnd(window_.get());
    dialogs_.strFilter(u"All files (*.*)|*.*");
    browse_->OpenBrowse = [this] { open(); };
    browse_->ChangeText = [this](String&) { check(); };
    link_->Click = [this] { check(); };

    check();
    show_choices();
    lay_out();
    ::SetWindowLongPtrW(window_.get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  }
  ~Form() { ::SetWindowLongPtrW(window_.get(), GWLP_USERDATA, 0); }
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  int run(int show) {
    ::ShowWindow(window_.get(), show);
    MSG message;
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
      if (::IsDialogMessageW(window_.get(), &message)) continue;
      ::TranslateMessage(&message);
      ::DispatchMessageW(&message);
    }
    return static_cast<int>(message.wParam);
  }

 private:
  int scaled(int pixels) const { return ::MulDiv(pixels, dots_per_inch_, 96); }

  Window make_window() const {
    WNDCLASSW description{};
    description.lpfnWndProc = &Form::procedure;
    description.hInstance = ::GetModuleHandleW(nullptr);
    description.hIcon = ::LoadIconW(nullptr, MAKEINTRESOURCEW(32512));
    description.hCursor = ::LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
    description.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    description.lpszClassName = L"TornbyForm";
    ::RegisterClassW(&description);
    Window window(::CreateWindowExW(0, description.lpszClassName, title, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                                    CW_USEDEFAULT, CW_USEDEFAULT, scaled(state_.width), scaled(state_.height), nullptr,
                                    make_menu(), description.hInstance, nullptr));
    if (!window) throw tornby::RuntimeError(tornby::StandardError::automation_error);
    return window;
  }

  /// Shows an error. No exception may pass through a window procedure.
  void report(std::exception_ptr exception) {
    try {
      std::rethrow_exception(exception);
    } catch (const std::exception& error) {
      label_->Caption(tornby::widen(error.what()));
    }
  }

  void open() {
    const String path = dialogs_.strGetOpenFileName();
    if (!path.empty()) browse_->Text(path);
  }

  /// Reads the file once more and shows what became of it.
  void check() {
    const String path = browse_->Text();
    FileReport report = report_on(path, path == state_.path ? state_.checksum : String());
    link_->LinkColor(link_color);  // a click leaves the colour of the click
    link_->Caption(report.link);
    label_->Caption(report.label);
    state_.path = path;
    state_.checksum = std::move(report.checksum);
  }

  void show_choices() {
    label_->DisplayRubberBand(state_.frame == 1);
    label_->UseBorderLines(state_.frame == 2);
    label_->Alignment(static_cast<std::int16_t>(state_.alignment));
    label_->VerticalAlignment(state_.vertical);  // lays the label out, which Alignment does not
    mark_choices(::GetMenu(window_.get()), state_);
  }

  /// One below the other, as wide as the window; the label takes what is left of the height.
  void lay_out() {
    RECT client;
    ::GetClientRect(window_.get(), &client);
    const int margin = scaled(12);
    const int gap = scaled(10);
    const int right = client.right - margin;
    const int text = link_.host().size().cy;  // one line of it
    const int browse_bottom = margin + text + gap;
    const int link_top = browse_bottom + gap;
    const int label_top = link_top + text + gap;
    browse_.host().place({margin, margin, right, browse_bottom});
    link_.host().place({margin, link_top, right, link_top + text});
    label_.host().place({margin, label_top, right, client.bottom - margin});
  }

  void save() {
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    ::GetWindowPlacement(window_.get(), &placement);
    const RECT& normal = placement.rcNormalPosition;
    state_.width = ::MulDiv(normal.right - normal.left, 96, dots_per_inch_);
    state_.height = ::MulDiv(normal.bottom - normal.top, 96, dots_per_inch_);
    save_state(settings_file_, state_);
  }

  void command(UINT id) {
    switch (id) {
      case open_command:
        open();
        break;
      case check_command:
        check();
        break;
      case exit_command:
        ::PostMessageW(window_.get(), WM_CLOSE, 0, 0);
        break;
      default:
        choose(id, state_);
        show_choices();
        break;
    }
  }

  LRESULT handle(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
      case WM_SIZE:
        if (wparam != SIZE_MINIMIZED) lay_out();
        return 0;
      case WM_GETMINMAXINFO:
        reinterpret_cast<MINMAXINFO*>(lparam)->ptMinTrackSize = {scaled(FormState::least_width),
                                                                 scaled(FormState::least_height)};
        return 0;
      case WM_ACTIVATE:
        if (LOWORD(wparam) == WA_INACTIVE && ::GetFocus()) focus_ = ::GetFocus();
        break;
      case WM_SETFOCUS:
        ::SetFocus(focus_);
        return 0;
      case WM_COMMAND:
        command(LOWORD(wparam));
        return 0;
      case WM_CLOSE:
        ::PostQuitMessage(0);
        save();
        return 0;
      case WM_ENDSESSION:
        if (wparam) save();
        return 0;
      default:
        break;
    }
    return ::DefWindowProcW(window_.get(), message, wparam, lparam);
  }

  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    auto* form = reinterpret_cast<Form*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!form) return ::DefWindowProcW(window, message, wparam, lparam);
    try {
      return form->handle(message, wparam, lparam);
    } catch (...) {
      form->report(std::current_exception());
      return 0;
    }
  }

  const int dots_per_inch_ = ::GetDeviceCaps(tornby::windows::ScreenContext(), LOGPIXELSY);
  const String settings_file_;
  FormState state_;
  tornby::clsDIALOGS dialogs_;
  const Window window_;
  const std::shared_ptr<Site> site_ = std::make_shared<Site>(*this);
  ControlWindow<tornby::kelBrowseButton> browse_;
  ControlWindow<tornby::kelHyperLabel> link_;
  ControlWindow<tornby::kelLabel> label_;
  HWND focus_;  // the control that has the keyboard while the form is active
};

String settings_file() {
  struct LocalDeleter {
    void operator()(wchar_t** block) const { ::LocalFree(block); }
  };
  int count = 0;
  const std::unique_ptr<wchar_t*, LocalDeleter> arguments(::CommandLineToArgvW(::GetCommandLineW(), &count));
  if (count > 1) return tornby::from_wide(arguments.get()[1]);
  return std::get<String>(tornby::PathClass().LocalAppData()) + u"\\Tornby form.txt";
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int show) {
  ::SetProcessDPIAware();
  try {
    return Form(settings_file()).run(show);
  } catch (const std::exception& error) {
    ::MessageBoxA(nullptr, error.what(), nullptr, MB_ICONERROR);
    return 1;
  }
}
