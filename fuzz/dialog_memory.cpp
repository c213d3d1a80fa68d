// Any values in the initialisation file, and any buffer from a file dialog: the object starts, answers within the
// stated bounds, and writes back lines that are lines.
#include "fuzz/target.h"
#include "tests/dialogs/scripted.h"

namespace tornby::fuzz {

void dialog_memory(Input input) {
  static constexpr StringView keys[] = {u"InitialDir",  u"LastOpenDir",    u"LastOpenFilter", u"LastOpenFile",
                                        u"LastSaveDir", u"LastSaveFilter", u"LastSaveFile"};
  testing::Script script;
  for (const StringView key : keys)
    if (input.one_in(2)) script.profiles.values[String(key)] = input.text(input.below(30));
  const std::int32_t error = raised([&] { script.restart(); });
  REQUIRE(error == 0 || error == 6 || error == 13);
  if (error != 0) return;
  script->blnAllowMultipleFileSelect(input.one_in(2));
  const bool saves = input.one_in(2);
  const ByteView bytes = input.rest();
  const std::string buffer(bytes.begin(), bytes.end());
  saves ? script.answer_save(buffer) : script.answer_open(buffer);
  const String result = saves ? script->strGetSaveFileName() : script->strGetOpenFileName();
  REQUIRE(result.size() <= buffer.size());
  REQUIRE(script->lngNumFilesSelected() >= 0);
  REQUIRE(static_cast<std::size_t>(script->lngNumFilesSelected()) <= buffer.size() + 1);
  for (std::int16_t i = 0; i < 256; ++i) script->fstrReturnSingleFileName(i);
  script.object.reset();
}

}  // namespace tornby::fuzz
