// A knob that shows its value as a frame of a film strip.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/BWImageKnob.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tesh::bramel {

BWImageKnob::BWImageKnob() { addAndMakeVisible(list); }

void BWImageKnob::setFrames(ImageSet frames) {
  list.setImages(std::move(frames));
  refresh();
}

void BWImageKnob::setMinimumFrame(float frame) {
  minimumFrame = frame;
  refresh();
}

void BWImageKnob::setMaximumFrame(float frame) {
  maximumFrame = frame;
  refresh();
}

void BWImageKnob::resized() {
  BWKnobBase::resized();
  list.setBounds(getLocalBounds());
}

void BWImageKnob::refresh() {
  if (list.getImageCount() == 0) {
    return;
  }
  const float first = minimumFrame.value_or(0.0F);
  const float last = maximumFrame.value_or(static_cast<float>(list.getImageCount() - 1));
  const float frame = std::round(getNormalisedValue() * (last - first) + first);
  list.setIndex(static_cast<std::size_t>(std::max(frame, 0.0F)));
}

}  // namespace tesh::bramel
