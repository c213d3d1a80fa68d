// What tests of the system's real dialogs share.
#pragma once

#include <gtest/gtest.h>

#include <windows.h>

#include <objbase.h>

#include <filesystem>

#include "answering.h"
#include "dialogs/clsDIALOGS.h"
#include "support/temporary_folder.h"

namespace tornby::testing {

// Controls of the dialogs.
enum : int {
  file_name = 1148,
  file_types = 1136,
  font_face = 1136,
  font_style = 1137,
  font_size = 1138,
  font_color = 1139,
  margin_left = 1155,
  margin_top = 1156,
  margin_right = 1157,
  box_text = 65535,
  about_text = 100,
  instruction = 14146,
};

inline std::string text(StringView value) {
  return std::string(value.begin(), value.end());
}

inline Answers::Answer type_name(const char* name) {
  return [name](const OpenDialog& dialog) {
    dialog.type(file_name, name, "Edit");
    dialog.press(ok_button);
  };
}

/// An object that writes no initialisation file, and three files to open. Around each test it is checked that the
/// dialogs leave the current folder, COM and the message queue as they were.
class RealDialogs : public ::testing::Test {
 protected:
  RealDialogs() {
    for (const char* name : {"a.txt", "bb.txt", "c.dat"}) folder_.write(name, "x");
    std::string path(MAX_PATH, '\0');
    path.resize(::GetLongPathNameA(folder_.path().string().c_str(), path.data(), MAX_PATH));
    path_ = path;
    dialogs_.blnUsePersistence(false);
    dialogs_.strFilter(u"Text (*.txt)|*.txt|All files|*.*");
    start_in_folder();
    current_folder_ = std::filesystem::current_path();
    window_ = ::CreateWindowA("STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    clear_extended_error();
  }

  ~RealDialogs() override {
    EXPECT_EQ(std::filesystem::current_path(), current_folder_);
    // Nobody has left COM set up in this thread: it can still be set up in whichever way.
    EXPECT_EQ(::CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
    ::CoUninitialize();
    // Messages still arrive, and nobody has asked the thread to end.
    ::PostMessageA(window_, WM_APP, 1, 2);
    MSG message{};
    bool arrived = false;
    while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
      EXPECT_NE(message.message, static_cast<UINT>(WM_QUIT));
      arrived |= message.hwnd == window_ && message.message == WM_APP && message.wParam == 1;
    }
    EXPECT_TRUE(arrived);
    ::DestroyWindow(window_);
  }

  void start_in_folder() { dialogs_.strInitialDir(String(path_.begin(), path_.end())); }

  /// Wine keeps the last dialog's error when a font, print or page-setup dialog is cancelled; open and save clear it.
  void clear_extended_error() {
    const Answers answers = {press(cancel_button)};
    dialogs_.strGetSaveFileName();
    start_in_folder();
  }

  /// Runs an open dialog with this text in its name field.
  std::string open(const char* name) {
    const Answers answers = {type_name(name)};
    const String result = dialogs_.strGetOpenFileName();
    EXPECT_TRUE(answers.all_given());
    return text(result);
  }

  TemporaryFolder folder_;
  std::string path_;
  clsDIALOGS dialogs_;
  std::filesystem::path current_folder_;
  HWND window_;
};

}  // namespace tornby::testing
