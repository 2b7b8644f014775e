// The page for choosing sound device, rate, block, MIDI inputs and note map.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>
#include <memory>
#include <vector>

#include "host/standalone/MidiInputs.h"
#include "host/standalone/NoteMaps.h"
#include "host/standalone/SoundDevice.h"
#include "viewmodels/resources/IBramelFontProvider.h"
#include "widgets/BWFlatToggleButton.h"
#include "widgets/BWGradationView.h"
#include "widgets/BWLabel.h"
#include "widgets/BWSimpleListView.h"
#include "widgets/IBWControl.h"
#include "widgets/IBWSimpleListView.h"

namespace tesh::bramel::standalone {

/// The content of a pop-up. A click on a row takes effect at once. Message thread only.
class SetupView : public juce::Component, public IBWSimpleListViewListener, public IBWControlListener {
 public:
  static constexpr int kWidth = 740;
  static constexpr int kHeight = 320;

  /// The user's choices. A call may refresh the view.
  struct Wishes {
    std::function<void(const DeviceChoice&)> device;
    std::function<void(const juce::String& midiInput, bool isOn)> midi;
    std::function<void()> testTone;
    std::function<void(int row)> notes;
    std::function<void(bool)> hearsChoices;
    std::function<void()> controllers;
  };

  /// `sound`, `midi`, `maps`, `remembered` and `fonts` outlive the view.
  SetupView(SoundDevice& sound, const MidiInputs& midi, const NoteMaps& maps, const Settings& remembered,
            IBramelFontProvider& fonts, Wishes newWishes);
  ~SetupView() override;

  /// Shows the devices that are open now.
  void refresh();

  void listRowSelected(BWSimpleListView& list, int row) override;
  void listRowClicked(BWSimpleListView& list, int row, const juce::MouseEvent& event) override;
  void controlGestureBegan(IBWControl& control) override;
  void resized() override;

 private:
  class Column;

  void refreshLists();

  SoundDevice& soundDevice;
  const MidiInputs& midiInputs;
  const NoteMaps& noteMaps;
  const Settings& settings;
  Wishes wishes;
  BWTabGradationView header;
  BWLabel title;
  BWLabel state;
  std::shared_ptr<BWFlatToggleButton> testButton;
  std::unique_ptr<Column> outputs;
  std::unique_ptr<Column> rates;
  std::unique_ptr<Column> blocks;
  std::unique_ptr<Column> inputs;
  std::unique_ptr<Column> notes;
  std::unique_ptr<Column> choices;
  std::unique_ptr<Column> controllers;
  std::vector<DeviceChoice> devices;  ///< One per row of `outputs`.
};

}  // namespace tesh::bramel::standalone
