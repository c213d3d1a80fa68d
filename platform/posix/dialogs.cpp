// A system without dialogs and message boxes: every call reports a failure.
#include "platform/dialogs.h"

#include "platform/message_box.h"

namespace tornby {
namespace {

class NoDialogs final : public Dialogs {
 public:
  std::int32_t desktop_window() override { return 0; }
  FileDialogAnswer open_file(const FileDialogRequest& request) override { return unchanged(request); }
  FileDialogAnswer save_file(const FileDialogRequest& request) override { return unchanged(request); }
  FolderDialogAnswer browse_for_folder(const FolderDialogRequest&) override { return {}; }
  FontDialogAnswer choose_font(const FontDialogRequest&) override { return {}; }
  PrintDialogAnswer print(const PrintDialogRequest&) override { return {}; }
  PageSetupAnswer set_up_page(const PageSetupRequest&) override { return {}; }
  std::int32_t show_about(const AboutRequest&) override { return 0; }
  std::uint32_t extended_error() override { return 0; }

 private:
  static FileDialogAnswer unchanged(const FileDialogRequest& request) {
    return {0, request.file, request.filter_index};
  }
};

class NoMessageBoxes final : public MessageBoxes {
 public:
  BoxAnswer show(const BoxRequest&) override { return BoxAnswer::none; }
};

}  // namespace

Dialogs& native_dialogs() {
  static NoDialogs dialogs;
  return dialogs;
}

MessageBoxes& native_message_boxes() {
  static NoMessageBoxes boxes;
  return boxes;
}

}  // namespace tornby
