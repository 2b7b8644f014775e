// Joins buttons into a radio group, wherever they are.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/BWVirtualToggleGroup.h"

#include <algorithm>
#include <utility>

namespace tesh::bramel {

BWVirtualToggleGroup::~BWVirtualToggleGroup() { leaveButtons(); }

void BWVirtualToggleGroup::setButtons(std::vector<std::shared_ptr<IBWTwoStateControl>> newButtons) {
  leaveButtons();
  buttons = std::move(newButtons);
  for (const auto& button : buttons) {
    button->setListener(this);
  }
  updateButtons();
}

void BWVirtualToggleGroup::setState(std::uint64_t state) {
  if (state == current || (state >= buttons.size() && state != 0)) {
    return;
  }
  current = state;
  reported.reset();
  updateButtons();
}

void BWVirtualToggleGroup::controlValueChanged(IBWControl& control) {
  if (choose(control)) {
    tellIfChanged();
  }
}

void BWVirtualToggleGroup::controlGestureBegan(IBWControl& control) {
  if (!choose(control)) {
    return;
  }
  const std::weak_ptr<const bool> token = alive;
  notifyBegin();
  if (!token.expired()) {
    tellIfChanged();
  }
}

void BWVirtualToggleGroup::controlGestureEnded(IBWControl& /*control*/) { notifyEnd(); }

/// False if the control is not in the group.
bool BWVirtualToggleGroup::choose(const IBWControl& control) {
  const auto found =
      std::find_if(buttons.begin(), buttons.end(), [&](const auto& button) { return button.get() == &control; });
  if (found == buttons.end()) {
    return false;
  }
  current = static_cast<std::uint64_t>(found - buttons.begin());
  updateButtons();
  return true;
}

void BWVirtualToggleGroup::tellIfChanged() {
  if (std::exchange(reported, current) != current) {
    notifyChanged();
  }
}

void BWVirtualToggleGroup::updateButtons() {
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    buttons[i]->setState(i == current);
  }
}

void BWVirtualToggleGroup::leaveButtons() {
  for (const auto& button : buttons) {
    button->setListener(nullptr);
  }
}

}  // namespace tesh::bramel
