// Slow, plain models of the filters, one sample at a time.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cmath>

#include "effects/filters/CutoffTables.h"
#include "effects/filters/EqualizerTables.h"
#include "effects_modulation/PlainModel.h"

namespace scene {

namespace fx = tesh::bramel::plugin::sivray::effects;

struct EqualizerModel : PlainModel {
  std::array<std::size_t, 2> knobs{};
  std::array<float, 6> pending{}, live{}, smoothed{};
  bool dirty = false;
  std::array<std::array<float, 3>, 2> memory{};

  void edit(unsigned index, std::int64_t knob) override {
    if (index > 1) return;
    knobs[index] = static_cast<std::size_t>(knob);
    const fx::LowShelfRow low = fx::lowShelfTable[knobs[0]];
    const fx::HighShelfRow high = fx::highShelfTable[knobs[1]];
    const std::array<std::int16_t, 6> entries{low.feedforwardOld, low.feedforward, low.feedback,
                                              high.feedback1,     high.gain,       high.feedback2};
    for (std::size_t i = 0; i < 6; ++i) pending[i] = static_cast<float>(entries[i] / 32768.0);
    dirty = true;
  }
  void reset() override { smoothed = live; }
  void grid() override {
    if (dirty) live = pending;
    dirty = false;
  }
  static float clampFloat(float x, float limit) { return std::fmin(std::fmax(x, -limit), limit); }
  static std::int64_t filtered(std::array<float, 3>& m, const std::array<float, 6>& k, std::int64_t in) {
    const float r = 0.9998779F, s = 0.99993896F;
    auto& [a, b, c] = m;
    const float x = static_cast<float>(in) / 32767.0F;
    a = x * k[4] + k[3] * a + 1.0F - 1.0F;
    const float old = b * r;
    b = clampFloat((a - old * s * k[5]) * 4.0F, 10.0F) + 1.0F - 1.0F;
    c = clampFloat(2.0F * (b * k[1] + old * k[0] - c * s * r * k[2]), 10.0F) + 1.0F - 1.0F;
    return static_cast<std::int64_t>(clampFloat(c, 1.0F) * 32767.0F);
  }
  void sample(std::int64_t& l, std::int64_t& r) override {
    for (std::size_t i = 0; i < 6; ++i) smoothed[i] += (live[i] - smoothed[i]) * (immediate ? 1.0F : 0.003F);
    l = filtered(memory[0], smoothed, l);
    r = filtered(memory[1], smoothed, r);
  }
};

struct PeakingModel : PlainModel {
  std::array<float, 3> knobs{61, 70, 64};
  std::array<std::array<std::int64_t, 4>, 2> memory{};

  void edit(unsigned index, std::int64_t knob) override {
    if (index < 2) knobs[index] = static_cast<float>(knob);
  }
  void reset() override { memory = {}; }
  static std::int64_t whole(float x) { return static_cast<std::int64_t>(x * 16777216.0F); }
  void sample(std::int64_t& l, std::int64_t& r) override {
    const auto [freq, gain, qKnob] = knobs;
    const float frequency = 440.0F * static_cast<float>(std::pow(2.0, (freq - 61.0F) / 12.0F));
    const float omega = 6.2831853F * frequency / 44100.0F;
    const float q = qKnob < 64 ? qKnob * 0.9F / 64 + 0.1F : qKnob * 0.06349207F + 1.0F - 4.0634923F;
    const float alpha = static_cast<float>(std::sin(static_cast<double>(omega))) / (2 * q);
    const float amplitude = std::sqrt(static_cast<float>(std::pow(10.0, (gain * 0.23622048F - 15.0F) / 20.0F)));
    const float d = 1 + alpha / amplitude;
    const std::int64_t b0 = whole((1 + alpha * amplitude) / d), b2 = whole((1 - alpha * amplitude) / d);
    const std::int64_t a1 = whole(-2 * static_cast<float>(std::cos(static_cast<double>(omega))) / d);
    const std::int64_t a2 = whole((1 - alpha / amplitude) / d);
    const auto filtered = [&](std::array<std::int64_t, 4>& m, std::int64_t in) {
      auto& [x1, x2, y1, y2] = m;
      const std::int64_t x = in * 512;
      const std::int64_t y = (b0 * x + a1 * x1 + b2 * x2 - a1 * y1 - a2 * y2) >> 24;
      m = {x, x1, wrap(y), y1};
      return sat(y >> 9);
    };
    l = filtered(memory[0], l);
    r = filtered(memory[1], r);
  }
};

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

struct CombModel : PlainModel {
  std::array<std::int64_t, 2> knobs{64, 64};
  std::int64_t delayState = 0, feedbackState = 0;
  struct Line {
    std::array<std::int64_t, 2048> v{};
    std::int64_t write = 0, read = 0, output = 0;
  };
  std::array<Line, 2> lines{};

  void edit(unsigned index, std::int64_t knob) override {
    if (index < 2) knobs[index] = knob;
  }
  void reset() override { lines[0].output = lines[1].output = 0; }
  std::int64_t filtered(Line& line, std::int64_t in) const {
    const std::int64_t f = delayState & 32767, eta = ((32767 - f) * 32768) / (f + 32767);
    const std::int64_t v = ((feedbackState * line.output) >> 31) + in * 32768;
    line.v[static_cast<std::size_t>(line.write)] = v;
    const std::int64_t a = line.v[static_cast<std::size_t>(line.read)];
    const std::int64_t b = line.v[static_cast<std::size_t>((line.read - 1) & 2047)];
    line.write = (line.write + 1) & 2047;
    line.read = (line.write - (delayState >> 15)) & 2047;
    const std::int64_t product = wrap(((a >> 15) - (line.output >> 15)) * eta);
    line.output = clampTo((product >> 15) + b, 1073741823);
    return sat(v >> 15);
  }
  void sample(std::int64_t& l, std::int64_t& r) override {
    const auto delay = static_cast<std::int64_t>(44187388.0 * std::pow(2.0, static_cast<double>(-knobs[0]) / 12.0));
    const double decay = -195.11349 * std::pow(2.0, static_cast<double>(-knobs[0] - knobs[1]) / 12.0);
    const auto feedback = static_cast<std::int64_t>(2147483648.0 * std::exp(decay));
    delayState = (delay * 28599 + delayState * 4168) >> 15;
    feedbackState = (feedback * 32439 + feedbackState * 328) >> 15;
    l = filtered(lines[0], l);
    r = filtered(lines[1], r);
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

}  // namespace scene
