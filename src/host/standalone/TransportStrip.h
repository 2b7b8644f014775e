// The strip above the panel: it starts the demo, and shows the sound device or why there is none.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <memory>

#include "viewmodels/resources/IBramelFontProvider.h"
#include "widgets/BWButtonBase.h"
#include "widgets/IBWControl.h"
#include "widgets/PanelText.h"

namespace tesh::bramel::standalone {

/// As wide as the panel. Message thread only.
class TransportStrip : public juce::Component {
 public:
  static constexpr int kHeight = 40;

  /// `listener` gets the buttons' events, and outlives the strip.
  TransportStrip(IBramelFontProvider& fonts, IBWControlListener& listener);
  ~TransportStrip() override;

  /// Starts and stops the demo; its value is on while the demo plays.
  BWButtonBase& demoButton() { return *demo; }

  /// Opens the setup; a momentary button.
  BWButtonBase& deviceButton() { return *display; }

  /// One line. A fault is shown in another colour.
  void showDevice(const juce::String& text, bool isFault);

  void paint(juce::Graphics& graphics) override;
  void resized() override;

 private:
  std::unique_ptr<BWButtonBase> demo;
  std::unique_ptr<BWButtonBase> display;
  PanelText hint;
  PanelText deviceText;
};

}  // namespace tesh::bramel::standalone
