// The engine's response to each MIDI message.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/VstXSynth.h"

#include "core/MidiStatus.h"

namespace tesh::bramel::plugin::sivray {
namespace {

/// A system status that MIDI leaves undefined; here it carries transport messages.
constexpr std::uint8_t kTransport = 0xF4;

/// The value bits of a MIDI data byte; also the highest note.
constexpr std::uint8_t kDataBits = 127;

constexpr bool releasesAll(std::uint8_t controller) { return controller == 123 || controller == 126; }

}  // namespace

void VstXSynth::processEvent(const SequencerMessage& message) {
  const auto [status, data1, data2] = message.bytes;
  if (status == kTransport) {
    drumEngine.transport(data1);
    return;
  }
  const int note = data1 & kDataBits;
  switch (status & cofu::core::kMidiKindBits) {
    case cofu::core::kMidiNoteOn:
      if (data2 > 0) {
        drumEngine.noteOn(note, data2 & kDataBits);
      } else {
        drumEngine.noteOff(note);
      }
      break;
    case cofu::core::kMidiNoteOff:
      drumEngine.noteOff(note);
      break;
    case cofu::core::kMidiController:
      // Note 127 belongs to no pad, so the loop leaves it out.
      for (int any = 0; releasesAll(data1) && any < kDataBits; ++any) {
        drumEngine.noteOff(any);
      }
      break;
    case cofu::core::kMidiProgramChange:
      drumEngine.bank().setProgram(data1);
      break;
    default:
      break;
  }
}

}  // namespace tesh::bramel::plugin::sivray
