// Sets the processor's trap flag, and counts in the signal that each trap raises.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/InstructionCounter.h"

#include "check/CallCounter.h"
#include "check/Check.h"

#if defined(__linux__) && defined(__x86_64__) && !SIVRAY_SANITIZED
#include <ucontext.h>

#include <csignal>

namespace sivray::check {
namespace {

/// What the handler works with. It runs on the counted thread alone.
struct Count {
  ModuleRange library;
  ModuleRange program;
  ModuleRange replacements;  ///< In `program`, but called in place of the system's functions.
  std::int64_t InstructionCounts::*owner = &InstructionCounts::program;
  std::uintptr_t latest = 0;
  InstructionCounts counts;
  struct sigaction before {};
};

Count count;

void countOne(int /*signal*/, siginfo_t* /*info*/, void* context) {
  const auto& registers = static_cast<const ucontext_t*>(context)->uc_mcontext.gregs;
  const auto address = static_cast<std::uintptr_t>(registers[REG_RIP]);
  if (address == count.latest) {
    return;  // An instruction that repeats itself traps each time.
  }
  count.latest = address;
  if (count.replacements.holds(address)) {
    return;
  }
  if (count.library.holds(address)) {
    count.owner = &InstructionCounts::library;
  } else if (count.program.holds(address)) {
    count.owner = &InstructionCounts::program;
  }
  ++(count.counts.*count.owner);
}

}  // namespace

InstructionCounter::InstructionCounter(InstructionCounts& ownCounts, const ModuleRange& library) : counts(ownCounts) {
  count = {};
  count.library = library;
  count.program = ModuleRange::of({});
  count.replacements = CallCounter::replacements();
  struct sigaction action {};
  action.sa_sigaction = &countOne;
  action.sa_flags = SA_SIGINFO;
  ::sigaction(SIGTRAP, &action, &count.before);
  // Past the 128 bytes below the stack that a function may use without saying so.
  asm volatile("lea -128(%%rsp), %%rsp; pushfq; orq $0x100, (%%rsp); popfq; lea 128(%%rsp), %%rsp" ::: "cc", "memory");
}

InstructionCounter::~InstructionCounter() {
  asm volatile("lea -128(%%rsp), %%rsp; pushfq; andq $~0x100, (%%rsp); popfq; lea 128(%%rsp), %%rsp" ::
                   : "cc", "memory");
  ::sigaction(SIGTRAP, &count.before, nullptr);
  counts.library += count.counts.library;
  counts.program += count.counts.program;
}

bool InstructionCounter::works() { return true; }

}  // namespace sivray::check

#else

namespace sivray::check {

InstructionCounter::InstructionCounter(InstructionCounts& ownCounts, const ModuleRange& /*library*/)
    : counts(ownCounts) {}
InstructionCounter::~InstructionCounter() = default;

bool InstructionCounter::works() { return false; }

}  // namespace sivray::check

#endif
