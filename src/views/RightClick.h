// Listens for right clicks on a control, which itself ignores them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>
#include <utility>

namespace tesh::bramel {

/// Message thread only.
class RightClick final : public juce::MouseListener {
 public:
  /// Listens as long as both this object and the component exist.
  RightClick(juce::Component& component, std::function<void()> newAction)
      : heard(&component), action(std::move(newAction)) {
    component.addMouseListener(this, false);
  }
  ~RightClick() override {
    if (heard != nullptr) {
      heard->removeMouseListener(this);
    }
  }
  RightClick(const RightClick&) = delete;
  RightClick& operator=(const RightClick&) = delete;

  void mouseDown(const juce::MouseEvent& event) override {
    if (event.mods.isRightButtonDown()) {
      action();
    }
  }

 private:
  juce::Component::SafePointer<juce::Component> heard;
  std::function<void()> action;
};

}  // namespace tesh::bramel
