// Chooses the writes that leave the mail when too many wait.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/shell/WaitingWrites.h"

#include <algorithm>
#include <memory>

namespace tesh::bramel::vst {
namespace {

/// Mail nodes allocated at the start. The pool grows when it is empty, up to the nodes for kMost writes.
constexpr std::size_t kMailNodes = 256;

}  // namespace

WaitingWrites::WaitingWrites()
    : mail(std::make_shared<cofu::core::impl::MailServer<vimo::ProcessorEvent>>(kMailNodes)) {}

void WaitingWrites::resize(std::size_t count) {
  slots.resize(count);
  heldIds.reserve(count);
}

void WaitingWrites::post(const vimo::ProcessorEvent& event, const MainLock& /*lock*/) {
  if (event.parameterId >= slots.size()) {
    return;
  }
  Slot& slot = slots[static_cast<std::size_t>(event.parameterId)];
  ++slot.inMail;
  if (slot.isHeld) {
    slot.isHeld = false;
    --heldCount;
  }
  while (mailCount > 0 && heldCount + mailCount >= kMost) {
    holdOldest();
  }
  mail.post(event);
  ++mailCount;
}

void WaitingWrites::holdOldest() {
  const auto oldest = mail.receive();
  --mailCount;
  Slot& slot = slots[static_cast<std::size_t>(oldest->parameterId)];
  --slot.inMail;
  if (slot.inMail == 0) {
    slot.event = *oldest;
    slot.order = nextOrder++;
    slot.isHeld = true;
    ++heldCount;
  }
}

const std::vector<std::size_t>& WaitingWrites::sortHeld() {
  heldIds.clear();
  for (std::size_t id = 0; id < slots.size(); ++id) {
    if (slots[id].isHeld) {
      cofu::core::vouchFor([this, id] { heldIds.push_back(id); });  // There is room for every parameter.
    }
  }
  std::sort(heldIds.begin(), heldIds.end(),
            [this](std::size_t a, std::size_t b) { return slots[a].order < slots[b].order; });
  return heldIds;
}

}  // namespace tesh::bramel::vst
