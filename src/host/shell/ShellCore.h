// What the parts of the shell share: the processor, the lock around it, and the ways to host and editor.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <mutex>
#include <utility>

#include "core/RealTime.h"
#include "host/shell/BramelInstrument.h"

namespace tesh::bramel::vst {

struct ShellCore {
  ShellCore(const BramelInstrument& instrument, std::unique_ptr<BramelInstrument::Processor> engine)
      : owner(instrument), processor(std::move(engine)) {}

  /// Calls `action` on the editor's or the host's side, or does nothing if that side is gone. Without `mainMutex` only
  /// as long as nobody sets the callbacks.
  template <typename Action>
  void tellEditor(Action action) const {
    tell(uiCallback, action);
  }
  template <typename Action>
  void tellHost(Action action) const {
    tell(hostCallback, action);
  }

  const BramelInstrument& owner;

  /// Guards everything below, and the parts of the shell. A block holds it from begin to end.
  mutable std::recursive_mutex mainMutex;
  const std::unique_ptr<BramelInstrument::Processor> processor;  ///< May be null.
  std::weak_ptr<BramelInstrumentHostCallback> hostCallback;
  std::weak_ptr<BramelInstrumentUICallback> uiCallback;

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
