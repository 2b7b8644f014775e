// The instrument's reports on their way to the view model of an open editor.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>

#include "core/RealTime.h"
#include "host/editor/JobStore.h"
#include "host/message/MessageThread.h"

namespace tesh::bramel::vst {

/// The message thread holds it weakly: reports that are still undelivered go with the editor.
class Delivery final : public WakeUpListener {
 public:
  explicit Delivery(std::uint64_t parameterCount) : jobs(parameterCount) {}

  // One thread at a time.

  /// Calls `put` with the job store, if an editor is open.
  template <typename Put>
  void enqueue(Put put) {
    if (isOpen) {
      put(jobs);
      releaseJobs();
    }
  }
  void holdUpdates() SIVRAY_NONBLOCKING { areUpdatesReleased = false; }
  void releaseUpdates() SIVRAY_NONBLOCKING {
    areUpdatesReleased = true;
    releaseJobs();
  }

  // Message thread.

  /// `thread` outlives this object.
  void open(std::shared_ptr<IPluginEditViewModelOwner> newViewModel, MessageThread& thread);
  /// First delivers all reports, also those of a block that has not ended.
  void close();
  bool isViewModelOpen() const { return viewModel != nullptr; }
  void wokenUp() override { deliver(JobStore::Extent::released); }

 private:
  void releaseJobs() SIVRAY_NONBLOCKING {
    if (areUpdatesReleased && jobs.release()) {
      messageThread.load()->wakeUp();
    }
  }
  void deliver(JobStore::Extent extent);

  JobStore jobs;
  std::atomic<bool> isOpen = false;
  std::atomic<bool> areUpdatesReleased = true;
  std::atomic<MessageThread*> messageThread = nullptr;   ///< Not null once a job has been put.
  std::shared_ptr<IPluginEditViewModelOwner> viewModel;  ///< Null while closed.
};

}  // namespace tesh::bramel::vst
