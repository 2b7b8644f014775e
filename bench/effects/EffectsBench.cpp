// The cost of every effect alone, of the master effect around it, and of a type change.
//
//   bench_effects                         time per frame, and of a type change that finds nothing in the cache
//   bench_effects count TYPE BLOCKS CASE [VECTORS]
//                                         runs effect TYPE (0 to 29) over BLOCKS blocks of 512 frames. CASE is `alone`,
//                                         `quiet` (alone, after its tail) or `whole` (inside the master effect).
//                                         Count the instructions of two runs with different numbers of blocks; their
//                                         difference, divided by the additional frames, is the cost of a frame. VECTORS
//                                         is `none` for sample by sample, `sse2` or `avx2`; without it, the best there
//                                         is.
//   bench_effects count TYPE TIMES change changes TIMES times from bypass to TYPE. Count inside `takeChange` only.
//
// scripts/benchmarks.py does both for all effects.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <benchmark/benchmark.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

#include "effects/EffectSet.h"
#include "effects/SivrayMultiEffector.h"
#include "platform/CpuFeatures.h"

namespace {

using namespace tesh::bramel::plugin::sivray::effects;
using tesh::bramel::platform::VectorLimit;
using tesh::bramel::platform::VectorSet;

constexpr int kFrames = 512;
constexpr int kKnob1 = 70;
constexpr int kKnob2 = 90;

/// Drum-like input: decaying noise, the same in every block.
class Input {
 public:
  Input() {
    std::uint32_t seed = 1;
    for (int i = 0; i < kFrames; ++i) {
      seed = seed * 1664525 + 1013904223;
      const int level = 24000 - 40 * i;
      left[static_cast<std::size_t>(i)] = static_cast<std::int16_t>(static_cast<int>(seed >> 17) * level / 32768);
      right[static_cast<std::size_t>(i)] = static_cast<std::int16_t>(level - (static_cast<int>(seed >> 20) & 4095));
    }
  }

  void silence() {
    left.fill(0);
    right.fill(0);
  }

  StereoBlock copy() {
    workLeft = left;
    workRight = right;
    return {workLeft.data(), workRight.data()};
  }

 private:
  std::array<std::int16_t, kFrames> left{};
  std::array<std::int16_t, kFrames> right{};
  std::array<std::int16_t, kFrames> workLeft{};
  std::array<std::int16_t, kFrames> workRight{};
};

/// One effect with its knobs set and all smoothed values settled.
struct Alone {
  explicit Alone(int type) : effects(makeEffects(memory)), effect(*effects[static_cast<std::size_t>(type)]) {
    effect.wake();
    effect.reset();
    effect.setParameter(kEdit1, kKnob1);
    effect.setParameter(kEdit2, kKnob2);
    effect.setTempo(1200);
  }

  void run(StereoBlock block) { effect.process(block, kFrames); }

  SivrayFxMemoryManager memory;
  EffectSet effects;
  SivrayFx& effect;
};

/// The master effect with one type set.
struct Whole {
  explicit Whole(int type) {
    master.setValue(0, type);
    master.setValue(2, kKnob1);
    master.setValue(3, kKnob2);
    master.reset();
  }

  void run(StereoBlock block) { master.process(block, kFrames); }

  SivrayMultiEffector master;
};

/// Renders until the slowest smoothed value has settled.
template <typename Subject>
void settle(Subject& subject, Input& input) {
  for (int i = 0; i < 200; ++i) {
    subject.run(input.copy());
  }
}

template <typename Subject>
void frames(benchmark::State& state, int type) {
  Subject subject(type);
  Input input;
  settle(subject, input);
  for (auto _ : state) {
    subject.run(input.copy());
  }
  state.SetItemsProcessed(state.iterations() * kFrames);
}

/// Evicts the caches, as other plug-ins do in a busy host.
void evictCaches() {
  static std::vector<char> other(std::size_t{64} << 20);
  for (std::size_t i = 0; i < other.size(); i += 64) {
    ++other[i];
  }
}

/// Must not be inlined: the instruction counter finds the change of type by this function's name.
[[gnu::noinline]] void takeChange(SivrayMultiEffector& master, StereoBlock block) { master.process(block, 0); }

/// Plays `type` for 0.3 s, so that its memory is in use, then one block of bypass, and requests the change back to
/// `type`.
void prepareChange(Whole& subject, Input& input, int type) {
  constexpr int kBlocks = 26;
  subject.master.setValue(0, type);
  for (int i = 0; i < kBlocks; ++i) {
    subject.run(input.copy());
  }
  subject.master.setValue(0, 0);
  subject.run(input.copy());
  subject.master.setValue(0, type);
}

void changeType(benchmark::State& state, int type) {
  Whole subject(0);
  Input input;
  for (auto _ : state) {
    state.PauseTiming();
    prepareChange(subject, input, type);
    evictCaches();
    const StereoBlock block = input.copy();
    state.ResumeTiming();
    takeChange(subject.master, block);
  }
}

/// Renders until the tail has ended, however long it is.
void fallSilent(Alone& subject, Input& input) {
  constexpr int kLongestTail = 5000;
  input.silence();
  for (int i = 0; i < kLongestTail && !subject.effect.skip(1); ++i) {
    subject.run(input.copy());
  }
}

template <typename Subject>
void count(int type, int blocks, [[maybe_unused]] bool quiet) {
  Subject subject(type);
  Input input;
  settle(subject, input);
  if constexpr (std::is_same_v<Subject, Alone>) {
    if (quiet) {
      fallSilent(subject, input);
    }
  }
  for (int i = 0; i < blocks; ++i) {
    subject.run(input.copy());
  }
}

void countChanges(int type, int changes) {
  Whole subject(0);
  Input input;
  for (int i = 0; i < changes; ++i) {
    prepareChange(subject, input, type);
    takeChange(subject.master, input.copy());
  }
}

int countOnly(char** arguments) {
  const int type = std::atoi(arguments[0]);
  const int blocks = std::atoi(arguments[1]);
  if (type < 0 || type >= kEffectTypeCount) {
    std::fprintf(stderr, "bench_effects: no effect type %d: use 0 to %d\n", type, kEffectTypeCount - 1);
    return 1;
  }
  if (std::strcmp(arguments[2], "whole") == 0) {
    count<Whole>(type, blocks, false);
  } else if (std::strcmp(arguments[2], "change") == 0) {
    countChanges(type, blocks);
  } else {
    count<Alone>(type, blocks, std::strcmp(arguments[2], "quiet") == 0);
  }
  return 0;
}

VectorSet vectorSetOf(const char* name) {
  return std::strcmp(name, "none") == 0 ? VectorSet::none
                                        : (std::strcmp(name, "sse2") == 0 ? VectorSet::baseline : VectorSet::avx2);
}

void registerAll() {
  for (int type = 0; type < kEffectTypeCount; ++type) {
    const std::string name = effectTypeName(type);
    benchmark::RegisterBenchmark(("alone/" + name).c_str(), frames<Alone>, type);
    benchmark::RegisterBenchmark(("whole/" + name).c_str(), frames<Whole>, type);
    benchmark::RegisterBenchmark(("change/" + name).c_str(), changeType, type)->Iterations(50);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if ((argc == 5 || argc == 6) && std::strcmp(argv[1], "count") == 0) {
    const VectorLimit limit(argc == 6 ? vectorSetOf(argv[5]) : VectorSet::avx2);
    return countOnly(argv + 2);
  }
  registerAll();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
