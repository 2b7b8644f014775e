// A switch with one image per state.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/BWToggleSwitch.h"

#include <utility>

namespace tesh::bramel {

BWToggleSwitch::BWToggleSwitch() { addAndMakeVisible(list); }

void BWToggleSwitch::setImages(ImageSet images) {
  list.setImages(std::move(images));
  refresh();
}

void BWToggleSwitch::resized() {
  BWSwitchBase::resized();
  list.setBounds(getLocalBounds());
}

void BWToggleSwitch::onTrackingBegan() {
  const std::uint64_t count = getStateCount();
  if (count > 0) {
    setState((getState() + 1) % count);
    notifyChanged();
  }
}

void BWToggleSwitch::refresh() { list.setIndex(getState()); }

}  // namespace tesh::bramel
