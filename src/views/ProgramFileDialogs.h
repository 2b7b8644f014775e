// The file dialogs in which a user picks a file of programs.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>
#include <memory>

#include "viewmodels/IProgramListViewModel.h"
#include "views/BWPopupView.h"

namespace tesh::bramel {

/// One dialog at a time, in front of the panel that `opener` is on: on Windows the system's own, elsewhere inside the
/// panel's window. It is closed when this object goes, and a cancelled one changes nothing. A file that cannot be read
/// or written is answered with a line on the panel. Message thread only.
class ProgramFileDialogs {
 public:
  /// Calls `whenImported` after the import.
  void openImport(juce::Component& opener, const std::shared_ptr<IProgramListViewModel>& model,
                  std::function<void()> whenImported);
  /// Adds the ending of such files to a name without it, and asks before it overwrites a file.
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
