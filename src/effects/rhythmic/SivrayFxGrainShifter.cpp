// The beat grid of the grain shifter and its two lines.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/rhythmic/SivrayFxGrainShifter.h"

#include <algorithm>
#include <array>

#include "core/EngineRate.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/rhythmic/GrainStep.h"

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

/// Samples of a minute times 512: a tempo has 7 fractional bits and a beat four quarters of 96 parts.
constexpr std::int64_t kMinute = static_cast<std::int64_t>(cofu::core::kEngineRate) * 60 * 512;

/// A cycle of 2^32 for 24ths of a beat: 2^32 * 24 * 4, as 3 * 2^37.
constexpr std::int64_t kCycleScale = std::int64_t{3} << 37;

/// 384ths of a beat, times 4.
constexpr std::int64_t kGrainScale = 1536;

/// Far faster than any music; with it, the grid's products stay within 64 bits.
constexpr int kHighestTempoTenths = 100000;

/// Share of the distance that fades and delay move per sample, Q15: a time constant of 100 samples (2 ms).
constexpr std::int32_t kFadeGlide = 327;

/// Beats per minute, 7 fractional bits.
std::int64_t tempoOf(int tempoTenths) {
  constexpr std::array<std::int32_t, 10> kFractions{0, 13, 26, 38, 51, 64, 77, 90, 102, 115};
  const int tenths = std::clamp(tempoTenths, 0, kHighestTempoTenths);
  return ((tenths / 10) << 7) | valueAt(kFractions, tenths % 10);
}

/// The target of a fade: full scale while the top bit of `phase` is set.
constexpr std::int32_t fullWhileNegative(std::uint32_t phase) {
  return (static_cast<std::int32_t>(phase) >> 31) & cofu::core::kFullScale;
}

}  // namespace

GrainShifterLaw::Settings GrainShifterLaw::settingsOf(const Knobs& knobs) {
  const Speed& speed = speedOf(knobs.edit1);
  const std::int64_t tempo = tempoOf(knobs.tempoTenths);
  Settings settings;
  settings.step = static_cast<std::uint32_t>(tempo * kCycleScale / (speed.cycle * kMinute));
  settings.grainStart = static_cast<std::uint32_t>(-(speed.grain * kCycleScale) / (speed.cycle * kGrainScale));
  settings.delay = kLineLength;
  if (tempo > 0) {
    settings.delay = std::min(settings.delay, speed.grain * kMinute / (tempo * kGrainScale));
  }
  settings.mix = valueAt(linearTable, knobs.edit2);
  return settings;
}

void GrainShifterLaw::reset(const Settings& to) {
  realign = true;
  recordFade.setNow(0);
  mix.setNow(to.mix);
  delay = to.delay * kOneQ15;
}

void GrainShifterLaw::aim(const Settings& to, bool immediate) {
  now = to;
  fadeGlide = immediate ? kGlideImmediate : kFadeGlide;
  if (realign) {
    realign = false;
    phase = to.grainStart - to.step;
  }
}

bool GrainShifterLaw::restsAt(const Settings& to, bool) const {
  return mix.restsAt(to.mix) && (delay >> 15) == to.delay;
}

void GrainShifterLaw::glide(const Settings& to, bool immediate) {
  mix.glide(to.mix, glideFactor(immediate));
  delay += (to.delay - (delay >> 15)) * fadeGlide;
}

void GrainShifterLaw::moveFade(SmoothedValue& fade, std::uint32_t at) const {
  fade.glide(fullWhileNegative(at), fadeGlide);
}

/// `from` is the phase before the run. A fade is at rest most of the time.
void GrainShifterLaw::followFade(SmoothedValue& fade, std::uint32_t from, std::int16_t* gains, unsigned count) const {
  constexpr std::uint32_t kHalfCycle = std::uint32_t{1} << 31;
  const std::int32_t target = fullWhileNegative(from + now.step);
  const bool turns = now.step > kHalfCycle / kControlGrid || fullWhileNegative(from + now.step * count) != target;
  if (!turns && fade.restsAt(target)) {
    std::fill_n(gains, count, static_cast<std::int16_t>(target));
    return;
  }
  for (unsigned i = 0; i < count; ++i) {
    from += now.step;
    moveFade(fade, from);
    gains[i] = static_cast<std::int16_t>(fade.value());
  }
}

void GrainShifterLaw::followFades(GrainFades& fades, unsigned count) {
  followFade(recordFade, phase, fades.record, count);
  followFade(outputFade, phase - now.grainStart, fades.output, count);
  phase += now.step * count;
}

void GrainShifterLaw::skip(const Settings&, unsigned count) {
  moveOn(count);
  GrainFades fades;
  for (; count > kControlGrid; count -= kControlGrid) {
    followFades(fades, kControlGrid);
  }
  followFades(fades, count);
}

void GrainShifterLaw::step(const Settings&, std::int16_t& left, std::int16_t& right) {
  phase += now.step;
  moveFade(recordFade, phase);
  moveFade(outputFade, phase - now.grainStart);
  stepGrains(*this, OneSample{recordFade.value()}, OneSample{outputFade.value()}, &left, &right);
}

const RunInLanes<GrainShifterLaw> GrainShifterLaw::runBaseline = runGrains<Samples128>;

template class TwoKnobEffect<GrainShifterLaw>;

}  // namespace tesh::bramel::plugin::sivray::effects
