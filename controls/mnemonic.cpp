#include "controls/mnemonic.h"

namespace tornby {

char16_t mnemonic(StringView caption) {
  for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
    if (caption[i] != u'&') continue;
    const char16_t marked = caption[++i];
    if (marked != u'&' && marked != u' ') return marked;
  }
  return 0;
}

String without_mnemonic(StringView caption) {
  String plain;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == u'&' && ++i == caption.size()) break;
    plain += caption[i];
  }
  return plain;
}

}  // namespace tornby
