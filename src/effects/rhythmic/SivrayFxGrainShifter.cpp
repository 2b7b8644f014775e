// The grid of the grain shifter and its two lines.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/rhythmic/SivrayFxGrainShifter.h"

#include <algorithm>
#include <array>

#include "effects/interfaces/KnobTables.h"
#include "effects/rhythmic/GrainLanes.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

/// One range of the Speed knob.
struct Speed {
  int lastKnob;
  std::int64_t cycle;  ///< Length of a clock cycle in 24ths of a beat.
  std::int64_t grain;  ///< Length of a grain in 384ths of a beat.
};

constexpr std::array<Speed, 17> kSpeeds{{{9, 192, 384},
                                         {19, 72, 384},
                                         {29, 96, 192},
                                         {39, 96, 144},
                                         {49, 48, 96},
                                         {59, 48, 72},
                                         {69, 24, 48},
                                         {79, 24, 36},
                                         {89, 36, 30},
                                         {99, 24, 24},
                                         {104, 12, 24},
                                         {109, 12, 16},
                                         {119, 12, 12},
                                         {121, 12, 8},
                                         {123, 12, 6},
                                         {125, 12, 4},
                                         {127, 12, 3}}};

const Speed& speedOf(int knob) {
  return *std::find_if(kSpeeds.begin(), kSpeeds.end() - 1, [knob](const Speed& s) { return knob <= s.lastKnob; });
}

/// Samples of a minute, times the 512 that relates the tempo's fraction to the lengths in parts of a beat.
constexpr std::int64_t kMinute = std::int64_t{44100} * 60 * 512;
constexpr std::int64_t kCycleScale = std::int64_t{3} << 37;
constexpr std::int64_t kGrainScale = 1536;

/// Far beyond any music; the products of the grid stay within 64 bits.
constexpr int kHighestTempoTenths = 100000;

constexpr std::int32_t kFadeGlide = 327;

/// What a fade goes to: full scale while the top bit of `phase` is set.
constexpr std::int32_t fullWhileNegative(std::uint32_t phase) {
  return (static_cast<std::int32_t>(phase) >> 31) & cofu::core::kFullScale;
}

}  // namespace

int SivrayFxGrainShifter::setParameter(unsigned index, int value) {
  if (index != kEdit1 && index != kEdit2) {
    return 0;
  }
  const int knob = value & 127;
  (index == kEdit1 ? edit1 : edit2) = knob;
  updateSettings();
  return knob;
}

void SivrayFxGrainShifter::setTempo(int tempoTenths) {
  constexpr std::array<std::int32_t, 10> kTenths{0, 13, 26, 38, 51, 64, 77, 90, 102, 115};
  const int tenths = std::clamp(tempoTenths, 0, kHighestTempoTenths);
  tempo = ((tenths / 10) << 7) | kTenths[static_cast<std::size_t>(tenths % 10)];
  updateSettings();
}

void SivrayFxGrainShifter::updateSettings() {
  const Speed& speed = speedOf(edit1);
  const std::int64_t beats = tempo;
  Settings settings;
  settings.mix = linearTable[static_cast<std::size_t>(edit2)];
  settings.step = static_cast<std::uint32_t>(beats * kCycleScale / (speed.cycle * kMinute));
  settings.delay = kLineLength;
  if (beats > 0) {
    settings.delay = std::min(settings.delay, speed.grain * kMinute / (beats * kGrainScale));
  }
  grainStart = static_cast<std::uint32_t>(-(speed.grain * kCycleScale) / (speed.cycle * kGrainScale));
  pending.post(settings);
}

void SivrayFxGrainShifter::reset() {
  lines = assigner->acquire();
  std::fill_n(lines, requiredSamples(), std::int16_t{0});
  restartPhase();
  clock.phase = 0;
  clock.recordFade.setNow(0);
  clock.mix.setNow(live.mix);
  clock.delay = live.delay * 32768;
}

void SivrayFxGrainShifter::notify(int code) {
  if (code == kRestart) {
    reset();
  }
}

void SivrayFxGrainShifter::process(StereoBlock& block, unsigned count) {
  for (unsigned start = 0; start < count; start += kControlGrid) {
    pending.takeInto(live);
    if (realign) {
      realign = false;
      clock.phase = grainStart - live.step;
    }
    renderGrid(block, start, std::min(count, start + kControlGrid));
  }
}

void SivrayFxGrainShifter::renderGrid(StereoBlock block, unsigned start, unsigned end) {
  if (clock.mix.restsAt(live.mix) && (clock.delay >> 15) == live.delay) {
    render<false>(block, start, end);
  } else {
    render<true>(block, start, end);
  }
}

/// `kMoving` tells whether mix and delay are on their way.
template <bool kMoving>
void SivrayFxGrainShifter::render(StereoBlock block, unsigned start, unsigned end) {
  const std::int32_t fadeGlide = immediate ? kGlideImmediate : kFadeGlide;
  const std::uint32_t soundStart = grainStart;
  const Settings to = live;
  GrainLanes law(lines, lines + kLineLength);
  law.setMix(clock.mix.value());
  law.setFraction(static_cast<std::int32_t>(clock.delay & 32767));
  Clock now = clock;
  unsigned write = writeIndex;
  for (unsigned i = start; i < end; ++i) {
    now.phase += to.step;
    now.recordFade.glide(fullWhileNegative(now.phase), fadeGlide);
    now.outputFade.glide(fullWhileNegative(now.phase - soundStart), fadeGlide);
    if constexpr (kMoving) {
      now.mix.glide(to.mix, glideFactor(immediate));
      now.delay += (to.delay - (now.delay >> 15)) * fadeGlide;
      law.setMix(now.mix.value());
      law.setFraction(static_cast<std::int32_t>(now.delay & 32767));
    }
    law.setRecord(now.recordFade.value());
    law.setOutput(now.outputFade.value());
    const unsigned read = (write - static_cast<unsigned>(now.delay >> 15)) & kMask;
    law.step({read, (read - 1) & kMask, write}, block.left[i], block.right[i]);
    write = (write + 1) & kMask;
  }
  clock = now;
  writeIndex = write;
}

}  // namespace tesh::bramel::plugin::sivray::effects
