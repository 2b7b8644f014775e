// MIDI on its way in: messages of the host and of the on-screen keyboard, up to the converter's queue or a parameter.
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

/// BramelInstrument describes the operations. Takes the main lock for messages that do not fit into the inbox.
class ShellMidi {
 public:
  ShellMidi(ShellCore& shellCore, ShellParameters& shellParameters, CFsConverterWrapper& sampleRateConverter)
      : core(shellCore), parameters(shellParameters), converter(sampleRateConverter) {}

  void send(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames) SIVRAY_NONBLOCKING;
  void sendEvents(const VstEvents& vstEvents) SIVRAY_NONBLOCKING;
  void sendFromKeyboard(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames);

  /// Takes the messages that wait in the inbox: before whatever changes how messages are taken, or takes one itself.
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
