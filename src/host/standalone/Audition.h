// Plays a sample once when it is chosen on the panel, by one stroke of its pad.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

#include <functional>
#include <set>

#include "host/standalone/PadKeys.h"

namespace tesh::bramel::standalone {

/// A sample counts as chosen when the user's gesture on its parameter ends. Nothing sounds if gestures on several pads
/// end together, as when a whole kit is changed. Message thread only.
class Audition final : private juce::AudioProcessorListener, private juce::AsyncUpdater, private juce::Timer {
 public:
  /// `newProcessor` is a SivrayProcessor that outlives this object. `newMaySound` is called before each stroke; if it
  /// returns false, nothing sounds.
  Audition(juce::AudioProcessor& newProcessor, PadKeys::Strike newStrike, std::function<bool()> newMaySound);
  ~Audition() override;

  /// Strikes a pad, by its note, without asking.
  void sound(int note);

 private:
  void audioProcessorParameterChanged(juce::AudioProcessor*, int, float) override {}
  void audioProcessorChanged(juce::AudioProcessor*, const ChangeDetails&) override {}
  void audioProcessorParameterChangeGestureEnd(juce::AudioProcessor*, int index) override;
  void handleAsyncUpdate() override;
  void timerCallback() override { release(); }
  void release();

  juce::AudioProcessor& processor;
  PadKeys::Strike strike;
  std::function<bool()> maySound;
  std::set<int> chosen;   ///< Notes of the pads whose samples were chosen since the last update.
  int soundingNote = -1;  ///< -1 for none.
};

}  // namespace tesh::bramel::standalone
