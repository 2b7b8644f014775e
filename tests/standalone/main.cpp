// Runs the tests of the program's parts without a screen and without a sound card.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <juce_gui_basics/juce_gui_basics.h>

int main(int argumentCount, char** arguments) {
  testing::InitGoogleTest(&argumentCount, arguments);
  const juce::ScopedJuceInitialiser_GUI juce;
  return RUN_ALL_TESTS();
}
