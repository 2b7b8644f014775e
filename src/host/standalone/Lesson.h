// Teaches the program which drum plays a pad, and which controller moves a knob: the user touches one, then the other.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

#include <functional>

#include "host/standalone/Playback.h"

namespace tesh::bramel::standalone {

/// Goes on from one pair to the next until it is stopped. Message thread only.
class Lesson final : private juce::Timer, private juce::AudioProcessorListener {
 public:
  struct Pupil {
    std::function<void(int drum, int padNote)> note;
    /// `parameter` counts those of the processor. False if it could not be kept.
    std::function<bool(int controller, int parameter)> controller;
    /// What `text` tells has changed.
    std::function<void()> changed;
  };

  /// `newPlayback` and `newProcessor` outlive this object.
  Lesson(Playback& newPlayback, juce::AudioProcessor& newProcessor, Pupil newPupil);
  ~Lesson() override;

  void teachNotes() { start(Subject::notes); }
  void teachControllers() { start(Subject::controllers); }
  void stop();
  bool isOn() const { return subject != Subject::none; }

  /// One line for the user: what was learnt, and what to do next.
  const juce::String& text() const { return line; }

  /// Takes in what was played since the last look. The timer's work; for tests.
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
  int touched = -1;  ///< The pad's note, or the parameter; -1 while none is touched.
  juce::String line;
};

}  // namespace tesh::bramel::standalone
