// The MIDI inputs of this system.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/standalone/MidiInputs.h"

namespace tesh::bramel::standalone {

/// The program's second client of a JACK server, which has its MIDI input.
inline constexpr const char* kJackMidiClient = "Sivray MIDI";

/// Those that JUCE finds. On Linux without ALSA's sequencer, while a JACK server runs, its input "JACK": a port named
/// "Sivray MIDI:in" that the user connects.
MidiSystem systemMidi();

}  // namespace tesh::bramel::standalone
