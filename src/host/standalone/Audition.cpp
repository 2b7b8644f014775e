// Strikes the pad after the choice, and ends the note a moment later for pads that play while they are held.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/standalone/Audition.h"

#include <cstddef>
#include <utility>

#include "host/client/ClientParameter.h"
#include "viewmodels/texts/PanelMacros.h"

namespace tesh::bramel::standalone {
namespace {

constexpr int kStrokeMilliseconds = 300;

}  // namespace

Audition::Audition(juce::AudioProcessor& newProcessor, PadKeys::Strike newStrike, std::function<bool()> newMaySound)
    : processor(newProcessor), strike(std::move(newStrike)), maySound(std::move(newMaySound)) {
  processor.addListener(this);
}

Audition::~Audition() { processor.removeListener(this); }

void Audition::audioProcessorParameterChangeGestureEnd(juce::AudioProcessor* /*source*/, int index) {
  const auto* const parameter = dynamic_cast<const vst::ClientParameter*>(processor.getParameters()[index]);
  if (parameter != nullptr && panel::choosesSound(parameter->shellId())) {
    chosen.insert(panel::padNote(static_cast<std::size_t>(parameter->shellId()) / panel::kMacrosPerPad));
    triggerAsyncUpdate();
  }
}

void Audition::handleAsyncUpdate() {
  const std::set<int> notes = std::exchange(chosen, {});
  if (notes.size() == 1 && maySound()) {
    sound(*notes.begin());
  }
}

void Audition::sound(int note) {
  release();
  soundingNote = note;
  strike(note, true);
  startTimer(kStrokeMilliseconds);
}

void Audition::release() {
  stopTimer();
  if (const int note = std::exchange(soundingNote, -1); note >= 0) {
    strike(note, false);
  }
}

}  // namespace tesh::bramel::standalone
