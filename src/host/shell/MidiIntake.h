// What happens to a MIDI message from outside: it goes to the engine, moves a parameter, or is dropped.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "core/MidiStatus.h"

namespace tesh::bramel::vst {

/// A message of up to three bytes.
struct ShortMessage {
  std::array<std::uint8_t, 3> bytes{};
  std::size_t size = 0;
};

struct MidiVerdict {
  std::optional<std::uint64_t> parameterId;  ///< The parameter that moves to `value`.
  float value = 0.0F;
  bool toEngine = false;  ///< `message` goes to the engine.
  ShortMessage message;   ///< The first three bytes; notes, controllers and pitch bend are on channel 1.
};

/// The parameter value for a controller's data byte.
inline float controllerValue(std::uint8_t data) {
  return std::clamp(static_cast<float>(data) * 0.007874016F, 0.0F, 1.0F);  // 1 / 127.
}

/// The parameter value for a pitch bend. The centre (lsb 0, msb 64) is 0.5.
inline float pitchBendValue(std::uint8_t lsb, std::uint8_t msb) {
  const int position = ((msb & 127) - 64) * 128 + (lsb & 127);
  return std::clamp(static_cast<float>(position) * 6.103888e-5F + 0.5F, 0.0F, 1.0F);  // 1 / 16383.
}

/// Whether a message with this status byte can reach a parameter by the controller map.
constexpr bool mayMoveParameter(std::uint8_t status) {
  const auto kind = static_cast<std::uint8_t>(status & cofu::core::kMidiKindBits);
  return kind == cofu::core::kMidiController || kind == cofu::core::kMidiPitchBend;
}

/// Judges a message. Notes, controllers and pitch bend lose their channel. Bank select, pitch bend that is not mapped,
/// aftertouch, program changes and channel pressure are dropped. `controllerMap(key)` returns the mapped parameter or
/// nothing; the key is a controller number, or kMidiPitchBend.
template <typename ControllerMap>
MidiVerdict judgeMidi(const std::uint8_t* data, std::size_t size, const ControllerMap& controllerMap) {
  MidiVerdict verdict;
  verdict.message.size = std::min(size, verdict.message.bytes.size());
  std::copy_n(data, verdict.message.size, verdict.message.bytes.begin());
  using namespace cofu::core;
  auto& [status, data1, data2] = verdict.message.bytes;
  if (status >= kMidiFirstSystem) {
    verdict.toEngine = true;
    return verdict;
  }
  const auto kind = static_cast<std::uint8_t>(status & kMidiKindBits);
  switch (kind) {
    case kMidiNoteOff:
    case kMidiNoteOn:
      status = kind;
      verdict.toEngine = true;
      break;
    case kMidiController:
      status = kind;
      if (data1 == 0 || data1 == 32) {
        break;
      }
      verdict.parameterId = controllerMap(data1);
      verdict.value = controllerValue(data2);
      verdict.toEngine = !verdict.parameterId;
      break;
    case kMidiPitchBend:
      status = kind;
      verdict.parameterId = controllerMap(kMidiPitchBend);
      verdict.value = pitchBendValue(data1, data2);
      break;
    default:
      break;
  }
  return verdict;
}

}  // namespace tesh::bramel::vst
