// The parameter writes that wait for the next block. Their number is bounded.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/MailServer.h"
#include "core/RealTime.h"
#include "host/shell/MainLock.h"
#include "host/shell/ProcessorEvent.h"

namespace tesh::bramel::vst {

/// Keeps writes in order. Once kMost wait, the oldest leaves the mail: it is dropped if a later write to the same
/// parameter waits, else held beside the mail, so that the latest value of each parameter is kept. One call at a time:
/// writes are posted under the shell's main lock, and a block, which holds it, takes them. Audio thread safe while the
/// mail's pool has free nodes.
class WaitingWrites {
 public:
  /// As many as the processor's command queue holds.
  static constexpr std::size_t kMost = 511;

  WaitingWrites();

  /// Makes room for parameters 0 to count - 1.
  void resize(std::size_t count);

  /// Ignores ids of no parameter.
  void post(const vimo::ProcessorEvent& event, const MainLock& lock) SIVRAY_NONBLOCKING;

  bool isEmpty() const { return heldCount + mailCount == 0; }

  /// Calls `take(event)` for every write, oldest first, and empties the list.
  template <typename Take>
  void takeAll(Take take) SIVRAY_NONBLOCKING {
    if (heldCount > 0) {
      for (const std::size_t id : sortHeld()) {
        slots[id].isHeld = false;
        take(slots[id].event);
      }
      heldCount = 0;
    }
    while (const auto event = mail.receive()) {
      slots[static_cast<std::size_t>(event->parameterId)].inMail = 0;
      take(*event);
    }
    mailCount = 0;
  }

 private:
  /// Of one parameter: the number of its writes in the mail, or the latest one that was taken out to make room.
  struct Slot {
    vimo::ProcessorEvent event;
    std::uint64_t order = 0;  ///< Position among the events that are held.
    std::uint32_t inMail = 0;
    bool isHeld = false;
  };

  void holdOldest() SIVRAY_NONBLOCKING;
  const std::vector<std::size_t>& sortHeld() SIVRAY_NONBLOCKING;

  cofu::core::impl::Mailbox<vimo::ProcessorEvent> mail;
  std::vector<Slot> slots;
  std::vector<std::size_t> heldIds;  ///< Filled by sortHeld.
  std::size_t heldCount = 0;
  std::size_t mailCount = 0;
  std::uint64_t nextOrder = 0;
};

}  // namespace tesh::bramel::vst
