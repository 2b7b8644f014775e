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

/// Has the desktop's own frame and a fixed size. Message thread only.
class ProgramWindow final : public juce::DocumentWindow, private juce::ComponentPeer::ScaleFactorListener {
 public:
  /// Called on events of the window.
  struct Events {
    std::function<void()> closed;
    std::function<void(juce::Point<int>)> moved;  ///< To this top left corner, in screen pixels.
    std::function<void()> deactivated;            ///< Another window has got the keyboard focus.
    std::function<void(float)> scaled;            ///< By the system, for the window's present screen.
    /// Files were dropped on a pad, counted from 0, or elsewhere. Without this function they are refused.
    std::function<void(const juce::StringArray& files, std::optional<int> pad)> dropped;
  };

  /// Takes over `strip` and `editor`. Each pixel of the panel takes `scale` by `scale` screen pixels.
  ProgramWindow(std::unique_ptr<TransportStrip> strip, std::unique_ptr<juce::AudioProcessorEditor> editor, float scale,
                Events newEvents);
  ~ProgramWindow() override;

  /// Shows the window at `position`, or in the middle of the screen if that is not on a screen.
  void open(std::optional<juce::Point<int>> position);

  /// The window is resized; its top left corner stays.
  void setScale(float scale);

  TransportStrip& strip();

  /// Replaces the editor by one of the same size, which it takes over. Null removes it.
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
