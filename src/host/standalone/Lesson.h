// Teaches the program which drum plays a pad: the user strikes the pad on the panel, then the drum.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_events/juce_events.h>

#include <functional>
#include <utility>

#include "host/standalone/Playback.h"

namespace tesh::bramel::standalone {

/// Goes on from one pair to the next until it is stopped. Message thread only.
class Lesson final : private juce::Timer {
 public:
  struct Pupil {
    std::function<void(int drum, int padNote)> note;
    /// What `text` tells has changed.
    std::function<void()> changed;
  };

  /// `newPlayback` outlives this object.
  Lesson(Playback& newPlayback, Pupil newPupil) : playback(newPlayback), pupil(std::move(newPupil)) {}

  void start();
  void stop();
  bool isOn() const { return isTimerRunning(); }

  /// One line for the user: what was learnt, and what to do next.
  const juce::String& text() const { return line; }

  /// Takes in what was played since the last look. The timer's work; for tests.
  void look();

 private:
  void say(const juce::String& newLine);
  void timerCallback() override { look(); }

  Playback& playback;
  Pupil pupil;
  int touched = -1;  ///< The pad's note; -1 while none is touched.
  juce::String line;
};

}  // namespace tesh::bramel::standalone
