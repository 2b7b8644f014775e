// Registers each editor's top component, so that a pop-up can find the nearest one above its anchor.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/BWPopupSlotView.h"

#include <algorithm>
#include <vector>

namespace tesh::bramel {
namespace {

/// Moves between components as usual, but focuses none at first.
class NoFirstFocus final : public juce::KeyboardFocusTraverser {
 public:
  juce::Component* getDefaultComponent(juce::Component* /*parent*/) override { return nullptr; }
};

std::vector<BWPopupSlotView*>& slots() {
  static std::vector<BWPopupSlotView*> all;
  return all;
}

}  // namespace

BWPopupSlotView::BWPopupSlotView() { slots().push_back(this); }

BWPopupSlotView::~BWPopupSlotView() { std::erase(slots(), this); }

BWPopupSlotView* BWPopupSlotView::above(juce::Component* component) {
  for (; component != nullptr; component = component->getParentComponent()) {
    const auto slot = std::find(slots().begin(), slots().end(), component);
    if (slot != slots().end()) {
      return *slot;
    }
  }
  return nullptr;
}

std::unique_ptr<juce::ComponentTraverser> BWPopupSlotView::createKeyboardFocusTraverser() {
  return std::make_unique<NoFirstFocus>();
}

}  // namespace tesh::bramel
