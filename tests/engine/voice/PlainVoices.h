// A plain model of the voices, one sample and one voice at a time. It shares only the pads' settings with the code
// under test, and the kernels' samples must equal the model's.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "engine/voice/PadValues.h"
#include "support/SampleFolder.h"

namespace plain {

using tesh::bramel::plugin::sivray::PadParameter;
using tesh::bramel::plugin::sivray::PadValues;

inline std::int32_t mul(int bits, std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(std::int64_t{a} * b)) >> bits;
}
inline std::int32_t clip(std::int32_t x) { return x < -32767 ? -32767 : x > 32767 ? 32767 : x; }

/// A ramp with its own target; `field` is the voice's value.
struct Ramp {
  std::int32_t rate = 0, current = 0, target = 0, field = 0;
  bool moving = false;

  void setNow(std::int32_t value) { current = target = field = value; }
  void setTarget(std::int32_t value) {
    if (value == target) return;
    moving = moving || current == target;
    target = value;
  }
  void bind() { setNow(field); }
  void bindKeepingTarget() { current = field; }
  void tick() {
    if (!moving) return;
    const std::int32_t a = mul(15, rate, current - target);
    current = target + mul(15, -32767, a);
    field = current;
    moving = current != target;
  }
};

struct Voice {
  Ramp boost{-32511}, level{0}, pan{-32511}, envelope{-32511}, fade{-32703, 0, 32767}, dry{-256}, effect{-256};
  const PadValues* group = nullptr;
  const std::vector<std::int16_t>* data = nullptr;
  std::int64_t length = 0, position = 0, remaining = 0;
  std::int32_t step = 0, stepSigned = 0, pad = 0, slot = -1;
  bool reversed = false;
  float rate = 44100.0F, ratio = 0, speed = 1.0F;
  std::int32_t amount = 0, stateL = 0, stateR = 0, current = 0;
  std::int32_t egTime = 0, levelIndex = 0, counter = 0, finished = 1, phase = 0, gate = 0;
  std::int32_t levelSetting = 0, velocity = 0, muted = 0, panSetting = 64;
  std::int32_t enabled = 0, restart = 0, peakL = 0, peakR = 0, fadeEnabled = 0, heardL = 0, heardR = 0;
  std::int32_t active = 0, live = 0, trigger = 0, triggerVelocity = 0, dirty = 0, cents = 0, send = 0, state = 0;
  std::uint32_t increment = 0;

  std::array<Ramp*, 7> ramps() { return {&boost, &level, &pan, &envelope, &fade, &dry, &effect}; }

  void rebind() {
    for (Ramp* ramp : {&boost, &level, &pan, &envelope, &dry, &effect}) ramp->bind();
    fade.bindKeepingTarget();
  }

  void clear() {
    step = stepSigned = 0;
    position = remaining = 0;
    amount = stateL = stateR = current = 0;
    enabled = restart = peakL = peakR = 0;
    level.field = 0;
    panSetting = 64;
    fade.field = fadeEnabled = 0;
  }

  std::int32_t get(PadParameter p) const { return (*group)[p]; }

  static std::int32_t boostOf(std::int32_t amount) { return (-4194303 + 99012 * (amount & 127)) >> 8; }
  static std::int32_t panOf(std::int32_t p) { return std::clamp(p * 66577 - 66624, 0, 8388607) >> 8; }
  std::int32_t levelOf() const {
    if (muted != 0 || velocity > 127 || velocity < 1) return 0;
    const auto curve = static_cast<std::int64_t>(8388607.0 * std::pow(10.0, -(127 - velocity) * 0.01));
    return static_cast<std::int32_t>((curve * (levelSetting * levelSetting * 511)) >> 23) >> 8;
  }

  static float sixDecimals(double ratio) { return static_cast<float>(std::floor(ratio * 1e6 + 0.5) / 1e6); }

  void computePitch() {
    if (dirty != 0) {
      const std::int32_t x = cents + 100;
      const std::int32_t i = x / 100;
      const float semitone = sixDecimals(std::pow(2.0, (std::clamp(i, 0, 50) - 25) / 12.0));
      const float cent = sixDecimals(std::pow(2.0, (x - i * 100) / 1200.0));
      const float value = semitone * cent * ratio * 65536.0F;
      increment = static_cast<std::uint32_t>(static_cast<std::int64_t>(value));
      dirty = 0;
    }
    step = static_cast<std::int32_t>(increment >> 4);
    stepSigned = reversed ? -step : step;
  }

  void gates() {
    dry.setTarget(send == 0 ? 32767 : 0);
    effect.setTarget(send == 1 ? 32767 : 0);
  }

  void start(const std::vector<std::int16_t>& slotData, std::int64_t slotFrames, float waveRate) {
    dirty = 1;
    reversed = get(PadParameter::reverse) != 0;
    rate = waveRate;
    ratio = static_cast<float>(std::pow(2.0, (std::log(double{rate}) - std::log(44100.0)) / std::log(2.0)));
    data = &slotData;
    length = slotFrames;
    remaining = length << 12;
    position = reversed && length > 0 ? (length - 1) << 12 : 0;
    send = get(PadParameter::fxSend);
    gates();
    cents = get(PadParameter::pitch) * 100 - 100 + get(PadParameter::pitchFine);
    computePitch();
    amount = get(PadParameter::lowBoost);
    stateL = stateR = 0;
    boost.setNow(boostOf(amount));
    current = (get(PadParameter::punch) << 8) - 1;
    egTime = get(PadParameter::egTime);
    levelIndex = 127;
    envelope.setNow(32762);
    const float lengthAt = std::trunc(static_cast<float>(length) * 44100.0F / rate);
    const auto t = static_cast<float>(egTime + 1);
    const float vf = 2.0F * std::min(lengthAt, 2147483648.0F) * 6.1035156e-5F * t * t;
    const std::int32_t v = vf >= 2147483648.0F ? 2147483647 : static_cast<std::int32_t>(vf);
    const std::int32_t d = (v >> 2) + (v >> 1);
    speed = 127.0F / static_cast<float>(d == 0 ? 1 : d);
    counter = finished = 0;
    gate = get(PadParameter::egMode) != 0;
    phase = 1;
    velocity = triggerVelocity;
    muted = get(PadParameter::mute) == 1;
    levelSetting = get(PadParameter::level);
    level.setNow(levelOf());
    panSetting = get(PadParameter::pan);
    pan.setNow(panOf(panSetting));
    enabled = -1;
    active = state = live = 1;
    fadeEnabled = 0;
  }

  void control() {
    if (live == 0 || group == nullptr || state == 2) return;
    const std::int32_t newCents = get(PadParameter::pitch) * 100 - 100 + get(PadParameter::pitchFine);
    if (std::exchange(cents, newCents) != newCents) dirty = 1;
    if (std::exchange(send, get(PadParameter::fxSend)) != send) gates();
    if (std::exchange(amount, get(PadParameter::lowBoost)) != amount) boost.setTarget(boostOf(amount));
    if (std::exchange(levelSetting, get(PadParameter::level)) != levelSetting) {
      level.rate = -32511;
      level.setTarget(levelOf());
    }
    if (finished == 0) egTime = get(PadParameter::egTime);
    if (std::exchange(panSetting, get(PadParameter::pan)) != panSetting) pan.setTarget(panOf(panSetting));
    computePitch();
  }

  std::int32_t readChannel(std::size_t channel) const {
    const auto a = static_cast<std::size_t>(position >> 12);
    const auto frac = static_cast<std::int32_t>(position & 0xFFF);
    const std::int32_t p = (*data)[2 * a + channel];
    const std::int32_t q = (*data)[2 * a + 2 + channel];
    return clip((p + (((q - p) * frac) >> 12)) >> 2);
  }

  void advance() {
    if (remaining <= 0) return;
    position += stepSigned;
    remaining -= step;
    if (remaining >= 1 && position >= 0) return;
    remaining = 0;
    position = reversed || length == 0 ? 0 : (length - 1) << 12;
    step = stepSigned = 0;
  }

  void envelopeStep() {
    if (!((gate == 1 && phase == 3) || (gate == 0 && egTime != 127))) return;
    ++counter;
    const auto k = static_cast<std::int32_t>(static_cast<float>(counter) * speed);
    const std::int32_t index = std::max(127 - k, 0);
    if (index != levelIndex) {
      levelIndex = index;
      envelope.setTarget((index * index * 520) >> 8);
    }
    if (finished == 0 && levelIndex == 0 && envelope.field < 1) finished = 1;
  }

  void chain(std::array<std::int32_t, 4>& out) {
    std::int32_t l = readChannel(0);
    std::int32_t r = readChannel(1);
    advance();
    current = std::max(mul(15, 32696, current), 16);
    l = clip(l + mul(12, current, l));
    r = clip(r + mul(12, current, r));
    l = clip(mul(15, envelope.field, l));
    r = clip(mul(15, envelope.field, r));
    envelopeStep();
    const std::int32_t g = boost.field;
    const std::int32_t h = 32767 - mul(15, 26891, g);
    stateL = l = clip(mul(15, h, l) + mul(15, g, stateL));
    stateR = r = clip(mul(15, h, r) + mul(15, g, stateR));
    l = clip(mul(13, level.field, l));
    r = clip(mul(13, level.field, r));
    l = clip(mul(15, 32767 - pan.field, l));
    r = clip(mul(15, pan.field, r));
    if ((std::abs(l) > peakL && enabled != 0) || restart != 0) peakL = std::abs(l);
    if ((std::abs(r) > peakR && enabled != 0) || restart != 0) peakR = std::abs(r);
    restart = 0;
    if (fadeEnabled != 0) {
      const std::int32_t s = mul(15, fade.field, fade.field);
      l = clip(mul(15, s, l));
      r = clip(mul(15, s, r));
    }
    heardL = l;
    heardR = r;
    out[0] += mul(15, dry.field, l);
    out[1] += mul(15, dry.field, r);
    out[2] += mul(15, effect.field, l);
    out[3] += mul(15, effect.field, r);
  }

  void endCheck() {
    if (active == 0) {
      if (fade.field < 181 && state != 0) state = 0;
    } else if (finished != 0) {
      active = 0;
    } else if (remaining < 1) {
      active = 0;
      fadeEnabled = 1;
      fade.setNow(32767);
      fade.setTarget(0);
      increment = 0;
    }
  }
};

class Engine {
 public:
  Engine(const std::vector<support::Wave>& waveList, const std::array<PadValues, 8>& padValues, std::size_t slotLength)
      : waves(waveList), pads(padValues), slotFrames(slotLength) {
    for (auto& slot : slots) slot.assign(slotFrames * 2, 0);
    for (Voice& voice : voices) voice.data = &silence;
  }

  void loadWave(std::size_t pad, std::size_t wave) {
    const support::Wave& w = waves[wave];
    const std::size_t n = std::min(slotFrames - 2, w.left.size());
    std::fill(slots[pad].begin(), slots[pad].end(), std::int16_t{0});
    for (std::size_t i = 0; i < n; ++i) {
      slots[pad][2 * i] = w.left[i];
      slots[pad][2 * i + 1] = w.right.empty() ? w.left[i] : w.right[i];
    }
    frames[pad] = static_cast<std::int64_t>(n);
  }

  void noteOn(int note, int velocity) {
    const int pad = note - 36;
    if (pad < 0 || pad > 7) return;
    Voice& voice = voices[static_cast<std::size_t>(find(pad))];
    voice.pad = voice.slot = pad;
    voice.group = &pads[static_cast<std::size_t>(pad)];
    if (velocity < 1) return;
    voice.triggerVelocity = velocity;
    voice.trigger = 1;
    if (voice.state != 1) return;
    voice.fade.rate = -32511;
    voice.fade.setNow(32767);
    voice.fade.setTarget(0);
    voice.fadeEnabled = 1;
    voice.active = 0;
    voice.state = 2;
  }

  void noteOff(int note) {
    for (Voice& voice : voices) {
      if (voice.pad == note - 36) {
        if (voice.gate == 1 && voice.phase == 1) voice.phase = 3;
        return;
      }
    }
  }

  void reset() {
    for (Voice& voice : voices) voice.clear();
  }

  void render(std::int32_t* out, int count) {
    const int groups = (used + 3) / 4;
    for (int f = 0; f < count; ++f) {
      for (Voice& voice : voices) {
        for (Ramp* ramp : voice.ramps()) ramp->tick();
      }
      for (int v = 0; v < used; ++v) {
        Voice& voice = at(v);
        if (voice.trigger == 0) continue;
        const auto slot = static_cast<std::size_t>(voice.slot);
        const auto wave = static_cast<std::size_t>(voice.get(PadParameter::wave));
        voice.start(slots[slot], frames[slot], static_cast<float>(waves[wave].rate));
        voice.trigger = 0;
      }
      for (int v = 0; v < used && f % 64 == 0; ++v) at(v).control();
      std::array<std::int32_t, 4> sums{};
      for (int v = 0; v < groups * 4; ++v) at(v).chain(sums);
      for (std::size_t c = 0; c < 4; ++c) out[4 * f + static_cast<int>(c)] = clip(sums[c]);
      for (auto& pad : heard) pad[static_cast<std::size_t>(2 * f)] = pad[static_cast<std::size_t>(2 * f + 1)] = 0;
      for (int v = 0; v < used; ++v) {
        auto& pad = heard[static_cast<std::size_t>(at(v).pad)];
        pad[static_cast<std::size_t>(2 * f)] += at(v).heardL;
        pad[static_cast<std::size_t>(2 * f + 1)] += at(v).heardR;
      }
      for (int v = 0; v < used; ++v) at(v).endCheck();
    }
    readMeters();
    release();
  }

  int used = 0;
  std::array<std::array<std::int32_t, 8>, 2> meters{};
  /// The output of each pad's voices before the send, in the last render: frames of left and right.
  std::array<std::array<std::int32_t, std::size_t{2} * 2048>, 8> heard{};

 private:
  Voice& at(int index) { return voices[static_cast<std::size_t>(index)]; }

  int find(int pad) {
    const std::int32_t group = pads[static_cast<std::size_t>(pad)][PadParameter::exAssign];
    for (int v = 0; group != 0 && v < used; ++v) {
      if (pads[static_cast<std::size_t>(at(v).pad)][PadParameter::exAssign] == group) return v;
    }
    for (int v = 0; v < used; ++v) {
      if (at(v).pad == pad) return v;
    }
    return used == 8 ? 0 : used++;
  }

  void readMeters() {
    for (std::size_t pad = 0; pad < 8; ++pad) {
      meters[0][pad] = meters[1][pad] = 0;
      for (int v = 0; v < used; ++v) {
        if (at(v).pad != static_cast<int>(pad)) continue;
        at(v).restart = -1;
        meters[0][pad] = at(v).peakL;
        meters[1][pad] = at(v).peakR;
        break;
      }
    }
  }

  void release() {
    for (int v = 0; v < used; ++v) {
      if (at(v).state != 0) continue;
      at(v).clear();
      at(v).rebind();
      if (v != used - 1) {
        std::swap(at(v), at(used - 1));
        at(v).rebind();
        at(used - 1).rebind();
      }
      --used;
    }
  }

  const std::vector<support::Wave>& waves;
  const std::array<PadValues, 8>& pads;
  std::size_t slotFrames;
  std::vector<std::int16_t> silence = std::vector<std::int16_t>(4);
  std::array<std::vector<std::int16_t>, 8> slots;
  std::array<std::int64_t, 8> frames{};
  std::array<Voice, 8> voices;
};

}  // namespace plain
