// The file dialogs in which a user picks a file of programs.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>
#include <memory>

#include "viewmodels/IProgramListViewModel.h"

namespace tesh::bramel {

/// One dialog at a time. It is closed when this object goes, and a cancelled one changes nothing. Message thread only.
class ProgramFileDialogs {
 public:
  /// Calls `whenImported` after the import.
  void openImport(const std::shared_ptr<IProgramListViewModel>& model, std::function<void()> whenImported);
  /// Asks before it overwrites a file.
  void openExport(const std::shared_ptr<IProgramListViewModel>& model);

 private:
  std::unique_ptr<juce::FileChooser> chooser;
};

}  // namespace tesh::bramel
