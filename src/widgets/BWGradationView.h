// Rectangles with a gradient from the bottom left to the top right, and the background of a row of tabs.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace tesh::bramel {

/// The gradient is perpendicular to the diagonal from top left to bottom right, for any shape of the view.
class BWGradationView : public juce::Component {
 public:
  void setColours(juce::Colour atBottomLeft, juce::Colour atTopRight);
  void paint(juce::Graphics& graphics) override;

 private:
  juce::Colour first;
  juce::Colour second;
};

class BWTabGradationView : public juce::Component {
 public:
  BWTabGradationView();
  void resized() override { gradation.setBounds(getLocalBounds()); }

 private:
  BWGradationView gradation;
};

}  // namespace tesh::bramel
