// The page that lists the results for dropped files, and undoes the import.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>
#include <memory>

#include "host/standalone/ContentTool.h"
#include "viewmodels/resources/IBramelFontProvider.h"
#include "widgets/BWFlatToggleButton.h"
#include "widgets/BWGradationView.h"
#include "widgets/BWLabel.h"
#include "widgets/BWSimpleListView.h"
#include "widgets/IBWControl.h"

namespace tesh::bramel::standalone {

/// The content of a pop-up. Lists files that could not be used first. Message thread only.
class ImportView : public juce::Component, public IBWControlListener {
 public:
  static constexpr int kWidth = 480;
  static constexpr int kHeight = 300;

  /// `fonts` outlives the view. `newUndo` is null if there is nothing to undo.
  ImportView(const ToolResult& result, IBramelFontProvider& fonts, std::function<void()> newUndo);

  void controlGestureBegan(IBWControl& control) override;
  void resized() override;

 private:
  std::function<void()> undo;
  BWTabGradationView header;
  BWLabel title;
  BWSimpleListView list;
  std::shared_ptr<BWFlatToggleButton> undoButton;
};

/// Returns one line such as "18 sounds added, 2 files not used".
juce::String summaryOf(const ToolResult& result);

}  // namespace tesh::bramel::standalone
