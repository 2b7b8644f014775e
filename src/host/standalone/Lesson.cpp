// Pairs what is struck on the panel with what then comes from a MIDI input.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/standalone/Lesson.h"

#include "viewmodels/texts/PanelMacros.h"

namespace tesh::bramel::standalone {
namespace {

constexpr int kPlayedMilliseconds = 30;
constexpr const char* kHowToEnd = "  Click here to end";

juce::String padName(int note) { return "pad " + juce::String(note - panel::kFirstPadNote + 1); }

}  // namespace

void Lesson::start() {
  touched = -1;
  playback.takeHeard();
  startTimer(kPlayedMilliseconds);
  say("Strike a pad of the panel, then its drum.");
}

void Lesson::stop() {
  stopTimer();
  line.clear();
  pupil.changed();
}

void Lesson::say(const juce::String& newLine) {
  line = newLine + kHowToEnd;
  pupil.changed();
}

void Lesson::look() {
  const Playback::Heard heard = playback.takeHeard();
  if (heard.panelNote >= 0) {
    touched = heard.panelNote;
    say("Now strike the drum of " + padName(touched) + ".");
  }
  if (heard.inputNote >= 0 && touched >= 0) {
    const int pad = std::exchange(touched, -1);
    pupil.note(heard.inputNote, pad);
    say("Note " + juce::String(heard.inputNote) + " plays " + padName(pad) + ". The next pad?");
  }
}

}  // namespace tesh::bramel::standalone
