// The top component of an open editor, in the host's window. Pop-ups attach to the nearest one above their anchor.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include <juce_gui_basics/juce_gui_basics.h>

namespace tesh::bramel {

/// Message thread only. All existing ones are in a list of the process.
class BWPopupSlotView : public juce::Component {
 public:
  BWPopupSlotView();
  ~BWPopupSlotView() override;

  /// The nearest slot that is `component` or one of its parents, or null.
  static BWPopupSlotView* above(juce::Component* component);

  /// A click on the panel gives no component the keyboard focus: keys belong to the host until a text field needs them.
  std::unique_ptr<juce::ComponentTraverser> createKeyboardFocusTraverser() override;
};

}  // namespace tesh::bramel
