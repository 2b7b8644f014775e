// The program's window: the strip, and the panel below it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_audio_processors/juce_audio_processors.h>
#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>
#include <memory>
#include <optional>

#include "host/standalone/TransportStrip.h"
#include "views/BWPopupSlotView.h"

namespace tesh::bramel::standalone {

/// Of the desktop's own frame, and of a fixed size. Message thread only.
class ProgramWindow final : public juce::DocumentWindow, private juce::ComponentPeer::ScaleFactorListener {
 public:
  /// What the user does with the window.
  struct Events {
    std::function<void()> closed;
    std::function<void(juce::Point<int>)> moved;  ///< To a top left corner of the screen.
    std::function<void()> deactivated;            ///< Another window has the keyboard.
    std::function<void(float)> scaled;            ///< By the system, on the screen on which it stands now.
    /// Files are dropped on a pad, from 0, or elsewhere. They are refused without this function.
    std::function<void(const juce::StringArray& files, std::optional<int> pad)> dropped;
  };

  /// Takes over `strip` and `editor`. A pixel of the panel takes `scale` pixels of the screen each way.
  ProgramWindow(std::unique_ptr<TransportStrip> strip, std::unique_ptr<juce::AudioProcessorEditor> editor, float scale,
                Events newEvents);
  ~ProgramWindow() override;

  /// Shows the window at `position`, or in the middle of the screen if that is not on a screen.
  void open(std::optional<juce::Point<int>> position);

  /// The window's size follows; its top left corner stays.
  void setScale(float scale);

  TransportStrip& strip();

  /// Takes over another editor of the same size in the place of the one before, if there is one. Null takes that away.
  void setEditor(std::unique_ptr<juce::AudioProcessorEditor> editor);

  void closeButtonPressed() override;
  void moved() override;
  void activeWindowStatusChanged() override;

 private:
  class Content;

  void nativeScaleFactorChanged(double newScale) override { events.scaled(static_cast<float>(newScale)); }

  Events events;
  std::unique_ptr<Content> content;
  bool isOpen = false;
};

}  // namespace tesh::bramel::standalone
