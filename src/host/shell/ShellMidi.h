// Incoming MIDI: from the host and from the on-screen keyboard to the converter's queue or to a parameter.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "core/RealTime.h"
#include "host/resample/CFsConverterWrapper.h"
#include "host/shell/MidiInbox.h"
#include "host/shell/MidiIntake.h"
#include "host/shell/ShellCore.h"
#include "host/shell/ShellParameters.h"

namespace tesh::bramel::vst {

/// The operations are described in BramelInstrument. Takes the main lock for messages that do not fit into the inbox.
class ShellMidi {
 public:
  ShellMidi(ShellCore& shellCore, ShellParameters& shellParameters, CFsConverterWrapper& sampleRateConverter)
      : core(shellCore), parameters(shellParameters), converter(sampleRateConverter) {}

  void send(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames) SIVRAY_NONBLOCKING;
  void sendEvents(const VstEvents& vstEvents) SIVRAY_NONBLOCKING;
  void sendFromKeyboard(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames);

  /// Takes all messages out of the inbox. Must be called before any change to how messages are taken, and before a
  /// message is taken directly, so that the order is kept.
  void emptyInbox(const MainLock& lock) SIVRAY_NONBLOCKING;

 private:
  MidiVerdict judge(const ShortMessage& message) const SIVRAY_NONBLOCKING;
  ShortMessage take(const ShortMessage& message, std::int32_t deltaFrames, const MainLock& lock) SIVRAY_NONBLOCKING;
  void takeWhole(std::span<const std::uint8_t> message, std::int32_t deltaFrames,
                 const MainLock& lock) SIVRAY_NONBLOCKING;
  void takeShort(const ShortMessage& message, std::int32_t deltaFrames, const MainLock& lock) SIVRAY_NONBLOCKING;

  ShellCore& core;
  ShellParameters& parameters;
  CFsConverterWrapper& converter;
  MidiInbox inbox;
};

}  // namespace tesh::bramel::vst
