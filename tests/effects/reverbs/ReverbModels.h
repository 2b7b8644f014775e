// A plain model of the hall reverb: one array for each delay line and one statement for each step, where the product
// uses vector registers.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

#include "effects/interfaces/StereoBlock.h"

namespace model {

using tesh::bramel::plugin::sivray::effects::StereoBlock;

inline int sat(long x) { return static_cast<int>(x > 32767 ? 32767 : (x < -32767 ? -32767 : x)); }
inline int linearKnob(int i) { return i == 127 ? 32767 : 258 * i; }

/// The hall reverb with its wrapper's sleep mode.
class Hall {
 public:
  int decayKnob = 0, levelKnob = 0, decay = 0, level = 0, levelState = 0;
  bool dirty = true, sleeping = true;
  unsigned silentCountdown = 0, position = 0;
  std::vector<int> predelay = std::vector<int>(65536);
  std::vector<std::array<int, 4>> tank = std::vector<std::array<int, 4>>(32768);
  std::vector<std::array<int, 4>> diffuser = std::vector<std::array<int, 4>>(16384);
  std::array<int, 4> diffuserInput{}, diffuserOutput{}, damper{};

  void setParameter(unsigned index, int value) {
    if (index != 2 && index != 3) return;
    (index == 2 ? decayKnob : levelKnob) = value;
    dirty = true;
  }
  void setTempo(int) {}
  void setImmediate(bool) {}
  void reset() {
    std::fill(predelay.begin(), predelay.end(), 0);
    std::fill(tank.begin(), tank.end(), std::array<int, 4>{});
    std::fill(diffuser.begin(), diffuser.end(), std::array<int, 4>{});
    diffuserInput = diffuserOutput = damper = {};
    levelState = linearKnob(levelKnob) << 15;
  }
  static int gain(std::size_t k, int knob) {
    static constexpr std::array<float, 4> kSeconds{0.14795834F, 0.13795833F, 0.123958334F, 0.11495833F};
    const float t = static_cast<float>(knob) / 127.0F * 9.9F + 0.1F;
    const float power = static_cast<float>(std::pow(0.001, static_cast<double>(1.0F / t * kSeconds[k])));
    return static_cast<int>(power * 32767.0F) * (k % 2 == 0 ? 1 : -1);
  }
  void process(StereoBlock& block, unsigned count) {
    bool sound = false;
    for (unsigned i = 0; i < count; ++i) sound = sound || block.left[i] != 0 || block.right[i] != 0;
    if (sleeping && !sound) return;
    if (sleeping) silentCountdown = 48000;
    sleeping = false;
    run(block, count);
    sound = false;
    for (unsigned i = 0; i < count; ++i) sound = sound || block.left[i] != 0 || block.right[i] != 0;
    if (sound) {
      silentCountdown = 48000;
    } else if (silentCountdown <= count) {
      silentCountdown = 0;
      sleeping = true;
    } else {
      silentCountdown -= count;
    }
  }
  void run(StereoBlock& block, unsigned count) {
    static constexpr std::array<int, 4> kC{-18251, -16940, -17595, -17661}, kD{11949, 11141, 10011, 9284};
    static constexpr std::array<unsigned, 4> kDiffuse{1281, 2391, 1699, 1042}, kTank{6525, 6084, 5467, 5070},
        kA{3301, 1537, 1317, 655}, kB{2552, 2419, 1758, 1096};
    for (unsigned n = 0; n < count; ++n) {
      if (n % 64 == 0 && dirty) {
        decay = decayKnob;
        level = linearKnob(levelKnob);
        dirty = false;
      }
      const unsigned i = position;
      levelState += (level - (levelState >> 15)) * 102;
      const int inL = std::max<int>(block.left[n], -32767), inR = std::max<int>(block.right[n], -32767);
      const int mono = sat(((inL + inR) * 9830) >> 15);
      predelay[i & 65535] = mono;
      const int e = predelay[(442 + i) & 65535];
      const int sum = sat(e + ((mono * 3932) >> 15));
      for (std::size_t k = 0; k < 4; ++k) {
        const int tap = diffuser[(kDiffuse[k] + i) & 16383][k];
        const int u = ((kC[k] * tap) >> 15) + (k == 0 ? sum : diffuserInput[k]);
        diffuser[i & 16383][k] = sat(u);
        diffuserOutput[k] = sat(tap - ((kC[k] * u) >> 15));
      }
      diffuserInput[1] = diffuserOutput[0];
      int a = 0, b = 0;
      for (std::size_t k = 0; k < 4; ++k) {
        const int x = sat(((tank[(kTank[k] + i) & 32767][k] * gain(k, decay)) >> 15) + diffuserOutput[1]);
        const int z = sat((((damper[k] + x) * kD[k]) >> 15) - x);
        damper[k] = z;
        tank[i & 32767][k] = z;
        a += tank[(kA[k] + i) & 32767][k];
        b += tank[(kB[k] + i) & 32767][k];
      }
      diffuserInput[2] = sat(b >> 1);
      diffuserInput[3] = sat(a >> 1);
      const int w = levelState >> 15;
      block.left[n] = static_cast<std::int16_t>(sat(((diffuserOutput[2] * w) >> 15) + inL));
      block.right[n] = static_cast<std::int16_t>(sat(((diffuserOutput[3] * w) >> 15) + inR));
      position -= 1;
    }
  }
};

}  // namespace model
