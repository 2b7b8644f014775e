// Opens the dialogs for import and export and passes the chosen file to the view model.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/ProgramFileDialogs.h"

#include <string>
#include <utility>

namespace tesh::bramel {
namespace {

juce::File documents() { return juce::File::getSpecialLocation(juce::File::userDocumentsDirectory); }

std::string wildcardOf(const IProgramListViewModel& model) { return "*." + model.getExportFileStem(); }

}  // namespace

// The dialogs do not block: a host that closes the editor under an open dialog must not find the message thread inside
// a nested loop of a view that it deletes.

void ProgramFileDialogs::openImport(const std::shared_ptr<IProgramListViewModel>& model,
                                    std::function<void()> whenImported) {
  chooser = std::make_unique<juce::FileChooser>("Import User Programs", documents(), wildcardOf(*model));
  constexpr int kMode = juce::FileBrowserComponent::openMode | juce::FileBrowserComponent::canSelectFiles;
  chooser->launchAsync(kMode, [model, tell = std::move(whenImported)](const juce::FileChooser& done) {
    if (done.getResult() != juce::File()) {
      model->importPrograms(done.getResult().getFullPathName().toStdString());
      tell();
    }
  });
}

void ProgramFileDialogs::openExport(const std::shared_ptr<IProgramListViewModel>& model) {
  // The suggested name carries the ending by which the import dialog finds the file.
  const juce::File suggestion = documents().getChildFile("My Kits." + model->getExportFileStem());
  chooser = std::make_unique<juce::FileChooser>("Export User Programs", suggestion, wildcardOf(*model));
  constexpr int kMode = juce::FileBrowserComponent::saveMode | juce::FileBrowserComponent::canSelectFiles |
                        juce::FileBrowserComponent::warnAboutOverwriting;
  chooser->launchAsync(kMode, [model](const juce::FileChooser& done) {
    if (done.getResult() != juce::File()) {
      model->exportPrograms(done.getResult().getFullPathName().toStdString());
    }
  });
}

}  // namespace tesh::bramel
