// What the programs share. A benchmark is named subject/who/size; the first of a subject is ours, and the report
// compares the others with it.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "base/text.h"

namespace bench {

/// Stands for all the lengths from 1 to 255, an odd order of them; the time is that of one on average.
inline constexpr std::int64_t short_lengths = -255;

inline std::vector<std::uint8_t> some_bytes(std::size_t size) {
  std::vector<std::uint8_t> bytes(size);
  for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::uint8_t>(i * 131 >> 3);
  return bytes;
}

/// ASCII, with so many of a hundred characters replaced by others.
inline tornby::String some_text(std::size_t size, unsigned others = 0, char16_t other = u'\u00E9') {
  tornby::String text(size, u'\0');
  for (std::size_t i = 0; i < size; ++i) text[i] = i * 37 % 100 < others ? other : static_cast<char16_t>(u' ' + i % 95);
  return text;
}

/// What is measured: the time that the processor spends on it, which other work on the machine does not change, or all
/// the time until it is done. Windows counts the former in steps that are too coarse.
enum class Clock { processor, wall };

/// Measures `step(thing, size)`, where `thing` is what `make(size)` returns for the largest size.
template <class Make, class Step>
void add(const std::string& name, std::initializer_list<std::int64_t> sizes, Make make, Step step,
         Clock clock = Clock::processor) {
#ifdef _WIN32
  clock = Clock::wall;
#endif
  for (const std::int64_t size : sizes) {
    auto* const entry = benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
      auto thing = make(static_cast<std::size_t>(size > 0 ? size : -size));
      std::size_t length = static_cast<std::size_t>(size);
      for (auto _ : state) {
        if (size < 0) length = length * 97 % static_cast<std::size_t>(-size) + 1;
        step(thing, length);
        benchmark::ClobberMemory();
      }
    });
    entry->Arg(size);
    if (clock == Clock::wall) entry->UseRealTime();
    constexpr std::int64_t large = 100'000;
    if (size >= large) entry->Repetitions(5);  // what is made for each takes its time
  }
}

}  // namespace bench
