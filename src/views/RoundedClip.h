// Clips a component and its children to a rounded rectangle while painting, without an intermediate image.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace tesh::bramel {

/// To be passed to `juce::Component::setCachedComponentImage`, which owns it.
class RoundedClip : public juce::CachedComponentImage {
 public:
  RoundedClip(juce::Component& clipped, float corner) : component(clipped), cornerSize(corner) {}

  void paint(juce::Graphics& graphics) override {
    const juce::Graphics::ScopedSaveState state(graphics);
    juce::Path outline;
    outline.addRoundedRectangle(component.getLocalBounds().toFloat(), cornerSize);
    graphics.reduceClipRegion(outline);
    component.paintEntireComponent(graphics, true);
  }
  bool invalidateAll() override { return true; }
  bool invalidate(const juce::Rectangle<int>&) override { return true; }
  void releaseResources() override {}

 private:
  juce::Component& component;
  float cornerSize;
};

}  // namespace tesh::bramel
