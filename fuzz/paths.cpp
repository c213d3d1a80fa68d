// Any path over any folders: the token that is exchanged is the stated one, and expanding undoes collapsing.
#include <map>

#include "fuzz/target.h"
#include "settings/PathClass.h"

namespace tornby::fuzz {
namespace {

class AnyRegistry final : public Registry {
 public:
  explicit AnyRegistry(Input& input) : input_(&input) {}
  std::optional<String> value(std::int32_t, StringView, StringView name) const override {
    const auto [place, is_new] = folders_.try_emplace(String(name));
    if (is_new && !input_->one_in(3)) place->second = u"C:\\" + input_->text(input_->below(8));
    return place->second;
  }

 private:
  Input* input_;
  mutable std::map<String, std::optional<String>> folders_;
};

class FixedFolders final : public Folders {
 public:
  String windows() const override { return u"C:\\W"; }
  String system() const override { return u"C:\\W\\S"; }
};

}  // namespace

void paths(Input input) {
  static constexpr StringView pieces[] = {u"%",           u"%%",    u"%DESKTOP%", u"%WINDIR%",
                                          u"%winsysdir%", u"C:\\W", u"C:\\W\\S"};
  const AnyRegistry registry(input);
  const FixedFolders folders;
  const PathClass paths(registry, folders);
  String path;
  for (unsigned piece = input.below(8); piece > 0; --piece) {
    path += pieces[input.below(std::size(pieces))];
    path += input.text(input.below(6));
    if (input.one_in(4)) path += std::get<String>(paths.Desktop());
  }
  for (const bool expand : {false, true}) {
    String changed = path;
    const String result = paths.ProcessPath(changed, expand);
    REQUIRE(result == changed);
    if (path.find(expand ? u'%' : u'C') == String::npos && path.find(u'c') == String::npos) REQUIRE(result == path);
  }
}

}  // namespace tornby::fuzz
