// Selects the kits of the demo while it plays.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_audio_processors/juce_audio_processors.h>
#include <juce_events/juce_events.h>

#include <cstddef>
#include <string>

#include "host/standalone/DemoPlayer.h"

namespace tesh::bramel::standalone {

/// Starts and stops the demo. Its kits are programs of the processor; the user's sound is restored when the demo stops.
/// A demo without kits plays the selected sound and changes nothing. Message thread only.
class DemoKits final : private juce::Timer {
 public:
  /// Both outlive this object.
  DemoKits(juce::AudioProcessor& instrument, DemoPlayer& player);

  /// Stops the demo.
  ~DemoKits() override;

  void play();
  void stop();

 private:
  void timerCallback() override;
  void select(std::size_t kit);
  void choose(const std::string& name);

  juce::AudioProcessor& processor;
  DemoPlayer& demo;
  juce::MemoryBlock ownSound;  ///< The user's, while the demo's kits play; else empty.
  std::string shown;
};

}  // namespace tesh::bramel::standalone
