// Runs the program's tests on a virtual screen and without a sound card.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <juce_gui_basics/juce_gui_basics.h>

#include "host/standalone/Desktop.h"
#include "hosting/HostWindow.h"

int main(int argumentCount, char** arguments) {
  testing::InitGoogleTest(&argumentCount, arguments);
  sivray::hosting::HostWindow::findServer();
  tesh::bramel::standalone::desktop::prepare();
  const juce::ScopedJuceInitialiser_GUI juce;
  return RUN_ALL_TESTS();
}
