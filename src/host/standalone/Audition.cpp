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
  for (std::size_t pad = 0; parameter != nullptr && pad < panel::kPads; ++pad) {
    if (parameter->shellId() == panel::padMacro(pad, panel::kSample)) {
      chosen.insert(panel::padNote(pad));
      triggerAsyncUpdate();
    }
  }
}

void Audition::handleAsyncUpdate() {
  const std::set<int> notes = std::exchange(chosen, {});
  if (notes.size() != 1 || !maySound()) {
    return;
  }
  release();
  soundingNote = *notes.begin();
  strike(soundingNote, true);
  startTimer(kStrokeMilliseconds);
}

void Audition::release() {
  stopTimer();
  if (const int note = std::exchange(soundingNote, -1); note >= 0) {
    strike(note, false);
  }
}

}  // namespace tesh::bramel::standalone
