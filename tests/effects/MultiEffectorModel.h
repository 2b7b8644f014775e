// A plain model of the master effect, one sample at a time. Its effects compute everything, in memory of their own
// kind.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "effects/PlainEffects.h"
#include "effects/interfaces/PlainMemory.h"

namespace model {

namespace fx = tesh::bramel::plugin::sivray::effects;

class Master {
 public:
  Master() : effects(scene::makePlainEffects(memory)) {
    current = effects[12].get();
    current->wake();
    current->setParameter(2, 0);
    current->setParameter(3, 0);
  }

  void setValue(int index, int value) {
    if (index < 0 || index > 3) return;
    values[static_cast<std::size_t>(index)] = value;
    if (index == 0 && value != typeIndex) {
      typeIndex = value;
      typeDirty = true;
    }
    if (index == 1) {
      pendingSwitchOn = value == 1;
      switchDirty = true;
    }
    if (index > 1 && current) current->setParameter(static_cast<unsigned>(index), value);
  }
  void setTempo(int tenths) {
    tempo = tenths;
    if (current) current->setTempo(tenths);
  }
  void notify(int code) {
    if (current) current->notify(code);
  }
  void transport(int data) {
    const int type = values[0];
    if (data == 3 || (data == 2 && (type == 8 || type == 9 || type == 11))) notify(5);
  }
  void reset() {
    fading = false;
    wetTarget = pendingSwitchOn ? 32767 : 0;
    wetState = wetTarget << 15;
    for (auto& effect : effects) {
      if (effect->isAwake()) {
        effect->reset();
      } else {
        effect->wake();
        effect->reset();
        effect->sleep();
      }
    }
  }
  void process(fx::StereoBlock& block, int count) {
    if (count > 4096) return;
    count = std::max(count, 0);
    if (switchDirty) {
      wetTarget = pendingSwitchOn ? 32767 : 0;
      switchDirty = false;
    }
    if (typeDirty) load();
    Pair work = copyOf(block, count);
    Pair oldPath = work;
    Pair newPath = work;
    int at = 0;
    while (fading && at < count) {
      const int run = std::min(count - at, (std::max(fadePosition / 743, 1) + 1) * 743);
      runOn(previous, oldPath, at, run);
      runOn(current, newPath, at, run);
      for (int i = at; i < at + run; ++i) {
        const int w = fadePosition * fadePosition >> 15;
        for (std::size_t c = 0; c < 2; ++c) {
          const auto n = static_cast<std::size_t>(i);
          work[c][n] = clamped((newPath[c][n] * (32767 - w) >> 15) + (oldPath[c][n] * w >> 15));
        }
        fadePosition = std::max(0, fadePosition - 743);
      }
      at += run;
      if (fadePosition < 1) {
        fading = false;
        if (previous) previous->sleep();
      }
    }
    if (at < count) runOn(current, work, at, count - at);
    mix(block, work, count);
    if (immediateCounter >= 0 && (immediateCounter += count) >= 44) {
      immediateCounter = -1;
      if (current) current->setImmediate(false);
    }
  }

 private:
  using Pair = std::array<std::vector<std::int16_t>, 2>;

  static std::int16_t clamped(int x) { return static_cast<std::int16_t>(std::clamp(x, -32767, 32767)); }
  static Pair copyOf(const fx::StereoBlock& block, int count) {
    return {std::vector<std::int16_t>(block.left, block.left + count),
            std::vector<std::int16_t>(block.right, block.right + count)};
  }
  static void runOn(fx::SivrayFx* effect, Pair& path, int at, int count) {
    fx::StereoBlock part{path[0].data() + at, path[1].data() + at};
    if (effect) effect->process(part, static_cast<unsigned>(count));
  }
  void load() {
    previous = current;
    current = typeIndex >= 0 && typeIndex < 30 ? effects[static_cast<std::size_t>(typeIndex)].get() : nullptr;
    fadePosition = 32767;
    fading = true;
    immediateCounter = 0;
    typeDirty = false;
    if (!current) return;
    current->wake();
    current->reset();
    current->setParameter(2, values[2]);
    current->setParameter(3, values[3]);
    current->setTempo(tempo);
    current->setImmediate(true);
  }
  void mix(fx::StereoBlock& block, const Pair& work, int count) {
    for (int i = 0; i < count; ++i) {
      if ((wetState >> 15) != wetTarget) wetState += (wetTarget - (wetState >> 15)) * 102;
      const int w = wetState >> 15;
      const auto n = static_cast<std::size_t>(i);
      block.left[i] = clamped((work[0][n] * w >> 15) + (block.left[i] * (32767 - w) >> 15));
      block.right[i] = clamped((work[1][n] * w >> 15) + (block.right[i] * (32767 - w) >> 15));
    }
  }

  scene::PlainMemory memory;
  fx::EffectSet effects;
  fx::SivrayFx* current = nullptr;
  fx::SivrayFx* previous = nullptr;
  std::array<int, 4> values{12, 1, 0, 0};
  int typeIndex = 12, fadePosition = 0, wetTarget = 0, wetState = 0, immediateCounter = -1, tempo = 1200;
  bool fading = false, typeDirty = true, switchDirty = true, pendingSwitchOn = true;
};

}  // namespace model
