// The programs of the shell: selection, the operations that change a bank, their files, and the state that a host
// keeps.
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

/// BramelInstrument describes the operations. Two locks: `fileMutex`, which lets one change of a bank after the other
/// reach the disk, and behind it the main lock, which no block waits for while a file is read or written.
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

  /// `change` may change what the state holds.
  std::vector<std::uint8_t> getState(const std::function<void(vimo::ChunkValues&)>& change);
  bool setState(const void* data, std::size_t size);

 private:
  using Controller = BramelInstrument::Processor::Controller;
  /// Proves that `fileMutex` is held: no list changes for anyone else, and a block only reads them.
  using FileLock = std::lock_guard<std::mutex>;

  Controller& controller() const { return core.processor->controller(); }
  void postProgramChange(const vimo::ProgramSelection& program, const MainLock& lock);
  void takeWaitingSelection(const MainLock& lock);
  /// What a change of a bank does to the user's program file.
  enum class Effect { adds, takesAway };
  /// User programs that another instance has deleted or replaced, by their numbers before that, and those that it has
  /// stored, by their numbers afterwards.
  struct ForeignPrograms {
    std::vector<std::uint64_t> gone;
    std::vector<std::uint64_t> added;
  };
  /// How the file is to be written by `writer`, while that runs.
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
  vimo::ProgramPrints inFile;              ///< What the user's program file held when it was last read or written.
  std::atomic<bool> isFileWritten = true;  ///< The user's file holds what the user's bank holds.
  Retry ownRetry;
  std::jthread writer;  ///< Ends first: it uses everything above.
};

}  // namespace tesh::bramel::vst
