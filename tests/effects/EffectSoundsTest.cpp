// Checksums of the output of every effect and of the master effect, over a long scene of edits and sounds.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdlib>
#include <thread>
#include <vector>

#include "effects/EffectSet.h"
#include "effects/SivrayMultiEffector.h"
#include "effects/interfaces/SivrayFxMemoryManager.h"
#include "platform/CpuFeatures.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

/// Computed when every sample matched independent 64-bit models of all effects in random scenes. A changed checksum
/// means a changed sound, which must be checked against such a model.
constexpr std::array<std::uint32_t, kEffectTypeCount> kChecksums{
    439210495U,  3219736049U, 3689645305U, 325860864U,  1742038561U, 1875655746U, 513980713U,  1119812243U,
    3225784249U, 2768066724U, 4042804395U, 3291972898U, 4181238208U, 3365173335U, 4144028685U, 3258012232U,
    4263043233U, 2783102211U, 4241432592U, 426081275U,  2426361655U, 2244294784U, 2769004335U, 2436038811U,
    1034026558U, 1865368288U, 3221352985U, 3569234702U, 4195027005U, 3703423511U};

/// Computed when every sample of the scene matched a model of the master effect that computes all effects completely.
constexpr std::uint32_t kMasterChecksum = 1282405986U;

/// A linear congruential generator, because the results of std::uniform_int_distribution depend on the library.
class Chance {
 public:
  int upTo(int last) {
    state = state * 6364136223846793005U + 1442695040888963407U;
    return static_cast<int>((state >> 33) % static_cast<std::uint64_t>(last + 1));
  }

 private:
  std::uint64_t state = 1;
};

/// Makes one random change: edit, tempo, mode, reset or transport code.
void actAtRandom(Chance& chance, SivrayFx& effect) {
  const int knob = chance.upTo(5) == 0 ? 127 * chance.upTo(1) : chance.upTo(127);
  switch (chance.upTo(9)) {
    case 0:
      return effect.setTempo(chance.upTo(3) == 0 ? chance.upTo(30) : 300 + chance.upTo(2700));
    case 1:
      return effect.setImmediate(chance.upTo(2) == 0);
    case 2:
      return chance.upTo(3) == 0 ? effect.reset() : effect.notify(chance.upTo(7));
    case 3:
      return effect.restartPhase();
    default:
      effect.setParameter(static_cast<unsigned>(kEdit1 + chance.upTo(1)), knob);
  }
}

/// As above for the master effect, with changes of type.
void actAtRandom(Chance& chance, SivrayMultiEffector& master) {
  const int kind = chance.upTo(9);
  const int value = chance.upTo(127);
  switch (kind) {
    case 0:
      return void(master.setValue(kEffectType, value % kEffectTypeCount));
    case 1:
      return void(master.setValue(kEffectSwitch, value < 80 ? 1 : 0));
    case 2:
      return master.setTempo(20 * value);
    case 3:
      return value < 20 ? master.reset() : master.transport(value % 4);
    default:
      master.setValue(kind % 2 == 0 ? kEdit1 : kEdit2, value);
  }
}

void play(SivrayFx& effect, StereoBlock block, int frames) { effect.process(block, static_cast<unsigned>(frames)); }
void play(SivrayMultiEffector& master, StereoBlock block, int frames) { master.process(block, frames); }

/// Returns a sample of noise, a square wave, clicks or silence, at a random level.
std::int16_t sampleOf(Chance& chance, int kind, int level, int i) {
  const int noise = chance.upTo(2 * level) - level;
  const std::array<int, 4> kinds{0, (i / 50) % 2 == 0 ? level : -level, i % 97 == 0 ? level : 0, noise};
  return static_cast<std::int16_t>(std::clamp(kinds[static_cast<std::size_t>(std::min(kind, 3))], -32768, 32767));
}

/// Changes knobs and tempo on another thread while this one renders.
void playWhileKnobsTurn(SivrayFx& effect) {
  std::atomic<bool> ends{false};
  std::thread turner([&] {
    for (int i = 0; !ends; ++i) {
      effect.setParameter(kEdit1, i);
      effect.setParameter(kEdit2, i * 7);
      effect.setTempo(i % 3000);
    }
  });
  std::array<std::vector<std::int16_t>, 2> sound{std::vector<std::int16_t>(333, 1000), std::vector<std::int16_t>(333)};
  StereoBlock block{sound[0].data(), sound[1].data()};
  for (int i = 0; i < 40; ++i) {
    effect.setImmediate(i % 8 == 0);
    effect.process(block, 333);
  }
  ends = true;
  turner.join();
}

/// Sets both knobs, waits for the end of the tail, resets the effect and returns the left channel of a constant input.
std::vector<std::int16_t> soundAfterReset(SivrayFx& effect) {
  effect.setTempo(1200);
  effect.setParameter(kEdit1, 40);
  effect.setParameter(kEdit2, 90);
  effect.setImmediate(true);
  std::array<std::vector<std::int16_t>, 2> sound{std::vector<std::int16_t>(60000), std::vector<std::int16_t>(60000)};
  StereoBlock block{sound[0].data(), sound[1].data()};
  effect.process(block, 60000);
  effect.reset();
  effect.notify(kRhythmicRestart);
  effect.restartPhase();
  sound[0] = sound[1] = std::vector<std::int16_t>(1024, 5000);
  block = {sound[0].data(), sound[1].data()};
  effect.process(block, 1024);
  return sound[0];
}

/// An integer glide stops a little before its target. A lost knob change makes a far greater difference.
constexpr int kGlideRest = 64;

int farthestApart(const std::vector<std::int16_t>& a, const std::vector<std::int16_t>& b) {
  int farthest = 0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    farthest = std::max(farthest, std::abs(a[i] - b[i]));
  }
  return farthest;
}

template <typename Subject>
std::uint32_t checksumOf(Subject& subject) {
  Chance chance;
  std::uint32_t sum = 2166136261U;
  for (int b = 0; b < 400; ++b) {
    for (int acts = chance.upTo(2); acts > 0; --acts) {
      actAtRandom(chance, subject);
    }
    const int frames = chance.upTo(2) == 0 ? chance.upTo(2048) : chance.upTo(200);
    const int kind = chance.upTo(6);
    const int level = 1 << chance.upTo(15);
    std::array<std::vector<std::int16_t>, 2> sound;
    for (auto& side : sound) {
      for (int i = 0; i < frames; ++i) {
        side.push_back(sampleOf(chance, kind, level, i));
      }
    }
    play(subject, {sound[0].data(), sound[1].data()}, frames);
    for (const auto& side : sound) {
      for (const std::int16_t sample : side) {
        sum = (sum ^ static_cast<std::uint16_t>(sample)) * 16777619U;
      }
    }
  }
  return sum;
}

TEST(Effects, EveryEffectKeepsItsSoundWithEverySetOfInstructions) {
  using platform::VectorSet;
  for (const VectorSet set : {VectorSet::none, VectorSet::baseline, VectorSet::avx2}) {
    const platform::VectorLimit limit(set);
    for (int type = 0; type < kEffectTypeCount; ++type) {
      SivrayFxMemoryManager memory;
      const EffectSet effects = makeEffects(memory);
      const auto i = static_cast<std::size_t>(type);
      EXPECT_EQ(checksumOf(*effects[i]), kChecksums[i]) << effectTypeName(type) << ", set " << static_cast<int>(set);
    }
    SivrayMultiEffector master;
    EXPECT_EQ(checksumOf(master), kMasterChecksum) << "set " << static_cast<int>(set);
  }
}

TEST(Effects, EveryEffectTakesItsLastKnobsAfterAnotherThreadHasTurnedThem) {
  SivrayFxMemoryManager memory;
  SivrayFxMemoryManager memoryOfFresh;
  const EffectSet effects = makeEffects(memory);
  const EffectSet fresh = makeEffects(memoryOfFresh);
  for (std::size_t type = 0; type < effects.size(); ++type) {
    playWhileKnobsTurn(*effects[type]);
    EXPECT_LE(farthestApart(soundAfterReset(*effects[type]), soundAfterReset(*fresh[type])), kGlideRest)
        << effectTypeName(static_cast<int>(type));
  }
}

}  // namespace

}  // namespace tesh::bramel::plugin::sivray::effects
