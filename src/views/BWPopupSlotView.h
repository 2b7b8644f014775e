// The top component of an open editor, the one that stands in the host's window. Pop-ups attach themselves to the
// nearest one above their anchor.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include <juce_gui_basics/juce_gui_basics.h>

namespace tesh::bramel {

/// Message thread only. All that exist stand in one list of the process.
class BWPopupSlotView : public juce::Component {
 public:
  BWPopupSlotView();
  ~BWPopupSlotView() override;

  /// The nearest slot among `component` and its parents, or null.
  static BWPopupSlotView* above(juce::Component* component);

  /// A click on the panel moves the keyboard focus to no component: keys belong to the host until a text field asks.
  std::unique_ptr<juce::ComponentTraverser> createKeyboardFocusTraverser() override;
};

}  // namespace tesh::bramel
