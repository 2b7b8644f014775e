// Runs the tests of components without a screen.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <juce_gui_basics/juce_gui_basics.h>

int main(int argumentCount, char** arguments) {
  testing::InitGoogleTest(&argumentCount, arguments);
  const juce::ScopedJuceInitialiser_GUI juce;
  return RUN_ALL_TESTS();
}
