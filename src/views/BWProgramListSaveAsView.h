// The page that asks for the name of a new program.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>
#include <memory>

#include "viewmodels/IProgramListViewModel.h"
#include "viewmodels/resources/IBramelFontProvider.h"
#include "widgets/BWFlatToggleButton.h"
#include "widgets/BWStackingPageView.h"

namespace tesh::bramel {

/// Initially contains the current program's name, selected, so that typing replaces it. Accepts any name. Return saves
/// and Escape cancels, like the buttons. Message thread only.
class BWProgramListSaveAsView : public BWStackingPageView, public IBWControlListener {
 public:
  /// Calls `whenSaved` after the program has been saved and this page has been removed from its stack.
  BWProgramListSaveAsView(std::shared_ptr<IProgramListViewModel> model, IBramelFontProvider& fonts,
                          std::function<void()> whenSaved);

  void controlGestureBegan(IBWControl& control) override;
  void resized() override;
  void parentHierarchyChanged() override;

  juce::TextEditor& nameEditor() { return editor; }

 private:
  void afterTheKey(void (BWProgramListSaveAsView::*action)());
  void save();
  void leave();

  std::shared_ptr<IProgramListViewModel> programList;
  std::function<void()> saved;
  std::shared_ptr<BWFlatToggleButton> cancelButton;
  std::shared_ptr<BWFlatToggleButton> saveButton;
  juce::TextEditor editor;
};

}  // namespace tesh::bramel
