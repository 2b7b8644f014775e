// The members of the shell. Only the shell's own sources include this header.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "host/shell/BramelInstrument.h"
#include "host/shell/KeyStates.h"
#include "host/shell/ShellBlock.h"
#include "host/shell/ShellCore.h"
#include "host/shell/ShellParameters.h"
#include "host/shell/ShellPrograms.h"

namespace tesh::bramel::vst {

/// Order of locks: program files, main lock, parameter cache. The key states' lock is independent of them.
class BramelInstrument::Impl {
 public:
  Impl(const BramelInstrument& instrument, std::unique_ptr<Processor> engine)
      : core(instrument, std::move(engine)),
        parameters(core),
        block(core, parameters),
        programs(core, parameters, block) {}

  /// Applies the writes that wait, so that the next read returns the value that was written last.
  void flushWrites() {
    const MainLock lock(core.mainMutex);
    block.flushWrites(lock);
  }

  void reportKey(int note) const {
    core.tellHost([note](BramelInstrumentHostCallback& host) { host.keyStateChanged(note); });
  }

  std::map<std::string, Property>& properties(const MainLock& /*lock*/) { return ownProperties; }

  ShellCore core;
  ShellParameters parameters;
  ShellBlock block;
  ShellPrograms programs;
  KeyStates keys;
  int hostKind = 0;
  std::string hostVendor;

 private:
  std::map<std::string, Property> ownProperties;
};

}  // namespace tesh::bramel::vst
