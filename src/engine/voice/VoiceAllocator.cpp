// Chooses a voice for each note, reads the meters, and releases finished voices.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/voice/VoiceAllocator.h"

#include <algorithm>

#include "engine/voice/VoicePool.h"

namespace tesh::bramel::plugin::sivray {

namespace {

constexpr int kNoVoice = -1;

}  // namespace

VoiceAllocator::VoiceAllocator(DrumCore&, int padTotal)
    : padCount(std::clamp(padTotal, 0, static_cast<int>(kPadPlaces))) {}

void VoiceAllocator::setPad(int pad, const PadValues* values) {
  if (pad >= 0 && pad < static_cast<int>(kPadPlaces)) {
    pads[static_cast<std::size_t>(pad)] = values;
  }
}

const PadValues* VoiceAllocator::padAt(int pad) const {
  return pad >= 0 && pad < padCount ? pads[static_cast<std::size_t>(pad)] : nullptr;
}

int VoiceAllocator::findVoice(int pad) const {
  const VoiceBank& bank = voices->lanes();
  const std::int32_t group = (*padAt(pad))[PadParameter::exAssign];
  for (int voice = 0; group != 0 && voice < activeVoices; ++voice) {
    const PadValues* own = padAt(bank.pad[static_cast<std::size_t>(voice)]);
    if (own != nullptr && (*own)[PadParameter::exAssign] == group) {
      return voice;
    }
  }
  const int same = voiceOfPad(pad);
  if (same < activeVoices) {
    return same;
  }
  return activeVoices == kVoiceCount ? 0 : kNoVoice;
}

int VoiceAllocator::voiceOfPad(int pad) const {
  const auto& owners = voices->lanes().pad;
  return static_cast<int>(std::find(owners.begin(), owners.end(), pad) - owners.begin());
}

void VoiceAllocator::noteOn(int note, int velocity) {
  const int pad = note - kFirstNote;
  const PadValues* group = padAt(pad);
  if (group == nullptr || voices == nullptr) {
    return;
  }
  voices->prepareChange();
  int voice = findVoice(pad);
  if (voice == kNoVoice) {
    voice = activeVoices++;
  }
  const auto lane = static_cast<std::size_t>(voice);
  VoiceBank& bank = voices->lanes();
  bank.pad[lane] = pad;
  bank.padGroup[lane] = group;
  bank.settingsSeen[lane] = 0;
  if (velocity >= 1) {
    voices->trigger(lane, velocity);
  }
}

void VoiceAllocator::noteOff(int note) {
  const int pad = note - kFirstNote;
  if (voices == nullptr || padAt(pad) == nullptr) {
    return;
  }
  const int voice = voiceOfPad(pad);
  if (voice == kVoiceCount) {
    return;
  }
  const auto lane = static_cast<std::size_t>(voice);
  VoiceBank& bank = voices->lanes();
  if (bank.gateMode[lane] && bank.phase[lane] == EnvelopePhase::running) {
    voices->prepareChange();
    bank.phase[lane] = EnvelopePhase::released;
  }
}

void VoiceAllocator::resetVoices() {
  if (voices == nullptr) {
    return;
  }
  voices->prepareChange();
  for (std::size_t lane = 0; lane < kVoiceCount; ++lane) {
    voices->lanes().clearLane(lane);
  }
}

bool VoiceAllocator::render(BusWords output, int frames, const PadOuts* padOuts) {
  if (voices == nullptr) {
    std::fill_n(output.dry, 2 * frames, std::int16_t{0});
    std::fill_n(output.effect, 2 * frames, std::int16_t{0});
    if (padOuts != nullptr) {
      PadTaps::clear(*padOuts, frames);
    }
    return false;
  }
  const bool feedsEffect = voices->render(output, frames, activeVoices, padOuts);
  readMeters();
  releaseFinishedVoices();
  return feedsEffect;
}

void VoiceAllocator::skip(int frames) {
  if (voices == nullptr) {
    return;
  }
  voices->skip(frames);
  meters = {};
}

void VoiceAllocator::readMeters() {
  VoiceBank& bank = voices->lanes();
  std::array<std::array<std::int32_t, kPadPlaces>, 2> peaks{};
  unsigned seen = 0;  // After a change of exclusive group a pad may have two voices; the first one is metered.
  for (std::size_t lane = 0; lane < static_cast<std::size_t>(activeVoices); ++lane) {
    const auto pad = static_cast<std::size_t>(bank.pad[lane]);
    if ((seen >> pad & 1) == 0) {
      seen |= 1U << pad;
      peaks[0][pad] = bank.peakLeft[lane];
      peaks[1][pad] = bank.peakRight[lane];
      bank.meterRestart[lane] = -1;
    }
  }
  meters = peaks;
}

void VoiceAllocator::releaseFinishedVoices() {
  VoiceBank& bank = voices->lanes();
  for (int voice = 0; voice < activeVoices; ++voice) {
    const auto lane = static_cast<std::size_t>(voice);
    if (bank.state[lane] != VoiceState::free) {
      continue;
    }
    voices->prepareChange();
    bank.clearLane(lane);
    voices->rebindRamps(lane);
    const auto last = static_cast<std::size_t>(activeVoices - 1);
    if (lane != last) {
      bank.swapLanes(lane, last);
      voices->rebindRamps(lane);
      voices->rebindRamps(last);
    }
    --activeVoices;  // The voice that moved to this lane is checked after the next render.
  }
}

std::int32_t VoiceAllocator::padLevel(unsigned pad, unsigned side) const {
  return pad < static_cast<unsigned>(padCount) && side < meters.size() ? meters[side][pad] : 0;
}

}  // namespace tesh::bramel::plugin::sivray
