// Shared by all classes of the shell: the processor, the lock around it, and the callbacks to host and editor.
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

  /// Calls `action` on the editor's or the host's callback, or does nothing if that no longer exists. The host's
  /// callback is set before anything is reported.
  template <typename Action>
  void tellEditor(const MainLock& /*lock*/, Action action) const {
    tell(uiCallback, action);
  }
  template <typename Action>
  void tellHost(Action action) const {
    tell(hostCallback, action);
  }

  /// Asserts that the caller may wait for a file: it must not hold the main lock, for which a block may be waiting.
  void assertMayWait() const { assert(!mainMutex.isHeldHere()); }

  /// Reads the data for a coming change from the disk, so that the block that applies it finds everything in memory.
  /// `collect(processor, coming, lock)` lists the values; reading happens without the main lock. Does nothing on an
  /// audio thread, which must not wait.
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

  /// Guards all members below, and the other classes of the shell. A block holds it from begin to end.
  mutable MainMutex mainMutex;
  const std::unique_ptr<BramelInstrument::Processor> processor;  ///< May be null.
  std::weak_ptr<BramelInstrumentHostCallback> hostCallback;
  std::weak_ptr<BramelInstrumentUICallback> uiCallback;
  AudioThreads audioThreads;

 private:
  template <typename Callback, typename Action>
  static void tell(const std::weak_ptr<Callback>& held, Action& action) {
    // Also called on the audio thread. The owner of the callback keeps it while blocks may run, so releasing our share
    // frees nothing.
    cofu::core::vouchFor([&] {
      if (const auto callback = held.lock()) {
        action(*callback);
      }
    });
  }
};

}  // namespace tesh::bramel::vst
