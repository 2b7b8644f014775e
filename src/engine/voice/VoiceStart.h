// Copies a pad's settings to a voice: all of them at its start, some of them again in each control update.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/RealTime.h"
#include "engine/samples/PcmPool.h"
#include "engine/samples/WaveDatabase.h"
#include "engine/voice/AmpEnvelope.h"
#include "engine/voice/PadValues.h"
#include "engine/voice/RampBank.h"
#include "engine/voice/VoiceBank.h"

namespace tesh::bramel::plugin::sivray {

/// Copies a pad's settings to a lane and sets the lane's gains from them. The lane's `padGroup` refers to the pad's
/// settings, its `pad` to the slot with the wave. Audio thread.
class VoiceStart {
 public:
  VoiceStart(VoiceBank& voiceBank, RampBank& rampBank, PcmPool& pcmPool, WaveDatabase& waveDatabase,
             AmpEnvelope& ampEnvelope)
      : bank(voiceBank), ramps(rampBank), pool(pcmPool), database(waveDatabase), envelope(ampEnvelope) {}

  /// Starts the voice of `lane` at its trigger velocity. Gains jump to their values, except the two bus gates, which
  /// move from where the lane's last voice left them.
  void start(std::size_t lane) SIVRAY_NONBLOCKING;

  /// Applies pitch, send, low boost, level, EGTime and pan, and lets the gains move to their new values. Wave, envelope
  /// mode, direction, punch and mute stay as they were at the start. Does nothing for a lane that has not started or
  /// waits for a new start.
  void update(std::size_t lane) SIVRAY_NONBLOCKING;

  /// Whether the pad's settings have been set since the lane last took them, so that `update` has something to do.
  bool needsUpdate(std::size_t lane) const SIVRAY_NONBLOCKING {
    return bank.live[lane] && bank.padGroup[lane] != nullptr && bank.state[lane] != VoiceState::retriggered &&
           bank.padGroup[lane]->version() != bank.settingsSeen[lane];
  }

 private:
  void startWave(std::size_t lane, const PadValues& pad);
  void startTone(std::size_t lane, const PadValues& pad);
  void startLevels(std::size_t lane, const PadValues& pad);
  void sendTo(std::size_t lane, std::int32_t bus);
  void updateGains(std::size_t lane, const PadValues& pad);
  void updatePitch(std::size_t lane);

  VoiceBank& bank;
  RampBank& ramps;
  PcmPool& pool;
  WaveDatabase& database;
  AmpEnvelope& envelope;
};

}  // namespace tesh::bramel::plugin::sivray
