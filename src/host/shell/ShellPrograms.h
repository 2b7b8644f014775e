// The shell's programs: selection, changes of a bank, program files, and the state for the host.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

#include "host/shell/ShellBlock.h"
#include "host/shell/ShellCore.h"
#include "host/shell/ShellParameters.h"
#include "storage/programs/ForeignChanges.h"
#include "storage/programs/ProgramShelf.h"

namespace tesh::bramel::vst {

/// The operations are described in BramelInstrument. There are two locks: `fileMutex` orders the changes of banks and
/// their writing to disk; the main lock, taken after it, is never held while a file is read or written.
class ShellPrograms {
 public:
  ShellPrograms(ShellCore& shellCore, ShellParameters& shellParameters, ShellBlock& shellBlock);

  std::uint64_t currentProgram();
  vimo::Bank currentBank() const;
  std::string currentProgramName();
  std::uint64_t programCount(vimo::Bank bank) const;
  std::string programName(vimo::Bank bank, std::uint64_t index) const;
  void setProgram(vimo::Bank bank, std::uint64_t index, Origin origin);

  void saveAs(vimo::Bank bank, const std::string& name);
  void overwrite();
  void rename(const std::string& name);
  void remove(vimo::Bank bank, std::uint64_t index);
  void move(vimo::Bank bank, std::uint64_t from, std::uint64_t to);
  void importFrom(const std::string& path);
  bool exportTo(const std::string& path);
  bool areWritten() const { return isFileWritten; }

  /// `change` may modify the values before they are packed.
  std::vector<std::uint8_t> getState(const std::function<void(vimo::ChunkValues&)>& change);
  bool setState(const void* data, std::size_t size);

 private:
  using Controller = BramelInstrument::Processor::Controller;
  /// Proves that `fileMutex` is held: nobody else changes a list meanwhile, and blocks only read them.
  using FileLock = std::lock_guard<std::mutex>;

  Controller& controller() const { return core.processor->controller(); }
  void postProgramChange(const vimo::ProgramSelection& program, const MainLock& lock);
  void takeWaitingSelection(const MainLock& lock);
  /// The effect of a bank's change on the user's program file.
  enum class Effect { adds, takesAway };
  /// User programs that another instance has deleted or replaced, by their previous numbers, and those that it has
  /// stored, by their new numbers.
  struct ForeignPrograms {
    std::vector<std::uint64_t> gone;
    std::vector<std::uint64_t> added;
  };
  /// What `writer` still has to write, while it runs.
  struct Retry {
    Effect effect = Effect::adds;
    bool isRunning = false;
    bool isLast = false;
  };
  Retry& retry(const FileLock& /*fileLock*/) { return ownRetry; }
  template <typename Change, typename Report>
  void changeBanks(Effect effect, Change change, Report report);
  template <typename Change, typename Report>
  void changeBanks(Effect effect, Change change, Report report, const FileLock& fileLock);
  ForeignPrograms takeOver(vimo::ProgramDatabase& ofOthers, const FileLock& fileLock);
  void writeUserPrograms(const std::string& path, Effect effect, const FileLock& fileLock);
  void writeAgainSoon(Effect effect, const FileLock& fileLock);
  void writeAgain(const std::stop_token& stop);
  void fitBanks(std::uint64_t imageMacroCount, const FileLock& fileLock);

  ShellCore& core;
  ShellParameters& parameters;
  ShellBlock& block;
  std::mutex fileMutex;
  vimo::ProgramPrints inFile;              ///< Contents of the user's program file when it was last read or written.
  std::atomic<bool> isFileWritten = true;  ///< The user's file holds what the user's bank holds.
  Retry ownRetry;
  std::jthread writer;  ///< Destroyed first: it uses everything above.
};

}  // namespace tesh::bramel::vst
