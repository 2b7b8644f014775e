// Runs the stored jobs on the message thread and hands them to the view model.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/editor/Delivery.h"

#include <utility>

namespace tesh::bramel::vst {

void Delivery::open(std::shared_ptr<IPluginEditViewModelOwner> newViewModel, MessageThread& thread) {
  jobs.clear();  // Reports may have been posted while the last view was being closed.
  viewModel = std::move(newViewModel);
  messageThread = &thread;
  isOpen = viewModel != nullptr;
}

void Delivery::close() {
  isOpen = false;
  deliver(JobStore::Extent::all);
  viewModel.reset();
}

void Delivery::deliver(JobStore::Extent extent) {
  // A job may close the editor.
  while (viewModel != nullptr) {
    const auto job = jobs.take(extent);
    if (!job) {
      return;
    }
    const auto held = viewModel;
    job->run(*held);
  }
}

}  // namespace tesh::bramel::vst
