// The file dialogs for importing and exporting programs.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>
#include <memory>

#include "viewmodels/IProgramListViewModel.h"
#include "views/BWPopupView.h"

namespace tesh::bramel {

/// One dialog at a time, in front of the panel of `opener`: on Windows the system's own, elsewhere inside the panel's
/// window. It is closed when this object is destroyed. A cancelled dialog changes nothing. If a file cannot be read or
/// written, a line on the panel says so. Message thread only.
class ProgramFileDialogs {
 public:
  /// Calls `whenImported` after the import.
  void openImport(juce::Component& opener, const std::shared_ptr<IProgramListViewModel>& model,
                  std::function<void()> whenImported);
  /// Adds the ending to a name without it, and asks before it overwrites a file.
  void openExport(juce::Component& opener, const std::shared_ptr<IProgramListViewModel>& model);

 private:
  void open(juce::Component& opener, int mode, const juce::String& title, const juce::File& start,
            const juce::String& ending, const std::function<bool(const juce::File&)>& use, const char* fault);
  void exportTo(const juce::File& file, const juce::Component::SafePointer<juce::Component>& opener,
                const std::shared_ptr<IProgramListViewModel>& model, int tries);
  void say(juce::Component* anchor, const juce::String& line);

  std::unique_ptr<juce::FileChooser> chooser;
  std::shared_ptr<BWPopupView> notice;
};

}  // namespace tesh::bramel
