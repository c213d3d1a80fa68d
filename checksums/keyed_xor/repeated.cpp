// A vector a step: the key, repeated, is looked at from the place that the step has come to. The last vector overlaps
// the one before it, and is worked out first, since both may lie where the bytes came from.
#include "checksums/keyed_xor/kernels.h"
#include "checksums/vectors.h"

namespace tornby::keyed_xor::TORNBY_KERNEL {
namespace {

constexpr std::size_t shortest_ring = 17;
constexpr std::size_t longest_ring = 512;
constexpr std::size_t passes_for_a_ring = 8;  // making one pays from there on

/// From `shift_up` + 16 - n on, a shuffle that moves all bytes n places up; zeros move in.
alignas(16) constexpr std::uint8_t shift_up[32] = {0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80,
                                                   0x80, 0x80, 0x80, 0x80, 0x80, 0,    1,    2,    3,    4,    5,
                                                   6,    7,    8,    9,    10,   11,   12,   13,   14,   15};

/// Row n holds the numbers from 0 to 31, modulo n.
struct Remainders {
  alignas(32) std::uint8_t row[shortest_ring][32];
};
constexpr Remainders remainders = [] {
  Remainders result{};
  for (unsigned n = 1; n < shortest_ring; ++n)
    for (unsigned i = 0; i < 32; ++i) result.row[n][i] = static_cast<std::uint8_t>(i % n);
  return result;
}();

/// Two pieces of `piece` bytes that meet or overlap, from the key's start and from its end, as one.
__m128i joined(__m128i first, __m128i last, std::size_t place_of_last) {
  const __m128i order = Narrow::load(shift_up + 16 - place_of_last);
  return Narrow::either(first, Narrow::looked_up(last, order));
}
__m128i load_8(const std::uint8_t* from) {
  return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(from));
}
__m128i load_4(const std::uint8_t* from) {
  return _mm_cvtsi32_si128(
      static_cast<int>(from[0] | from[1] << 8 | from[2] << 16 | static_cast<std::uint32_t>(from[3]) << 24));
}
/// The bytes of a key that has at most sixteen.
__m128i load_key(const std::uint8_t* key, std::size_t size) {
  if (size == 16) return Narrow::load(key);
  if (size >= 8) return joined(load_8(key), load_8(key + size - 8), size - 8);
  if (size >= 4) return joined(load_4(key), load_4(key + size - 4), size - 4);
  const std::uint32_t last = size == 1 ? 0u : static_cast<std::uint32_t>(key[size - 1]) << 8 * (size - 1);
  const std::uint32_t middle = size == 3 ? static_cast<std::uint32_t>(key[1]) << 8 : 0u;
  return _mm_cvtsi32_si128(static_cast<int>(key[0] | middle | last));
}

/// A key of at most sixteen bytes, in one register.
template <class V>
class ShortKey {
 public:
  ShortKey(const std::uint8_t* key, std::size_t size)
      : key_(V::in_each_lane(load_key(key, size))),
        indices_(V::load(remainders.row[size])),
        size_(V::all8(static_cast<int>(size))) {}

  /// A vector of the repeated key from byte `place` on.
  typename V::Vector from(std::size_t place) const {
    const auto moved = V::sum8(indices_, V::all8(static_cast<int>(place)));
    return V::looked_up(key_, V::less8(moved, V::difference8(moved, size_)));  // what falls below 0 is the greater
  }

 private:
  typename V::Vector key_;
  typename V::Vector indices_;
  typename V::Vector size_;
};

/// A longer one, written out a vector longer than it is.
template <class V>
class RingKey {
 public:
  RingKey(const std::uint8_t* key, std::size_t size) {
    for (std::size_t i = 0; i < size - 16; i += 16) Narrow::store(ring_ + i, Narrow::load(key + i));
    Narrow::store(ring_ + size - 16, Narrow::load(key + size - 16));
    for (std::size_t i = 0; i < V::size; i += 16) Narrow::store(ring_ + size + i, Narrow::load(ring_ + i));
  }
  typename V::Vector from(std::size_t place) const { return V::load(ring_ + place); }

 private:
  alignas(16) std::uint8_t ring_[longest_ring + V::size];
};

template <class V, class Key>
void apply_vectors(const std::uint8_t* from, std::uint8_t* to, std::size_t size, const Key& key, std::size_t key_size,
                   std::size_t phase) {
  const std::size_t last = size - V::size;
  const auto last_vector = V::differing(V::load(from + last), key.from((phase + last) % key_size));
  const std::size_t step = V::size % key_size;
  if (step == 0) {
    const auto pattern = key.from(phase);
    for (std::size_t i = 0; i < last; i += V::size) V::store(to + i, V::differing(V::load(from + i), pattern));
  } else {
    for (std::size_t i = 0; i < last; i += V::size) {
      V::store(to + i, V::differing(V::load(from + i), key.from(phase)));
      phase += step;
      if (phase >= key_size) phase -= key_size;
    }
  }
  V::store(to + last, last_vector);
}

template <class V>
void apply_by(const std::uint8_t* from, std::uint8_t* to, std::size_t size, const std::uint8_t* key,
              std::size_t key_size, std::size_t phase) {
  if (key_size < shortest_ring)
    apply_vectors<V>(from, to, size, ShortKey<V>(key, key_size), key_size, phase);
  else if (key_size <= longest_ring && size >= passes_for_a_ring * key_size)
    apply_vectors<V>(from, to, size, RingKey<V>(key, key_size), key_size, phase);
  else
    apply_plain(from, to, size, key, key_size, phase);  // its passes are long enough for vectors
}

}  // namespace

void apply(const std::uint8_t* from, std::uint8_t* to, std::size_t size, const std::uint8_t* key, std::size_t key_size,
           std::size_t phase) {
  if (size >= Widest::size) return apply_by<Widest>(from, to, size, key, key_size, phase);
  if (size >= Narrow::size) return apply_by<Narrow>(from, to, size, key, key_size, phase);
  apply_plain(from, to, size, key, key_size, phase);
}

}  // namespace tornby::keyed_xor::TORNBY_KERNEL
