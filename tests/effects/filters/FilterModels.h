// Slow, plain models of the filters that run in vector registers, one sample at a time.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cmath>

#include "effects/filters/CutoffTables.h"
#include "effects/filters/EqualizerTables.h"
#include "effects/modulation/PlainModel.h"

namespace scene {

namespace fx = tesh::bramel::plugin::sivray::effects;

struct TolvanModel : PlainModel {
  explicit TolvanModel(int number) : mode(number) {}
  int mode;
  std::array<std::int64_t, 2> knobs{};
  struct Settings {
    std::int64_t cutoff = 0, resonance = 0, inputGain = 0;
  } pending, live;
  bool dirty = false;
  struct Ramp {
    std::int64_t target = 0, now = 0, step = 0;
    void to(std::int64_t x) {
      now = target;
      step = (x - target) >> 6;
      target = x;
    }
  } frequency, damping;
  struct State {
    std::int64_t band = 0, low = 0;
  };
  std::array<State, 2> states{};

  void edit(unsigned index, std::int64_t knob) override {
    if (index > 1) return;
    knobs[index] = knob;
    const double rest = 1.0 - static_cast<double>(knobs[1]) / 127.0;
    pending.cutoff = fx::cutoffTable[static_cast<std::size_t>(knobs[0])];
    pending.resonance = static_cast<std::int64_t>(2147314568.0 * (1.0 - rest * rest));
    const std::int64_t room = std::min<std::int64_t>((16777215 - (pending.resonance >> 7)) * 64, 16777215);
    pending.inputGain = ((room >> 1) + 8388608) >> 9;
    dirty = true;
  }
  void clear() { states = {}; }
  void reset() override {
    dirty = true;
    clear();
  }
  void grid() override {
    if (dirty) live = pending;
    dirty = false;
    const std::int64_t c = live.cutoff, e = std::max<std::int64_t>(c - 1367566549, 0);
    const std::int64_t t = (((e * e) >> 31) >> 7) * 3 >> 1;
    const std::int64_t d = ((16777216 - t) * (live.resonance >> 7)) >> 24;
    damping.to(((16777216 - (c >> 8)) * (16777216 - d)) >> 24);
    frequency.to((((d >> 1) + 8388608) * (c >> 7)) >> 24);
  }
  static std::int64_t leak23(std::int64_t v) { return (v * -8388606) >> 23; }
  std::int64_t filtered(State& s, std::int64_t in) const {
    const std::int64_t a = leak23(leak23(s.band)), b = leak23(leak23(s.low));
    const std::int64_t high = clampTo(((in * live.inputGain) >> 6) - ((damping.now * a) >> 23) - b, 16777215);
    s.band = clampTo(((frequency.now * high) >> 23) + a, 16777215);
    s.low = clampTo(((frequency.now * s.band) >> 23) + b, 16777215);
    return sat((mode == 0 ? s.low : (mode == 1 ? high : s.band)) >> 9);
  }
  void sample(std::int64_t& l, std::int64_t& r) override {
    l = filtered(states[0], l);
    r = filtered(states[1], r);
    frequency.now += frequency.step;
    damping.now += damping.step;
  }
};

struct TalkingModel : PlainModel {
  std::array<std::int64_t, 2> knobs{};
  std::array<std::int64_t, 4> pending{}, live{};
  bool dirty = false;
  struct Band {
    std::int64_t state = 0, band = 0, low = 0;
  };
  std::array<Band, 4> bands{};

  static std::int64_t formant(const std::array<double, 5>& at, std::int64_t knob) {
    const std::array<std::int64_t, 5> knobsAt{0, 32, 64, 96, 127};
    for (std::size_t i = 1;; ++i) {
      if (knob > knobsAt[i]) continue;
      const auto width = static_cast<double>(knobsAt[i] - knobsAt[i - 1]);
      return static_cast<std::int64_t>(at[i] - (at[i] - at[i - 1]) * static_cast<double>(knobsAt[i] - knob) / width);
    }
  }
  void edit(unsigned index, std::int64_t knob) override {
    if (index > 1) return;
    knobs[index] = knob;
    const std::int64_t o = (linear(knobs[1]) * 5 >> 3) + 4096;
    pending = {o * 1331 >> 14, formant({4558, 3227, 3227, 1926, 1926}, knobs[0]) * o >> 14,
               formant({9185, 11171, 8192, 6454, 16384}, knobs[0]) * o >> 14,
               formant({17128, 17128, 16880, 16632, 21100}, knobs[0]) * o >> 14};
    dirty = true;
  }
  void reset() override { bands = {}; }
  void grid() override {
    if (dirty) live = pending;
    dirty = false;
  }
  void sample(std::int64_t& l, std::int64_t& r) override {
    const std::int64_t x = (l + r) >> 1;
    std::int64_t sum = 0;
    for (std::size_t i = 0; i < 4; ++i) {
      auto& [state, band, low] = bands[i];
      state += (live[i] - (state >> 15)) * (i == 0 || immediate ? 32767 : 1010);
      const std::int64_t f = state >> 15;
      const std::int64_t a = leaks(band >> 15, 1) * -32766, b = leaks(low >> 15, 1) * -32766;
      const std::int64_t h = clampTo(x * 16384 - (a >> 15) * 1241 - b, 1073741823);
      band = clampTo((h >> 15) * f + a, 1073741823);
      sum += band >> 15;
      low = clampTo((band >> 15) * f + b, 1073741823);
    }
    l = r = sat(sum);
  }
};

struct EqualizerModel : PlainModel {
  std::array<std::size_t, 2> knobs{};
  std::array<float, 6> pending{}, live{}, now{};
  std::array<std::array<float, 3>, 2> memories{};

  void edit(unsigned index, std::int64_t knob) override {
    if (index > 1) return;
    knobs[index] = static_cast<std::size_t>(knob);
    const auto& low = fx::lowShelfTable[knobs[0]];
    const auto& high = fx::highShelfTable[knobs[1]];
    const std::array<int, 6> entries{low.feedforwardOld, low.feedforward, low.feedback,
                                     high.feedback1,     high.gain,       high.feedback2};
    for (std::size_t i = 0; i < 6; ++i) pending[i] = static_cast<float>(entries[i]) / 32768.0F;
  }
  void reset() override { now = live; }
  void grid() override { live = pending; }
  static float limited(float x, float limit) { return std::max(std::min(x, limit), -limit); }
  static float flushed(float x) { return (x + 1.0F) - 1.0F; }
  std::int64_t filtered(std::array<float, 3>& m, std::int64_t in) const {
    const auto& [forwardOld, forward, feedback, feedback1, gain, feedback2] = now;
    m[0] = flushed(static_cast<float>(in) / 32767.0F * gain + feedback1 * m[0]);
    const float old = m[1] * 0.9998779F;
    m[1] = flushed(limited((m[0] - old * 0.99993896F * feedback2) * 4.0F, 10.0F));
    const float kept = m[2] * 0.99993896F * 0.9998779F;
    m[2] = flushed(limited(2.0F * (m[1] * forward + old * forwardOld - kept * feedback), 10.0F));
    return static_cast<std::int64_t>(limited(m[2], 1.0F) * 32767.0F);
  }
  void sample(std::int64_t& l, std::int64_t& r) override {
    for (std::size_t i = 0; i < 6; ++i) now[i] += (live[i] - now[i]) * (immediate ? 1.0F : 0.003F);
    l = filtered(memories[0], l);
    r = filtered(memories[1], r);
  }
};

}  // namespace scene
