// Pairs a pad or knob that is touched with the next note or controller from a MIDI input.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/standalone/Lesson.h"

#include <utility>

#include "core/MidiStatus.h"
#include "macro/MacroControllerBase.h"
#include "viewmodels/texts/PanelMacros.h"

namespace tesh::bramel::standalone {
namespace {

constexpr int kPlayedMilliseconds = 30;
constexpr const char* kHowToEnd = "  Click here to end";

juce::String padName(int note) { return "pad " + juce::String(note - panel::kFirstPadNote + 1); }

}  // namespace

Lesson::Lesson(Playback& newPlayback, juce::AudioProcessor& newProcessor, Pupil newPupil)
    : playback(newPlayback), processor(newProcessor), pupil(std::move(newPupil)) {
  processor.addListener(this);
}

Lesson::~Lesson() { processor.removeListener(this); }

void Lesson::start(Subject newSubject) {
  subject = newSubject;
  touched = -1;
  playback.takeHeard();
  startTimer(kPlayedMilliseconds);
  say(subject == Subject::notes ? "Strike a pad of the panel, then its drum."
                                : "Touch a knob, then move its controller.");
}

void Lesson::stop() {
  stopTimer();
  subject = Subject::none;
  line.clear();
  pupil.changed();
}

void Lesson::say(const juce::String& newLine) {
  line = newLine + kHowToEnd;
  pupil.changed();
}

void Lesson::look() {
  const Playback::Heard heard = playback.takeHeard();
  if (subject == Subject::notes) {
    takePad(heard.panelNote);
    takeDrum(heard.inputNote);
  } else if (subject == Subject::controllers) {
    takeController(heard.inputController);
  }
}

void Lesson::takePad(int note) {
  if (note >= 0) {
    touched = note;
    say("Now strike the drum of " + padName(note) + ".");
  }
}

void Lesson::takeDrum(int note) {
  if (note >= 0 && touched >= 0) {
    const int pad = std::exchange(touched, -1);
    pupil.note(note, pad);
    say("Note " + juce::String(note) + " plays " + padName(pad) + ". The next pad?");
  }
}

void Lesson::takeController(int controller) {
  if (controller < 0 || touched < 0) {
    return;
  }
  if (!vimo::MacroControllerBase::canMove(static_cast<std::uint8_t>(controller))) {
    say("Controller " + juce::String(controller) + " cannot be learnt: " +
        (cofu::core::isMidiBankSelect(static_cast<std::uint8_t>(controller)) ? "it selects banks."
                                                                             : "take one up to 126."));
    return;
  }
  const int parameter = std::exchange(touched, -1);
  const juce::String name = processor.getParameters()[parameter]->getName(64);
  const juce::String pair = "Controller " + juce::String(controller) + " moves " + name;
  say(pupil.controller(controller, parameter) ? pair + ". The next knob?" : pair + " until the end: not saved.");
}

void Lesson::audioProcessorParameterChangeGestureBegin(juce::AudioProcessor*, int parameter) {
  if (subject == Subject::controllers) {
    touched = parameter;
    say("Now move the controller of " + processor.getParameters()[parameter]->getName(64) + ".");
  }
}

}  // namespace tesh::bramel::standalone
