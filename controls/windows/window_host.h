// A control as a real window, or drawn without one.
//
// ControlWindow is for a form: it makes the control and its child window, and takes both away. WindowHost is for a
// container that creates the control first and gives it a window later, or never. Event handlers run inside window
// procedures, through which no exception can pass: what leaves a handler goes to ControlSite::failed.
#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include <tornby/controls/control.h>
#include <tornby/controls/windows/drawings.h>

namespace tornby::windows {

class Drawn;
class WindowEdit;

/// The form, as a control sees it. What is not overridden is right for a form that has nothing to say.
class ControlSite {
 public:
  virtual ~ControlSite() = default;
  virtual void property_changed(StringView /*name*/) {}
  virtual Font ambient_font() const { return Font(); }
  virtual std::optional<Color> ambient_back_color() const { return std::nullopt; }
  virtual std::optional<Color> ambient_fore_color() const { return std::nullopt; }
  /// 0 flat, 1 three-dimensional: a new control's border.
  virtual std::optional<std::int16_t> ambient_appearance() const { return std::nullopt; }
  /// Texts are read from right to left. When it changes, call WindowHost::form_changed.
  virtual bool right_to_left() const { return false; }
  /// The control's button is the one that Enter presses: it gets a frame. When it changes, call
  /// WindowHost::form_changed.
  virtual bool displays_as_default() const { return false; }
  virtual String display_name() const { return String(); }
  /// The control wants another outer size, in pixels. True: the site decides, and calls WindowHost::place. False: the
  /// control takes the size.
  virtual bool takes_size_request(SIZE /*wanted*/) { return false; }
  /// An event handler, or the control itself, let that exception escape while it handled a message.
  virtual void failed(std::exception_ptr exception) { std::rethrow_exception(exception); }
  /// The form is being designed: the control is shown, and pointer and keyboard are the form's.
  virtual bool in_design() const { return false; }
  /// The control looks different now, or will with the next painting.
  virtual void view_changed() {}
  /// The control is called differently now, and may have another mnemonic.
  virtual void caption_changed() {}
  /// The keyboard came to the control, or has left it.
  virtual void focus_changed(bool /*here*/) {}
  /// A message to the control's window. `handle` lets the control handle it and gives its answer.
  virtual LRESULT filter(HWND /*window*/, UINT /*message*/, WPARAM, LPARAM, const std::function<LRESULT()>& handle) {
    return handle();
  }
};

class WindowHost final : public std::enable_shared_from_this<WindowHost>, private ControlHost, private Surface {
 public:
  /// Makes a control of class C; `site` must outlive it. Call InitProperties or ReadProperties on it next, then
  /// lay_out() or attach().
  template <class C>
  static std::shared_ptr<WindowHost> create(ControlSite& site) {
    std::shared_ptr<WindowHost> host(new WindowHost(site));
    host->control_ = std::make_unique<C>(static_cast<ControlHost&>(*host));
    return host;
  }
  ~WindowHost() override;

  Control& control() { return *control_; }
  template <class C>
  C& control_as() {
    return static_cast<C&>(*control_);
  }

  /// Gives the control a child window of `parent`. Raises 440 when the system makes none.
  void attach(HWND parent, const RECT& place);
  /// Takes the window away. The control lives on, without one; also inside its own event.
  void detach();
  HWND window() const { return window_; }
  bool has_focus() const { return is_within(::GetFocus()); }
  /// Whether a key message to one of the control's windows is for the control, even where a dialog has a use for the
  /// key.
  bool wants_key(MSG& message) const;
  /// Moves the window, if there is one, and gives the control that outer size. Before the first layout it is only
  /// noted.
  void place(const RECT& place);
  /// Lays the control out, with the settings that it has by now.
  void lay_out();
  /// The outer size in pixels.
  SIZE size() const { return size_; }
  int dots_per_inch() const { return dots_per_inch_; }
  /// The system's last-error value after its latest drawing, capture or pointer call for the control; 0 for none.
  DWORD last_error() const { return last_error_.value(); }

  /// Draws the whole control, border and edit field included, into a rectangle of any device context, a metafile too,
  /// at that context's own resolution. It needs no window.
  void draw(HDC context, const RECT& area);

  bool in_design() const { return site_->in_design(); }
  bool right_to_left() const override { return site_->right_to_left(); }
  /// The site answers another direction of reading, or another default button.
  void form_changed();
  /// What texts are drawn on.
  COLORREF ground() const { return resolved(back_color_); }

  /// Keeps the site alive as long as this object.
  void keep_until_gone(std::shared_ptr<ControlSite> site) { kept_site_ = std::move(site); }

  /// For the elements: something needs to be drawn again. The control is not asked to paint for that.
  void redraw();
  void add(Drawn& element) { drawn_.push_back(&element); }
  void remove(Drawn& element);
  void text_changed();
  void set_edit(WindowEdit* edit) { edit_ = edit; }
  void caption_changed() { site_->caption_changed(); }
  /// Handles a message of one of the control's windows. 0 when it fails.
  template <class Handle>
  LRESULT guarded(Handle handle) {
    try {
      return handle();
    } catch (...) {
      report_failure();
      return 0;
    }
  }
  /// For the edit field: the keyboard comes from, or goes to, that window.
  void focus_arrives(HWND from);
  void focus_leaves(HWND to);

 private:
  explicit WindowHost(ControlSite& site);

  Surface& surface() override { return *this; }
  std::unique_ptr<LabelElement> add_label() override;
  std::unique_ptr<PictureElement> add_picture() override;
  std::unique_ptr<EditElement> add_edit() override;
  std::unique_ptr<DropDownElement> add_drop_down() override;
  void property_changed(StringView name) override { site_->property_changed(name); }
  Font ambient_font() const override { return site_->ambient_font(); }
  std::optional<Color> ambient_back_color() const override { return site_->ambient_back_color(); }
  std::optional<Color> ambient_fore_color() const override { return site_->ambient_fore_color(); }
  std::optional<std::int16_t> ambient_appearance() const override { return site_->ambient_appearance(); }
  String display_name() const override { return site_->display_name(); }

  double scale_width() const override { return client_size().cx; }
  double scale_height() const override { return client_size().cy; }
  Rectangle client_rectangle() const override;
  double width() const override { return size_.cx * twips_per_pixel_x(); }
  void width(double twips) override;
  double height() const override { return size_.cy * twips_per_pixel_y(); }
  void height(double twips) override;
  double twips_per_pixel_x() const override { return 1440.0 / dots_per_inch_; }
  double twips_per_pixel_y() const override { return 1440.0 / dots_per_inch_; }
  Color back_color() const override { return back_color_; }
  void back_color(Color value) override;
  bool enabled() const override { return enabled_; }
  void enabled(bool value) override;
  std::int16_t border_style() const override { return border_style_; }
  void border_style(std::int16_t value) override;
  std::int16_t appearance() const override { return appearance_; }
  void appearance(std::int16_t value) override;
  Font font() const override { return font_; }
  void font(const Font& value) override { font_ = value; }
  double text_height(StringView text) const override;
  String tag() const override { return tag_; }
  void tag(StringView value) override { tag_ = value; }
  void clear() override;
  void draw_focus_rectangle(const Rectangle& area) override { add_drawing(FocusRectangle{area}); }
  void draw_edge(const Rectangle& area, std::uint32_t edge, std::uint32_t flags) override {
    add_drawing(Edge{area, edge, flags});
  }
  void draw_box(const Rectangle& outline, Color color) override { add_drawing(Box{outline, color}); }
  void draw_glyph(Glyph glyph, double left, double top) override;
  double glyph_height(Glyph) const override { return browse_glyph_height; }
  void set_capture() override;
  void release_capture() override;
  void show_hand() override;
  std::vector<ContainedElement*> contained_elements() override;

  static void register_class();
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  void report_failure() noexcept { site_->failed(std::current_exception()); }
  LRESULT handle(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT dialog_code(const MSG* key) const;
  LRESULT copy_name(wchar_t* target, std::size_t capacity) const;
  bool is_within(HWND other) const;
  void handle_pointer(UINT message, WPARAM wparam, LPARAM lparam);
  void paint_window(HWND window);
  /// The system is to ask for a painting of it all.
  void request_paint();
  void paint(const Canvas& canvas);
  void add_drawing(const Drawings::Drawing& drawing);
  void request_size(SIZE wanted);
  void size_changed(SIZE size);
  SIZE client_size() const;
  SIZE window_size() const;
  void update_dots_per_inch();
  void update_frame();
  int border_width() const;

  ControlSite* site_;
  std::shared_ptr<ControlSite> kept_site_;
  std::unique_ptr<Control> control_;
  std::vector<Drawn*> drawn_;
  WindowEdit* edit_ = nullptr;
  std::vector<std::unique_ptr<ContainedElement>> contained_;
  Drawings drawings_;
  HWND window_ = nullptr;
  SIZE size_{};
  SIZE laid_out_client_{-1, -1};
  bool laid_out_ = false;  // once at least
  int dots_per_inch_;
  Color back_color_ = system_color::button_face;
  Font font_;
  String tag_;
  std::int16_t border_style_ = 0;
  std::int16_t appearance_ = 0;
  bool enabled_ = true;
  bool captured_ = false;
  bool hand_ = false;
  bool painting_ = false;
  bool stale_ = false;  // what the window shows is
  mutable LastError last_error_;
};

/// A control of class C in a child window, for as long as this object lives. It may be destroyed inside an event of its
/// own control.
template <class C>
class ControlWindow {
 public:
  ControlWindow(HWND parent, const RECT& place, std::shared_ptr<ControlSite> site = std::make_shared<ControlSite>())
      : site_(std::move(site)), host_(WindowHost::create<C>(*site_)) {
    control().InitProperties();
    host_->attach(parent, place);
  }
  ~ControlWindow() {
    // Whoever still runs inside the control may need the site until the host goes.
    host_->keep_until_gone(std::move(site_));
    host_->detach();
  }
  ControlWindow(const ControlWindow&) = delete;
  ControlWindow& operator=(const ControlWindow&) = delete;

  C& control() { return host_->template control_as<C>(); }
  C* operator->() { return &control(); }
  HWND window() const { return host_->window(); }
  WindowHost& host() { return *host_; }

 private:
  std::shared_ptr<ControlSite> site_;
  std::shared_ptr<WindowHost> host_;
};

}  // namespace tornby::windows
