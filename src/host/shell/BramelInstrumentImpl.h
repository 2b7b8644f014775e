// What the shell is made of. Only its own sources see it.
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

/// Locks in their order: that of the program files, the main lock, that of the parameters' cache. The key states' lock
/// stands alone.
class BramelInstrument::Impl {
 public:
  Impl(const BramelInstrument& instrument, std::unique_ptr<Processor> engine)
      : core(instrument, std::move(engine)),
        parameters(core),
        block(core, parameters),
        programs(core, parameters, block) {}

  /// Writes that wait are applied, so that what is read next is what was written last.
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
