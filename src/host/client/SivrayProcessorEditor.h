// The panel as the editor of JUCE's wrappers, or one sentence where the instrument's files are missing.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include <juce_audio_processors/juce_audio_processors.h>

#include "host/client/SivrayProcessor.h"
#include "host/editor/PanelFrame.h"

namespace tesh::bramel::vst {

/// 768 by 468 pixels, which the wrapper's scale stretches. One per processor at a time, as JUCE sees to. Message thread
/// only.
class SivrayProcessorEditor final : public juce::AudioProcessorEditor {
 public:
  explicit SivrayProcessorEditor(SivrayProcessor& ownProcessor);

  /// A pixel of the panel is shown as `newScale` pixels each way; above 1, from the larger set of pictures.
  void setScaleFactor(float newScale) override;

  /// What the system makes of one pixel of the window, in pixels of the screen; counts for the choice of pictures
  /// alone.
  void setScreenScale(float newScale);

  /// Whether hosts get the keys that no text field of the panel has asked for; true until the first call. The
  /// standalone program, which has no host, takes all.
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
  void* keyboardWindow = nullptr;  ///< That the keyboard was made for: null unless this stands in a window of the host.
  std::unique_ptr<juce::VBlankAttachment> frames;
};

}  // namespace tesh::bramel::vst
