// Loops that compilers turn into vector code, whatever the width.
#include "base/code_map.h"

namespace tornby::TORNBY_KERNEL {
namespace {

/// The units and the codes of a run, and how far apart they lie.
struct Place {
  std::uint16_t first;
  std::uint16_t last;  // counted from the first
  std::uint16_t distance;
};
using Unit = std::uint16_t;

/// Adds the distance to each number that lies within the place. Returns whether the others are ASCII.
template <std::size_t stride, class In, class Out>
bool shift(const In* in, Out* out, Place place) {
  Unit others = 0;
  for (std::size_t i = 0; i < stride; ++i) {
    const Unit number = in[i];
    const Unit inside = static_cast<Unit>(number - place.first) <= place.last ? 0xFFFF : 0;
    others |= static_cast<Unit>(number & ~inside);
    out[i] = static_cast<Out>(number + (inside & place.distance));
  }
  return others < 0x80;
}

template <std::size_t stride, class In, class Out>
bool copy_ascii(const In* in, Out* out) {
  Unit any = 0;
  for (std::size_t i = 0; i < stride; ++i) any |= in[i];
  if (any >= 0x80) return false;
  for (std::size_t i = 0; i < stride; ++i) out[i] = static_cast<Out>(in[i]);
  return true;
}

template <std::size_t stride, class In, class Out>
bool convert_stride(const In* in, Out* out, const Place* place) {
  return copy_ascii<stride>(in, out) || (place && shift<stride>(in, out, *place));
}

template <class In, class Out>
std::size_t convert(const In* in, std::size_t size, Out* out, const Place* place) {
  constexpr std::size_t short_stride = 16;
  std::size_t done = 0;
  for (; size - done >= code_stride; done += code_stride)
    if (!convert_stride<code_stride>(in + done, out + done, place)) return done;
  for (; size - done >= short_stride; done += short_stride)
    if (!convert_stride<short_stride>(in + done, out + done, place)) return done;
  if (done != 0 && done != size) {  // the last stride overlaps the one before
    const std::size_t at = size - short_stride;
    return convert_stride<short_stride>(in + at, out + at, place) ? size : done;
  }
  for (; done != size; ++done)
    if (!convert_stride<1>(in + done, out + done, place)) return done;
  return done;
}

}  // namespace

std::size_t narrow(const char16_t* units, std::size_t size, std::uint8_t* codes, const CodeMap* map) {
  if (!map || map->run.length == 0) return convert(units, size, codes, nullptr);
  const CodeRun& run = map->run;
  const Place place{run.first, static_cast<Unit>(run.length - 1), static_cast<Unit>(run.code - run.first)};
  return convert(units, size, codes, &place);
}

std::size_t widen(const std::uint8_t* codes, std::size_t size, char16_t* units, const CharacterMap& map) {
  const CodeRun& run = map.run;
  const Place place{run.code, static_cast<Unit>(run.length - 1), static_cast<Unit>(run.first - run.code)};
  return convert(codes, size, units, run.length != 0 ? &place : nullptr);
}

void widen_bytes(const std::uint8_t* bytes, std::size_t size, char16_t* units) {
  for (std::size_t i = 0; i < size; ++i) units[i] = bytes[i];
}

}  // namespace tornby::TORNBY_KERNEL
