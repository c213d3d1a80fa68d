// The system's common dialogs, with the last choices remembered in an initialisation file.
//
// Set a few properties, run one operation, read its result and the properties that it set. The operations block until
// the user closes the dialog. On a system without dialogs every operation behaves as if it had been cancelled.
//
// Text crosses to the system in the ANSI code page: of a file or folder name that has other characters, "?" stands in
// the result for each of them, and such a file cannot be opened by that result.
//
// Initialisation file: in the Windows folder, named after the module that this class is part of (the DLL, or the
// program it is linked into) with ".ini", section "DIALOGS". Its keys are read at construction, always, and written at
// destruction if blnUsePersistence is still true, in this order: InitialDir (strInitialDir), LastOpenDir
// (strLastOpenFolder), LastOpenFilter, LastOpenFile, LastSaveDir (strLastSaveFolder), LastSaveFilter, LastSaveFile. The
// defaults are the module's folder for the three folders, 1 for the two filters and no file. A key that is there but
// empty reads as the default; of a value at most 249 characters are read, and of several file names the first is kept.
// A file that cannot be read gives the defaults; one that cannot be written is left as it is, silently. Of a text with
// a line break what stands before it is written, so that no text makes further lines in the file.
//
// A cancelled or failing dialog raises nothing. It leaves its code in lngDialogError and a text in strDialogError and,
// if blnShowErrorMessages is true and the code is not 0, shows a message box "DIALOG ERROR". A cancel has code 0 and
// the text "General Codes Failure". The code is what the system last noted for the thread: where it notes nothing for a
// cancelled font, print or page-setup dialog (so under Wine), that of an earlier dialog is reported again.
// An owner window that has gone away has the effect of a cancel, or of the failure that the system notes for it.
//
// An unexpected run-time error in the open, save or font operation, such as 7 (out of memory) or 5 for a negative
// lngMaxFileNameBuffer, is offered to the user, if blnShowErrorMessages is true, in a box with three buttons: Abort
// ends the operation, Retry runs the failing step again, Ignore goes on with the next step. The steps are: fill the
// request, each of its parts (owner, filter, name buffers, folder, caption and so on) a step of its own, so that what
// is ignored is left out and nothing else; show the dialog; report a failure; take over the answer; and for open and
// save: take over the filter index; set strInitialDir. The font's answer takes six steps: size, face, colour, type,
// style, and what follows from the style. An operation that has been aborted, or that meets such an error while
// blnShowErrorMessages is false, ends at once with the result of a cancel; what earlier steps have set stays. In the
// other operations such an error is raised to the caller.
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

#include <tornby/base/ansi_code_page.h>
#include <tornby/base/text.h>
#include <tornby/platform/code_page.h>
#include <tornby/platform/dialogs.h>
#include <tornby/platform/message_box.h>
#include <tornby/platform/module.h>
#include <tornby/platform/profile.h>
#include <tornby/platform/window_handle.h>

namespace tornby {

class clsDIALOGS {
 public:
  explicit clsDIALOGS(Dialogs& dialogs = native_dialogs(), MessageBoxes& boxes = native_message_boxes(),
                      ProfileFiles& profiles = native_profile_files(), const Module& module = native_module(),
                      const AnsiCodePage& code_page = native_code_page());
  ~clsDIALOGS();
  clsDIALOGS(const clsDIALOGS&) = delete;
  clsDIALOGS& operator=(const clsDIALOGS&) = delete;

  /// Whether failures are shown in message boxes; true at first.
  bool blnShowErrorMessages() const { return show_errors_; }
  void blnShowErrorMessages(bool value) { show_errors_ = value; }

  /// Whether destruction writes the initialisation file; true at first.
  bool blnUsePersistence() const { return persistent_; }
  void blnUsePersistence(bool value) { persistent_ = value; }

  /// The paper's size in thousandths of an inch, as the last page setup left it; 11000 by 8500 at first.
  std::int32_t lngPaperHeight() const { return page_.height; }
  std::int32_t lngPaperWidth() const { return page_.width; }

  /// The margins in thousandths of an inch; 500 at first. They go into the page setup and come back from it, as their
  /// low 16 bits: what is beyond 32.767 inches turns negative.
  std::int16_t intBottomMargin() const { return margins_.bottom; }
  void intBottomMargin(std::int16_t value) { margins_.bottom = value; }
  std::int16_t intTopMargin() const { return margins_.top; }
  void intTopMargin(std::int16_t value) { margins_.top = value; }
  std::int16_t intRightMargin() const { return margins_.right; }
  void intRightMargin(std::int16_t value) { margins_.right = value; }
  std::int16_t intLeftMargin() const { return margins_.left; }
  void intLeftMargin(std::int16_t value) { margins_.left = value; }

  /// The least margins that the page setup allows, likewise; 250 at first.
  std::int16_t intMinMarginBottom() const { return minimum_margins_.bottom; }
  void intMinMarginBottom(std::int16_t value) { minimum_margins_.bottom = value; }
  std::int16_t intMinMarginTop() const { return minimum_margins_.top; }
  void intMinMarginTop(std::int16_t value) { minimum_margins_.top = value; }
  std::int16_t intMinMarginRight() const { return minimum_margins_.right; }
  void intMinMarginRight(std::int16_t value) { minimum_margins_.right = value; }
  std::int16_t intMinMarginLeft() const { return minimum_margins_.left; }
  void intMinMarginLeft(std::int16_t value) { minimum_margins_.left = value; }

  /// Runs the page setup. False when it is cancelled or fails, and nothing changes; otherwise paper and margins are as
  /// chosen. The paper at first is the printer's, whatever the properties say.
  bool blnPageSetup();

  /// What the last font dialog gave. The size is in whole points (10 at first), halves rounded to even, and 10 for what
  /// is below one point. The colour is 0x00BBGGRR (black at first), the type the dialog's bits (1024 at first) as a
  /// signed 16-bit number.
  /// The style is "Regular" where the system names the chosen style itself, as Windows does; blnIsFontBold and
  /// blnIsFontItalic then stay as they were. Where it does not, so under Wine, both flags are as chosen, and the style
  /// is "Bold", "Italic" (also for both at once) or empty.
  std::int32_t lngFontType() const { return font_type_; }
  const String& strFontStyle() const { return font_style_; }
  std::int32_t lngFontColor() const { return font_color_; }
  const String& strFontFaceName() const { return font_face_; }
  std::int32_t lngFontSize() const { return font_size_; }

  /// Runs the font dialog, which opens without a preset face, size or colour. False when it is cancelled or fails, and
  /// the font stays as it was.
  bool blnChooseFont();

  /// How many files the last open dialog with multiple selection gave; 0 after one with single selection.
  std::int32_t lngNumFilesSelected() const { return file_count_; }

  /// A colour that is only kept, for callers; light grey (0xC0C0C0) at first.
  std::int32_t lngColor() const { return color_; }
  void lngColor(std::int32_t value) { color_ = value; }

  /// The custom colours that go with it, kept for a colour dialog of the caller's own: eight plain ones, then white.
  /// They are 17, one more than a colour dialog takes. Only in C++.
  std::span<const std::int32_t> custom_colors() const { return custom_colors_; }

  /// Whether the save dialog asks before a name is taken that no file has; false at first. Wine never asks.
  bool blnCreatePrompt() const { return create_prompt_; }
  void blnCreatePrompt(bool value) { create_prompt_ = value; }

  /// Runs the save dialog, which starts in strInitialDir, or in strLastSaveFolder while that is empty. The argument is
  /// not used. The result is the full path, or empty when cancelled or failed; nothing is asked about a file that
  /// exists, and no extension is added. Sets strLastSaveFile, strLastSaveFolder and lngLastSaveFilter, and in every
  /// case strInitialDir to strLastSaveFolder. Fails with 12291 when the path with a closing NUL is longer than
  /// lngMaxFileNameBuffer.
  String strGetSaveFileName(StringView not_used = {});

  /// The length of the name buffers; 250 at first. With multiple selection the open dialog takes at least 2048.
  std::int32_t lngMaxFileNameBuffer() const { return name_length_; }
  void lngMaxFileNameBuffer(std::int32_t value) { name_length_ = value; }

  /// The caption of the open and save dialogs. While empty, it is "Select File To Open" or "Save File".
  const String& strTitle() const { return title_; }
  void strTitle(StringView value) { title_ = value; }

  /// The position, from 1, of the file type chosen last. Each of them presets the next dialog of its kind.
  std::int32_t lngLastSaveFilter() const { return last_save_.filter; }
  std::int32_t lngLastOpenFilter() const { return last_open_.filter; }

  /// Only kept: no dialog uses it, and it cannot be read.
  void strDefaultExt(StringView value) { default_extension_ = value; }

  /// Whether the open dialog allows several files; false at first.
  bool blnAllowMultipleFileSelect() const { return multiple_; }
  void blnAllowMultipleFileSelect(bool value) { multiple_ = value; }

  /// The full path that the last save dialog gave.
  const String& strLastSaveFile() const { return last_save_.file; }

  /// What the last open dialog gave: the full path with single selection, the bare name of one file with multiple
  /// selection, the result itself for several.
  const String& strLastOpenFile() const { return last_open_.file; }

  /// The file types: description and pattern in turn, all separated by "|", as in "Text (*.txt)|*.txt|All|*.*". None at
  /// first. It cannot be read.
  void strFilter(StringView value);

  /// The owner window's handle; the desktop window at first. The folder dialog and the about box do not use it.
  std::int32_t lngHWnd() const { return owner_; }
  void lngHWnd(std::int32_t value) { owner_ = value; }
  void lngHWnd(HWND__* window) { owner_ = window_number(window); }

  /// Runs the open dialog, which starts in strInitialDir, or in strLastOpenFolder while that is empty. The argument is
  /// not used. Empty when cancelled or failed. Otherwise the full path of the one file; for several files their names
  /// without folder, each with a NUL, and one more NUL, in the order that the system gives.
  /// Sets strLastOpenFile, strLastOpenFolder and lngLastOpenFilter; with multiple selection lngNumFilesSelected too,
  /// and for several files the entries of fstrReturnSingleFileName. In every case strInitialDir becomes
  /// strLastOpenFolder. More than 256 files: the result names them all and lngNumFilesSelected counts them, the entries
  /// hold the first 256. A selection longer than lngMaxFileNameBuffer fails with 12291. Wine cuts it off instead:
  /// without the closing NULs it counts as one file, and the result is the folder. Wine also takes two typed names in
  /// quotation marks under single selection; the result then is their folder.
  String strGetOpenFileName(StringView not_used = {});

  /// Shows the system's about box with the module's product name, version and copyright. Returns what the system
  /// returns, mostly 1.
  std::int32_t flngShowAbout();

  /// The folders of the files saved and opened last. They end in a backslash once a dialog has set them.
  const String& strLastSaveFolder() const { return last_save_.folder; }
  const String& strLastOpenFolder() const { return last_open_.folder; }

  /// The text and the code of the last failure or cancel; "N/A" and 0 at first.
  const String& strDialogError() const { return error_text_; }
  std::int32_t lngDialogError() const { return error_code_; }

  /// Runs the folder dialog with that owner window. The folder's path, without a closing backslash (Windows gives one
  /// to the root of a drive, "C:\"), or empty when cancelled or failed. Nothing is remembered and no failure reported.
  String fstrBrowseForFolder(std::int32_t owner);
  String fstrBrowseForFolder(HWND__* owner) { return fstrBrowseForFolder(window_number(owner)); }

  /// Whether the last font was bold or italic; see strFontStyle.
  bool blnIsFontBold() const { return bold_; }
  bool blnIsFontItalic() const { return italic_; }

  /// Runs the print dialog. False when it is cancelled or fails, as it does without a printer. Nothing of what is
  /// chosen is kept.
  bool blnPrintDialog();

  /// The folder that the next open or save dialog starts in.
  const String& strInitialDir() const { return initial_folder_; }
  void strInitialDir(StringView value) { initial_folder_ = value; }

  /// Full path number `index`, 0 to 255, of the last open dialog that gave several files. Entries beyond its number of
  /// files keep what an earlier dialog gave. Raises 9 (subscript out of range) for any other index.
  const String& fstrReturnSingleFileName(std::int16_t index) const;

 private:
  struct Choice {
    String folder;
    std::int32_t filter;
    String file;
  };
  struct Edges {
    std::int16_t left, top, right, bottom;
  };

  /// A step of an operation. It refers to the function that it is made from.
  class Step {
   public:
    template <class Function>
    Step(const Function& function)
        : function_(&function), call_([](const void* f) { (*static_cast<const Function*>(f))(); }) {}
    void operator()() const { call_(function_); }

   private:
    const void* function_;
    void (*call_)(const void*);
  };

  void load();
  void save() const;

  std::string to_ansi(StringView text) const;
  String from_ansi(std::string_view bytes) const;
  bool fill(FileDialogRequest& request, StringView prompt, const Choice& last, StringView caption, std::int32_t length,
            std::uint32_t flags);
  void take_opened(StringView buffer, String& result);
  void take_several(StringView buffer, std::int32_t count, String& result);
  void settle_font_style();

  void report_failure();
  bool run(StringView caption, std::initializer_list<Step> steps);
  BoxAnswer ask(StringView caption, const std::exception& error) const;

  Dialogs& dialogs_;
  MessageBoxes& boxes_;
  ProfileFiles& profiles_;
  const Module& module_;
  const AnsiCodePage& code_page_;

  String profile_;
  bool show_errors_ = true;
  bool persistent_ = true;
  std::int32_t owner_;
  std::int32_t error_code_ = 0;
  String error_text_ = u"N/A";

  std::int32_t name_length_ = 250;
  String title_;
  String default_extension_;
  bool multiple_ = false;
  bool create_prompt_ = false;
  String filter_;  // as the system wants it
  String initial_folder_;
  Choice last_open_;
  Choice last_save_;
  std::int32_t file_count_ = 0;
  std::array<String, 256> files_;

  struct {
    std::int32_t width = 8500;
    std::int32_t height = 11000;
  } page_;
  Edges margins_ = {500, 500, 500, 500};
  Edges minimum_margins_ = {250, 250, 250, 250};

  std::int32_t font_size_ = 10;
  String font_face_;
  std::int32_t font_color_ = 0;
  std::int32_t font_type_ = 1024;
  String font_style_;
  bool bold_ = false;
  bool italic_ = false;
  std::int32_t color_ = 0xC0C0C0;
  std::array<std::int32_t, 17> custom_colors_ = {0x000000, 0xFFFFFF, 0x0000FF, 0x00FF00, 0x00FFFF, 0xFF0000,
                                                 0xFF00FF, 0xFFFF00, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF,
                                                 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF};
};

}  // namespace tornby
