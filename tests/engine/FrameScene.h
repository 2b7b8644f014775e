// An engine in its frame, on a small sample library, with helpers to play it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <initializer_list>
#include <vector>

#include "engine/SivrayPlugin.h"
#include "support/SampleFolder.h"

namespace scene {

using namespace tesh::bramel::plugin::sivray;
using tesh::vimo::MidiEvent;

inline constexpr int kWaves = 12;
inline constexpr std::size_t kSlot = 4000;

inline constexpr std::uint32_t kMasterOut = 0x110;
inline constexpr std::uint32_t kTempo = 0x120;

struct Player {
  explicit Player(int waves = kWaves, int waveFrames = 900)
      : folder(support::assortedWaves(waves, waveFrames)), plugin(kSampleFolder, kSlot) {
    midi.reserve(256);
    left.reserve(4096);
    right.reserve(4096);
  }

  void note(std::uint32_t frame, int key, int velocity = 100) { message(frame, {0x90, key, velocity}); }

  void message(std::uint32_t frame, std::initializer_list<int> bytes) {
    std::vector<std::uint8_t> data;
    for (const int byte : bytes) {
      data.push_back(static_cast<std::uint8_t>(byte));
    }
    midi.emplace_back(data, frame);
  }

  void automate(std::uint32_t frame, std::uint32_t id, float value) { ring.put({id, value, frame, 0}); }

  void process(int frames) {
    left.assign(static_cast<std::size_t>(frames), 9.0F);
    right.assign(static_cast<std::size_t>(frames), 9.0F);
    std::array<float*, 2> outputs{left.data(), right.data()};
    tesh::vimo::ProcessBlock block;
    block.outputs = outputs.data();
    block.frames = frames;
    block.midiIn = &midi;
    block.automationRing = &ring;
    plugin.process(block);
    isToldSilent = block.isSilent;
    midi.clear();
  }

  /// Sets a parameter before the next frame.
  void set(std::uint32_t id, float value) {
    automate(0, id, value);
    process(1);
  }

  /// Returns the first non-silent frame of the last block; -1 if all are silent.
  int firstSound() const {
    for (std::size_t i = 0; i < left.size(); ++i) {
      if (left[i] != 0.0F || right[i] != 0.0F) {
        return static_cast<int>(i);
      }
    }
    return -1;
  }

  support::SampleFolder folder;
  SivrayPlugin<VstXSynth> plugin;
  std::vector<MidiEvent> midi;
  tesh::vimo::TimedValueRing ring{4096};
  std::vector<float> left;
  std::vector<float> right;
  bool isToldSilent = false;  ///< What the plugin has reported about the last block.
};

/// Sets the master level and waits until the gain has reached it.
inline void openMaster(Player& player) {
  player.automate(0, kMasterOut, 100.0F / 127.0F);
  player.process(2048);
}

}  // namespace scene
