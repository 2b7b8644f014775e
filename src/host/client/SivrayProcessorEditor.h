// The panel as the editor of JUCE's wrappers, or one sentence where the instrument's files are missing.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include <juce_audio_processors/juce_audio_processors.h>

#include "host/client/SivrayProcessor.h"
#include "host/editor/PanelFrame.h"

namespace tesh::bramel::vst {

/// 768 by 468 pixels, which the wrapper's scale stretches. JUCE makes one per processor at a time. Message thread only.
class SivrayProcessorEditor final : public juce::AudioProcessorEditor {
 public:
  explicit SivrayProcessorEditor(SivrayProcessor& ownProcessor);

  /// Each pixel of the panel takes `newScale` by `newScale` pixels. Above 1 the larger set of pictures is drawn.
  void setScaleFactor(float newScale) override;

  /// Screen pixels per pixel of the window. Only chooses the set of pictures.
  void setScreenScale(float newScale);

  /// Whether the host gets keys that no text field of the panel uses; true until the first call. The standalone
  /// program, which has no host, passes false.
  void leaveKeysToHost(bool leavesKeys);

  void paint(juce::Graphics& graphics) override;
  void parentHierarchyChanged() override;
  std::unique_ptr<juce::ComponentTraverser> createKeyboardFocusTraverser() override;

 private:
  void showPanel();

  SivrayProcessor& owner;
  std::unique_ptr<PanelFrame> frame;  ///< Null where the instrument's files are missing.
  float scale = 1.0F;
  float screenScale = 1.0F;
  bool leavesKeysToHost = true;
  /// The window that the keyboard was made for; null unless this is inside a host's window.
  void* keyboardWindow = nullptr;
  std::unique_ptr<juce::VBlankAttachment> frames;
};

}  // namespace tesh::bramel::vst
