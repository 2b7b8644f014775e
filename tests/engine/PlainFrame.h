// A plain model of the frame, the sequencer and the output stage, with its own voices and effect. The engine's samples
// must equal the model's bit by bit.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cstdlib>
#include <vector>

#include "effects/SivrayMultiEffector.h"
#include "engine/MasterLevelTable.h"
#include "engine/voice/DrumCore.h"
#include "engine/voice/VoiceAllocator.h"

namespace plain {

using namespace tesh::bramel::plugin::sivray;

struct Record {
  std::int64_t frame = 0;
  int kind = 0;
  std::uint32_t id = 0;
  float value = 0.0F;
  std::array<int, 3> bytes{};
};

class Frame {
 public:
  Frame(int waveTotal, std::size_t slotFrames) : core(file, 8, slotFrames), allocator(core, 8), waves(waveTotal) {
    constexpr std::array<int, 18> kDefaults{0, 0, 0, 0, 24, 100, 0, 127, 100, 64, 0, 0, 0, 1, 1, 64, 0, 0};
    for (int pad = 0; pad < 8; ++pad) {
      PadValues& values = pads[static_cast<std::size_t>(pad)];
      for (std::size_t i = 0; i < kDefaults.size(); ++i) {
        values.set(i, kDefaults[i]);
      }
      changeWave(pad, pad);
      values.set(1, pad);
      allocator.setPad(pad, &values);
    }
    core.makeVoices(allocator);
  }

  void queue(const Record& record) { pending.push_back(record); }

  void reset() {
    allocator.resetVoices();
    effect.reset();
  }

  /// Renders a block.
  void process(int frames, std::vector<float>& left, std::vector<float>& right) {
    left.clear();
    right.clear();
    for (int remaining = frames; remaining > 0;) {
      if (!merged) {
        active.swap(pending);
        pending.clear();
        std::stable_sort(active.begin(), active.end(), [](const Record& a, const Record& b) {
          return a.frame != b.frame ? a.frame < b.frame : a.kind < b.kind;
        });
        position = 0;
        merged = true;
      }
      const std::int64_t wait = active.empty() ? remaining : active.front().frame - position;
      const int slice = wait < 0 || wait > remaining ? remaining : static_cast<int>(wait);
      render(slice, left, right);
      position += slice;
      while (!active.empty() && active.front().frame <= position) {
        fire(active.front());
        active.erase(active.begin());
      }
      merged = !active.empty();
      remaining -= slice;
    }
  }

  float meter(unsigned pad, unsigned side) const {
    return static_cast<float>(allocator.padLevel(pad, side) + 32767) / 65534.0F;
  }

 private:
  void render(int frames, std::vector<float>& left, std::vector<float>& right) {
    const auto count = static_cast<std::size_t>(frames);
    std::vector<std::int16_t> dry(2 * (count + kBusSlack));
    std::vector<std::int16_t> wet(dry.size());
    allocator.render({dry.data(), wet.data()}, frames);
    std::vector<std::int16_t> wetLeft(count);
    std::vector<std::int16_t> wetRight(count);
    for (std::size_t i = 0; i < count; ++i) {
      wetLeft[i] = wet[2 * i];
      wetRight[i] = wet[2 * i + 1];
    }
    effects::StereoBlock block{wetLeft.data(), wetRight.data()};
    effect.process(block, frames);
    for (std::size_t i = 0; i < count; ++i) {
      gain = (gain * 32665 + target * 102) >> 15;
      left.push_back(static_cast<float>(output(limited(dry[2 * i] + wetLeft[i]))) * 3.0517578e-5F);
      right.push_back(static_cast<float>(output(limited(dry[2 * i + 1] + wetRight[i]))) * 3.0517578e-5F);
    }
  }

  static int limited(int x) { return x < -32767 ? -32767 : (x > 32767 ? 32767 : x); }

  int output(int sample) const {
    int x = limited((gain * sample) >> 14);
    const int k = std::max(std::abs(x) - 13848, 0);
    const int y = (((k * k) >> 15) * k) >> 15;
    x = x > 0 ? x - y : x + y;
    return x + ((x * 7808) >> 15);
  }

  void fire(const Record& record) {
    if (record.kind == 1) {
      message(record.bytes);
    } else {
      setParameter(record.kind == 2 ? record.id | 0x120 : record.id, record.value);
    }
  }

  void message(const std::array<int, 3>& bytes) {
    const int status = bytes[0] & 0xF0;
    if (bytes[0] == 0xF4) {
      effect.transport(bytes[1]);
    } else if (status == 0x90 && (bytes[2] & 127) > 0) {
      allocator.noteOn(bytes[1] & 127, bytes[2] & 127);
    } else if (status == 0x80 || status == 0x90) {
      allocator.noteOff(bytes[1] & 127);
    } else if (status == 0xB0 && (bytes[1] == 123 || bytes[1] == 126)) {
      for (int note = 0; note < 127; ++note) {
        allocator.noteOff(note);
      }
    }
  }

  void setParameter(std::uint32_t id, float value) {
    constexpr std::array<int, 16> kPadMaxima{0, 15, 1, 1, 48, 200, 127, 127, 127, 127, 127, 2, 1, 1, 1, 127};
    constexpr std::array<int, 4> kEffectMaxima{29, 1, 127, 127};
    const std::uint32_t group = id >> 4;
    const std::uint32_t index = id & 15;
    if (group < 8 && index == 0) {
      changeWave(static_cast<int>(group), integer(waves - 1, value));
    } else if (group < 8) {
      pads[group].set(index, std::clamp(integer(kPadMaxima[index], value), 0, kPadMaxima[index]));
    } else if (group == 16 && index < 4) {
      effect.setValue(static_cast<int>(index),
                      std::clamp(integer(kEffectMaxima[index], value), 0, kEffectMaxima[index]));
    } else if (id == 0x110) {
      const auto level = static_cast<std::size_t>(integer(127, value) & 127);
      target = static_cast<int>(kMasterGains[level] * 16384);
    } else if (id == 0x120) {
      effect.setTempo(integer(3000, value));
    }
  }

  static int integer(int range, float value) { return static_cast<int>(static_cast<float>(range) * value + 0.5F); }

  void changeWave(int pad, std::int32_t wave) {
    wave = std::clamp(wave, 0, waves - 1);
    if (pads[static_cast<std::size_t>(pad)].at(0) != wave || !loaded[static_cast<std::size_t>(pad)]) {
      core.waveChange().setValue(pad, &wave);
    }
    loaded[static_cast<std::size_t>(pad)] = true;
    pads[static_cast<std::size_t>(pad)].set(0, wave);
  }

  PcmFile file{"SivrayPCM"};
  DrumCore core;
  VoiceAllocator allocator;
  effects::SivrayMultiEffector effect;
  std::array<PadValues, 8> pads;
  std::array<bool, 8> loaded{};
  std::vector<Record> pending;
  std::vector<Record> active;
  std::int64_t position = 0;
  bool merged = false;
  int waves;
  int target = 0;
  int gain = 0;
};

}  // namespace plain
