// Learns which drum plays a pad, and which controller moves a knob: the user touches the one on the panel, then the
// other.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

#include <functional>

#include "host/standalone/Playback.h"

namespace tesh::bramel::standalone {

/// Learns pair after pair until it is stopped. Message thread only.
class Lesson final : private juce::Timer, private juce::AudioProcessorListener {
 public:
  struct Pupil {
    std::function<void(int drum, int padNote)> note;
    /// `parameter` is the processor's index. Returns false if the pair could not be saved.
    std::function<bool(int controller, int parameter)> controller;
    /// Called when `text` has changed.
    std::function<void()> changed;
  };

  /// `newPlayback` and `newProcessor` outlive this object.
  Lesson(Playback& newPlayback, juce::AudioProcessor& newProcessor, Pupil newPupil);
  ~Lesson() override;

  void teachNotes() { start(Subject::notes); }
  void teachControllers() { start(Subject::controllers); }
  void stop();
  bool isOn() const { return subject != Subject::none; }

  /// Returns one line for the user: the note that was learnt and the next step.
  const juce::String& text() const { return line; }

  /// Handles the notes played since the last call. Called by the timer and by tests.
  void look();

 private:
  enum class Subject { none, notes, controllers };

  void start(Subject newSubject);
  void say(const juce::String& newLine);
  void takePad(int note);
  void takeDrum(int note);
  void takeController(int controller);

  void timerCallback() override { look(); }
  void audioProcessorParameterChanged(juce::AudioProcessor*, int, float) override {}
  void audioProcessorChanged(juce::AudioProcessor*, const ChangeDetails&) override {}
  void audioProcessorParameterChangeGestureBegin(juce::AudioProcessor*, int parameter) override;

  Playback& playback;
  juce::AudioProcessor& processor;
  Pupil pupil;
  Subject subject = Subject::none;
  int touched = -1;  ///< The pad's note or the parameter's index; -1 if none is touched.
  juce::String line;
};

}  // namespace tesh::bramel::standalone
