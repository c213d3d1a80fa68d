// Font, page setup, print and about.
#include <string>

#include "dialogs/clsDIALOGS.h"
#include "dialogs/file_selection.h"

namespace tornby {
namespace {

// The system's flags for the font dialog.
enum : std::uint32_t {
  screen_and_printer_fonts = 0x3,
  start_with_logical_font = 0x40,
  use_style = 0x80,
  effects = 0x100,
  no_vector_fonts = 0x800,
  font_must_exist = 0x10000,
  scalable_only = 0x20000,
};
constexpr std::uint32_t font_flags = screen_and_printer_fonts | start_with_logical_font | use_style | effects |
                                     no_vector_fonts | font_must_exist | scalable_only;

// Font types.
enum : std::uint16_t { bold_font = 0x100, italic_font = 0x200, regular_font = 0x400 };

constexpr std::uint8_t default_character_set = 1;
constexpr std::size_t style_capacity = 64;

// The system's flags for the page setup.
enum : std::uint32_t { use_minimum_margins = 0x1, use_margins = 0x2, in_thousandths = 0x4 };

/// Whole points for tenths of a point, halves to even.
std::int32_t whole_points(std::int32_t tenths) {
  if (tenths < 10) tenths = 100;
  const std::int32_t points = tenths / 10;
  const std::int32_t rest = tenths % 10;
  const bool up = rest > 5 || (rest == 5 && points % 2 != 0);
  return up ? points + 1 : points;
}

template <class From>
Margins widened(const From& edges) {
  return {edges.left, edges.top, edges.right, edges.bottom};
}

/// The low 16 bits of each.
template <class To>
To narrowed(const Margins& margins) {
  const auto low = [](std::int32_t value) { return static_cast<std::int16_t>(value); };
  return {low(margins.left), low(margins.top), low(margins.right), low(margins.bottom)};
}

}  // namespace

bool clsDIALOGS::blnPageSetup() {
  PageSetupRequest request;
  request.owner = owner_;
  request.flags = use_minimum_margins | use_margins | in_thousandths;
  request.page = {page_.width, page_.height, widened(minimum_margins_), widened(margins_)};
  const PageSetupAnswer answer = dialogs_.set_up_page(request);
  if (answer.result < 1) {
    report_failure();
    return false;
  }
  margins_ = narrowed<Edges>(answer.page.margins);
  minimum_margins_ = narrowed<Edges>(answer.page.minimum_margins);
  page_ = {answer.page.width, answer.page.height};
  return true;
}

bool clsDIALOGS::blnChooseFont() {
  FontDialogRequest request;
  request.owner = owner_;
  request.font.character_set = default_character_set;
  request.flags = font_flags;
  request.font_type = regular_font;
  FontDialogAnswer answer;
  // With an owner window that has gone the system answers -1: no success either.
  const auto succeeded = [&] { return answer.result > 0; };
  const auto on_success = [&](auto take) {
    return [&succeeded, take] {
      if (succeeded()) take();
    };
  };
  const bool finished =
      run(u"CHOOSE_FONT_ERROR", {
                                    [&] { request.style = std::string(style_capacity, '\0'); },
                                    [&] { answer = dialogs_.choose_font(request); },
                                    [&] {
                                      if (!succeeded()) report_failure();
                                    },
                                    on_success([&] { font_size_ = whole_points(answer.point_size); }),
                                    on_success([&] {
                                      const auto& face = answer.font.face;
                                      font_face_ = dialogs::up_to_nul(from_ansi({face.data(), face.size()}));
                                    }),
                                    on_success([&] { font_color_ = static_cast<std::int32_t>(answer.color); }),
                                    on_success([&] { font_type_ = static_cast<std::int16_t>(answer.font_type); }),
                                    on_success([&] { font_style_ = dialogs::up_to_nul(from_ansi(answer.style)); }),
                                    on_success([&] { settle_font_style(); }),
                                });
  return finished && succeeded();
}

void clsDIALOGS::settle_font_style() {
  if (!font_style_.empty()) {
    font_style_ = u"Regular";
    return;
  }
  bold_ = (font_type_ & bold_font) != 0;
  italic_ = (font_type_ & italic_font) != 0;
  if (bold_) font_style_ = u"Bold";
  if (italic_) font_style_ = u"Italic";
}

bool clsDIALOGS::blnPrintDialog() {
  PrintDialogRequest request;
  request.owner = owner_;
  const bool accepted = dialogs_.print(request).result != 0;
  if (!accepted) report_failure();
  return accepted;
}

std::int32_t clsDIALOGS::flngShowAbout() {
  const ModuleVersion version = module_.version();
  String application = version.product_name + u' ';
  for (std::size_t i = 0; i < version.numbers.size(); ++i)
    application += (i == 0 ? u"" : u".") + widen(std::to_string(version.numbers[i]));
  return dialogs_.show_about({0, to_ansi(application), to_ansi(version.copyright)});
}

}  // namespace tornby
