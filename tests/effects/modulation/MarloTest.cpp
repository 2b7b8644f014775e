// The three Marlo effects against a plain model whose coefficients are decimal numbers.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <cmath>

#include "effects/modulation/PlainModel.h"
#include "effects/modulation/SivrayFxIMarloEffects.h"
#include "support/Sanitized.h"

namespace {

using namespace scene;
using namespace tesh::bramel::plugin::sivray::effects;

/// Adds and subtracts 1.0 in single precision; volatile keeps the compiler from removing it.
float onOff(float x) {
  volatile float lifted = x + 1.0F;
  return lifted - 1.0F;
}

/// One operation per line where the order of rounding matters.
struct MarloModel : PlainModel {
  explicit MarloModel(int m) : mode(m) { edit(0, 0); }

  int mode;
  int knobs[2]{};
  bool dirty = true;
  float rate = 0, depthStep = 0, spreadStep = 0, depth = 0, spread = 0, phase = 0;
  float lfo[2]{}, dryIn[2]{}, dryOut[2]{}, wetIn[2]{}, wetOut[2]{};
  std::array<float, 4097> line[2]{};
  std::array<float, 6> bank{};
  int write = 0;

  void edit(unsigned index, std::int64_t i) override {
    if (index > 1) {
      return;
    }
    knobs[index] = static_cast<int>(i);
    dirty = true;
  }
  void grid() override {
    if (!dirty) {
      return;
    }
    const float speed = static_cast<float>(knobs[0]) / 127.0F;
    const float wide = static_cast<float>(knobs[1]) / 127.0F;
    rate = (speed * 6.875F + 0.125F) / 44100.0F;
    depthStep = (speed * 0.375F + 0.125F) * 0.0128F * 44100.0F * 0.002F;
    spreadStep = (wide * wide + 1.0F) * 0.002F;
    dirty = false;
  }
  void reset() override {
    for (int c = 0; c < 2; ++c) {
      line[c].fill(0.0F);
      lfo[c] = dryIn[c] = dryOut[c] = wetIn[c] = wetOut[c] = 0.0F;
    }
    bank = {0.6666667F, -0.6666667F, -2.0F, 0.6666667F, -0.6666667F, -2.0F};
    write = 0;
    phase = 0.0F;
    depth = 70.56F;
    spread = 1.0F;
  }
  float read(int c, float pos) const {
    if (pos >= 4096.0F) {
      pos -= 4096.0F;
    }
    const int i = static_cast<int>(pos);
    const float a = line[c][static_cast<std::size_t>(i)];
    const float b = line[c][static_cast<std::size_t>(i) + 1];
    return a + (b - a) * (pos - static_cast<float>(i));
  }
  static float highpass(float& in, float& out, float x, float c) {
    const float a = (c + 1.0F) * 0.5F * x;
    out = onOff(c * out + a - in);
    in = a;
    return out;
  }
  float moved(int c, float x) {
    float p = phase;
    if (c == 1) {
      p = phase - (spread - 1.0F) * 0.5F;
      p = p < 0.0F ? p + 1.0F : p;
    }
    const float t = p >= 0.5F ? 2.0F * p - 1.0F : 1.0F - 2.0F * p;
    lfo[c] = t + (lfo[c] - t) * 0.99951761F;
    const auto at = static_cast<float>(write);
    if (mode == 2) {
      return (read(c, lfo[c] * 36.12672F + at + 45.1584F) + x) * 0.75F;
    }
    const float y = read(c, lfo[c] * 37.63494F + at + 188.15706F);
    const float h1 = highpass(dryIn[c], dryOut[c], x, 0.99315207F);
    const float h2 = highpass(wetIn[c], wetOut[c], y, 0.99542950F);
    return (h2 * 0.66666F + h1) * 0.75F;
  }
  static float lifted(float p) {
    const float w = std::fabs(p) - 1.0F;
    const float w2 = w * w;
    return w * 1.5703204F - w2 * 0.6421143F * w + w2 * w2 * w * 0.07186159F + 1.0000676F;
  }
  float voices(int c) const {
    float sum = 0.0F;
    for (std::size_t v = 0; v < 3; ++v) {
      float p[2]{bank[v], bank[v + 3]};
      for (float& q : p) {
        if (c == 1) {
          q += (spread - 1.0F) * 0.666667F;
          q = q > 2.0F ? q - 4.0F : q;
        }
      }
      const float width = lifted(p[0]) * 0.499966F * 0.0833333F + lifted(p[1]) * 0.499966F;
      sum += read(c, width * depth + static_cast<float>(write));
    }
    return sum * 0.66666F;
  }
  void sample(std::int64_t& l, std::int64_t& r) override {
    depth = depth * 0.998F + depthStep;
    spread = spread * 0.998F + spreadStep;
    phase -= rate;
    phase = phase < 0.0F ? phase + 1.0F : phase;
    for (std::size_t v = 0; v < 6; ++v) {
      bank[v] += v < 3 ? 20.8F / 44100.0F : 1.08F / 44100.0F;
      bank[v] = bank[v] > 2.0F ? bank[v] - 4.0F : bank[v];
    }
    for (int c = 0; c < 2; ++c) {
      std::int64_t& io = c == 0 ? l : r;
      const float x = onOff(static_cast<float>(io) / 32767.0F);
      line[c][static_cast<std::size_t>(write)] = x;
      line[c][4096] = line[c][0];
      const float y = onOff(mode == 3 ? voices(c) : moved(c, x));
      io = static_cast<std::int64_t>(std::clamp(y, -1.0F, 1.0F) * 32767.0F);
    }
    write = (write + 4095) % 4096;
  }
};

TEST(Marlo, EveryModeMatchesThePlainModelThroughRandomScenes) {
  playScenes<SivrayFxIMarloEffects<MarloChorus>>(MarloModel(1), support::scenes(500));
  playScenes<SivrayFxIMarloEffects<MarloPhase>>(MarloModel(2), support::scenes(500));
  playScenes<SivrayFxIMarloEffects<MarloEnsemble>>(MarloModel(3), support::scenes(500));
}

}  // namespace
