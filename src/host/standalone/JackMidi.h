// The MIDI inputs of this system.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/standalone/MidiInputs.h"

namespace tesh::bramel::standalone {

/// Name of the program's second JACK client, which has its MIDI input.
inline constexpr const char* kJackMidiClient = "Sivray MIDI";

/// The inputs that JUCE finds. On Linux without ALSA's sequencer, while a JACK server runs, the input "JACK": a port
/// named "Sivray MIDI:in", which the user connects.
MidiSystem systemMidi();

}  // namespace tesh::bramel::standalone
