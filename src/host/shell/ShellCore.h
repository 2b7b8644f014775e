// What the parts of the shell share: the processor, the lock around it, and the ways to host and editor.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cassert>
#include <memory>
#include <utility>

#include "core/RealTime.h"
#include "host/shell/AudioThreads.h"
#include "host/shell/BramelInstrument.h"
#include "host/shell/MainLock.h"

namespace tesh::bramel::vst {

struct ShellCore {
  ShellCore(const BramelInstrument& instrument, std::unique_ptr<BramelInstrument::Processor> engine)
      : owner(instrument), processor(std::move(engine)) {}

  /// Calls `action` on the editor's or the host's side, or does nothing if that side is gone. The host's side is set
  /// before there is anything to tell.
  template <typename Action>
  void tellEditor(const MainLock& /*lock*/, Action action) const {
    tell(uiCallback, action);
  }
  template <typename Action>
  void tellHost(Action action) const {
    tell(hostCallback, action);
  }

  /// Files are read and written from here on: no block may be waiting for the caller.
  void assertMayWait() const { assert(!mainMutex.isHeldHere()); }

  /// Reads from the disk what a change that is about to come needs, so that the block which takes it finds everything
  /// in memory. `collect(processor, coming, lock)` tells what that is; the reading is done without the main lock. Does
  /// nothing on the audio thread, which must not wait.
  template <typename Collect>
  void readAhead(Collect collect) const {
    if (!processor || audioThreads.include()) {
      return;
    }
    assertMayWait();
    vimo::ComingValues coming;
    {
      const MainLock lock(mainMutex);
      collect(*processor, coming, lock);
    }
    for (const vimo::ComingValue& next : coming) {
      processor->generator().prepare(next.id, next.value);
    }
  }

  const BramelInstrument& owner;

  /// Guards everything below, and the parts of the shell. A block holds it from begin to end.
  mutable MainMutex mainMutex;
  const std::unique_ptr<BramelInstrument::Processor> processor;  ///< May be null.
  std::weak_ptr<BramelInstrumentHostCallback> hostCallback;
  std::weak_ptr<BramelInstrumentUICallback> uiCallback;
  AudioThreads audioThreads;

 private:
  template <typename Callback, typename Action>
  static void tell(const std::weak_ptr<Callback>& held, Action& action) {
    // On the audio thread too. The side that made the callback holds it as long as a block may run, so that giving back
    // our own hold frees nothing.
    cofu::core::vouchFor([&] {
      if (const auto callback = held.lock()) {
        action(*callback);
      }
    });
  }
};

}  // namespace tesh::bramel::vst
