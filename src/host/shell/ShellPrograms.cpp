// Implements the operations on programs: what they change, whom they notify in which order, and when files are written.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/shell/ShellPrograms.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <numeric>

#include "host/shell/ProgramBanks.h"
#include "platform/FolderLock.h"
#include "storage/paths/Paths.h"
#include "storage/programs/ForeignChanges.h"
#include "storage/programs/ProgramFileCopies.h"
#include "storage/programs/UserProgramFile.h"
#include "storage/state/EditBufferRecord.h"

namespace tesh::bramel::vst {
namespace {

/// Only one instance of this process at a time may read the user's program file and write it back, even where the
/// folder cannot be locked.
std::mutex& oneInstanceMutex() {
  static std::mutex mutex;
  return mutex;
}

}  // namespace

using vimo::Bank;

ShellPrograms::ShellPrograms(ShellCore& shellCore, ShellParameters& shellParameters, ShellBlock& shellBlock)
    : core(shellCore), parameters(shellParameters), block(shellBlock) {
  if (core.processor) {
    inFile = vimo::printsOf(*controller().programs().database(Bank::user));
  }
}

void ShellPrograms::postProgramChange(const vimo::ProgramSelection& program, const MainLock& /*lock*/) {
  core.processor->programQueue.put(vimo::MidiEvent::programChange(1, static_cast<std::uint8_t>(program.bank),
                                                                  static_cast<std::uint32_t>(program.program)));
}

/// Applies a waiting selection before programs change places, because it refers to the present order.
void ShellPrograms::takeWaitingSelection(const MainLock& lock) {
  if (!core.processor->programQueue.isEmpty()) {
    block.flush(lock);
  }
}

/// Runs `change(shelf, lock)`. If that returns true, merges the changes of other instances to the user's programs,
/// writes their file, and runs `report(editor, gone)`, again with the lock. `gone` is the number of user programs that
/// other instances deleted; they all came before the new ones.
template <typename Change, typename Report>
void ShellPrograms::changeBanks(Effect effect, Change change, Report report) {
  if (core.processor) {
    const FileLock fileLock(fileMutex);
    changeBanks(effect, change, report, fileLock);
  }
}

template <typename Change, typename Report>
void ShellPrograms::changeBanks(Effect effect, Change change, Report report, const FileLock& fileLock) {
  const std::lock_guard oneInstance(oneInstanceMutex());
  core.assertMayWait();
  vimo::ProgramShelf& shelf = controller().programs();
  const std::string path = pathFor(kBramelPath_UserProgram, core.processor->instrumentName());
  const platform::FolderLock oneProcess(directoryFor(kBramelDirectory_UserPrograms));
  const auto bytes = readFile(path);
  const auto file = vimo::readUserProgramFile(bytes);
  const auto ofOthers = vimo::readProgramsOfOthers(file, shelf);
  // A file that cannot be read, or that holds macros of a later version, may still be worth something: keep a copy.
  const bool isAllOurs = ofOthers && file->macroCount <= controller().macroCount();
  const Effect onFile = isAllOurs ? effect : Effect::takesAway;
  {
    const MainLock lock(core.mainMutex);
    if (!change(shelf, lock)) {
      return;
    }
    shelf.fit(Bank::user);
  }
  const ForeignPrograms foreign = ofOthers ? takeOver(*ofOthers, fileLock) : ForeignPrograms{};
  writeUserPrograms(path, onFile, fileLock);
  const MainLock lock(core.mainMutex);
  core.tellEditor(lock, [&](BramelInstrumentUICallback& editor) {
    if (!foreign.gone.empty()) {
      editor.programDeleted(nameOf(Bank::user), foreign.gone.data(), foreign.gone.size());
    }
    if (!foreign.added.empty()) {
      editor.programSaved(nameOf(Bank::user), foreign.added.data(), foreign.added.size());
    }
    report(editor, foreign.gone.size());
  });
}

/// Merges another instance's changes. Its new programs are placed after ours.
ShellPrograms::ForeignPrograms ShellPrograms::takeOver(vimo::ProgramDatabase& ofOthers, const FileLock& /*fileLock*/) {
  vimo::ProgramShelf& shelf = controller().programs();
  const std::vector<bool> isGone = vimo::findGone(inFile, *shelf.database(Bank::user), ofOthers);
  ForeignPrograms foreign;
  for (std::size_t program = 0; program < isGone.size(); ++program) {
    if (isGone[program]) {
      foreign.gone.push_back(program);
    }
  }
  vimo::keepNew(inFile, ofOthers);
  const MainLock lock(core.mainMutex);
  if (!foreign.gone.empty()) {
    takeWaitingSelection(lock);
    shelf.dropPrograms(Bank::user, isGone);
  }
  foreign.added.resize(ofOthers.programCount());
  std::iota(foreign.added.begin(), foreign.added.end(), shelf.programCount(Bank::user));
  shelf.append(Bank::user, ofOthers);
  return foreign;
}

void ShellPrograms::writeUserPrograms(const std::string& path, Effect effect, const FileLock& fileLock) {
  const bool isSafe = effect == Effect::adds || vimo::keepProgramFileCopy(path, vimo::copyTimeNow());
  const vimo::ProgramDatabase& programs = *controller().programs().database(Bank::user);
  const auto file = vimo::makeUserProgramFile(programs);
  // The last attempt writes the file even without a copy, because the user asked for the change.
  isFileWritten = (isSafe || retry(fileLock).isLast) && writeFile(path, file.data(), file.size());
  if (isFileWritten) {
    inFile = vimo::printsOf(programs);
  } else {
    writeAgainSoon(effect, fileLock);
  }
}

/// Virus scanners hold a new file open for a moment, and the panel's thread must not wait for them.
void ShellPrograms::writeAgainSoon(Effect effect, const FileLock& fileLock) {
  Retry& next = retry(fileLock);
  next.effect = next.isRunning ? std::max(next.effect, effect) : effect;
  if (!next.isRunning) {
    next.isRunning = true;
    // A writer that has just ended needs no lock.
    writer = std::jthread([this](const std::stop_token& stop) { writeAgain(stop); });
  }
}

/// On the writer's thread: tries for about 2.5 seconds. If the instrument is closed meanwhile, the next try follows at
/// once and is the last.
void ShellPrograms::writeAgain(const std::stop_token& stop) {
  constexpr int kTries = 7;
  std::chrono::milliseconds pause{20};
  std::mutex mutex;
  std::condition_variable_any onlyStops;
  for (int tries = 1;; ++tries, pause *= 2) {
    {
      std::unique_lock lock(mutex);
      onlyStops.wait_for(lock, stop, pause, [] { return false; });
    }
    const FileLock fileLock(fileMutex);
    Retry& now = retry(fileLock);
    now.isLast = tries == kTries || stop.stop_requested();
    if (!isFileWritten) {
      changeBanks(
          now.effect, [](vimo::ProgramShelf&, const MainLock&) { return true; },
          [](BramelInstrumentUICallback&, std::size_t) {}, fileLock);
    }
    if (isFileWritten || now.isLast) {
      now = {};
      return;
    }
  }
}

std::uint64_t ShellPrograms::currentProgram() {
  const MainLock lock(core.mainMutex);
  if (!core.processor) {
    return 0;
  }
  block.flush(lock);
  parameters.cache.refreshTexts(controller());
  return controller().programs().selection().program;
}

Bank ShellPrograms::currentBank() const {
  const MainLock lock(core.mainMutex);
  return core.processor ? controller().programs().selection().bank : Bank::factory;
}

std::string ShellPrograms::currentProgramName() {
  const MainLock lock(core.mainMutex);
  if (!core.processor) {
    return {};
  }
  block.flush(lock);
  return controller().programName();
}

std::uint64_t ShellPrograms::programCount(Bank bank) const {
  const MainLock lock(core.mainMutex);
  return core.processor ? controller().programs().programCount(bank) : 0;
}

std::string ShellPrograms::programName(Bank bank, std::uint64_t index) const {
  const MainLock lock(core.mainMutex);
  return core.processor ? controller().programs().database(bank)->name(index) : std::string();
}

void ShellPrograms::setProgram(Bank bank, std::uint64_t index, Origin origin) {
  core.readAhead([&](const BramelInstrument::Processor& processor, vimo::ComingValues& coming, const MainLock&) {
    processor.controller().addReadsOfProgram(index, bank, coming);
  });
  MainLock lock(core.mainMutex);
  if (!core.processor) {
    return;
  }
  postProgramChange({index, bank}, lock);
  block.flush(lock);
  parameters.cache.refresh(controller());
  core.tellEditor(lock, [](BramelInstrumentUICallback& editor) { editor.programChanged(); });
  lock.unlock();  // The host is told of every parameter, which may take long.
  core.tellHost([origin](BramelInstrumentHostCallback& host) {
    host.programChanged(origin);
    host.parametersChanged();
  });
}

void ShellPrograms::saveAs(Bank bank, const std::string& name) {
  if (bank == Bank::ghost) {
    return;
  }
  std::uint64_t saved = 0;
  changeBanks(
      Effect::adds,
      [&](vimo::ProgramShelf& shelf, const MainLock& lock) {
        block.flushWrites(lock);
        controller().setProgramName(name);
        shelf.storeCurrent(bank);
        saved = shelf.programCount(bank) - 1;
        postProgramChange({saved, bank}, lock);
        return true;
      },
      [&](BramelInstrumentUICallback& editor, std::size_t gone) {
        const std::array<std::uint64_t, 2> programAndBank{saved - (bank == Bank::user ? gone : 0), numberOf(bank)};
        editor.programChanged();
        editor.programSaved(nameOf(bank), programAndBank.data(), 1);
      });
}

void ShellPrograms::overwrite() {
  changeBanks(
      Effect::takesAway,
      [&](vimo::ProgramShelf& shelf, const MainLock& lock) {
        block.flushWrites(lock);
        const vimo::ProgramSelection selected = shelf.selection();
        shelf.overwrite(selected.program, selected.bank);
        postProgramChange(selected, lock);
        return true;
      },
      [](BramelInstrumentUICallback&, std::size_t) {});
}

void ShellPrograms::rename(const std::string& name) {
  const MainLock lock(core.mainMutex);
  if (core.processor) {
    controller().setProgramName(name);
  }
}

void ShellPrograms::remove(Bank bank, std::uint64_t index) {
  changeBanks(
      Effect::takesAway,
      [&](vimo::ProgramShelf& shelf, const MainLock& lock) {
        takeWaitingSelection(lock);
        const bool exists = index < shelf.programCount(bank);
        shelf.deleteProgram(index, bank);
        return exists;
      },
      [&](BramelInstrumentUICallback& editor, std::size_t) { editor.programDeleted(nameOf(bank), &index, 1); });
}

void ShellPrograms::move(Bank bank, std::uint64_t from, std::uint64_t to) {
  changeBanks(
      Effect::adds,
      [&](vimo::ProgramShelf& shelf, const MainLock& lock) {
        takeWaitingSelection(lock);
        const std::uint64_t count = shelf.programCount(bank);
        shelf.moveProgram(bank, from, to);
        return from < count && to < count && from != to;
      },
      [&](BramelInstrumentUICallback& editor, std::size_t) { editor.programMoved(nameOf(bank), from, to); });
}

/// Releases the main lock after each step for long enough that a waiting block can take it.
void ShellPrograms::fitBanks(std::uint64_t imageMacroCount, const FileLock& /*fileLock*/) {
  constexpr std::chrono::milliseconds kPause{1};
  for (std::size_t record = 0;; record += vimo::ProgramShelf::kFitStep) {
    {
      const MainLock lock(core.mainMutex);
      if (!controller().programs().fitSome(record, imageMacroCount)) {
        return;
      }
    }
    std::this_thread::sleep_for(kPause);
  }
}

void ShellPrograms::importFrom(const std::string& path) {
  if (!core.processor) {
    return;
  }
  core.assertMayWait();
  const std::vector<std::uint8_t> file = readChosenFile(path);
  const auto image = vimo::readExportedPrograms(file, core.processor->instrumentName());
  std::vector<std::uint64_t> added;
  const auto incoming = image ? controller().programs().readImage(image->image, image->macroCount) : nullptr;
  const FileLock fileLock(fileMutex);
  if (incoming && incoming->programCount() != 0) {
    fitBanks(image->macroCount, fileLock);
  }
  changeBanks(
      Effect::takesAway,
      [&](vimo::ProgramShelf& shelf, const MainLock& /*lock*/) {
        const std::uint64_t before = shelf.programCount(Bank::user);
        if (incoming) {
          shelf.append(Bank::user, *incoming);
        }
        added.resize(static_cast<std::size_t>(shelf.programCount(Bank::user) - before));
        std::iota(added.begin(), added.end(), before);
        return true;
      },
      [&](BramelInstrumentUICallback& editor, std::size_t gone) {
        for (std::uint64_t& program : added) {
          program -= gone;
        }
        editor.programSaved(nameOf(Bank::user), added.data(), added.size());
      },
      fileLock);
}

bool ShellPrograms::exportTo(const std::string& path) {
  if (!core.processor) {
    return false;
  }
  const FileLock fileLock(fileMutex);
  {
    const MainLock lock(core.mainMutex);
    controller().programs().fit(Bank::user);
  }
  const auto file =
      vimo::makeExportedPrograms(*controller().programs().database(Bank::user), core.processor->instrumentName());
  return writeChosenFile(path, file.data(), file.size());
}

/// No bank changes while `fileMutex` is held, so blocks wait only while the values are copied.
std::vector<std::uint8_t> ShellPrograms::getState(const std::function<void(vimo::ChunkValues&)>& change) {
  if (!core.processor) {
    return {};
  }
  const FileLock fileLock(fileMutex);
  vimo::StateSnapshot snapshot;
  {
    const MainLock lock(core.mainMutex);
    block.flushWrites(lock);
    snapshot = core.processor->snapshotState();
  }
  change(snapshot.macros);
  EditBufferRecord record;
  core.processor->writeStateContent(snapshot, record.content);
  return packState(record);
}

bool ShellPrograms::setState(const void* data, std::size_t size) {
  if (data == nullptr) {
    return false;
  }
  const auto record = unpackState({static_cast<const std::uint8_t*>(data), size});
  if (!record || record->name != kEditBufferName || record->version != kEditBufferVersion) {
    return false;
  }
  core.readAhead([&](const BramelInstrument::Processor& processor, vimo::ComingValues& coming, const MainLock&) {
    processor.addReadsOfState(record->content, coming);
  });
  const MainLock lock(core.mainMutex);
  if (!core.processor) {
    return false;
  }
  BramelInstrument::Processor& processor = *core.processor;
  block.flush(lock);
  processor.generator().deactivate();
  const bool isRestored = processor.setStateContent(record->content);
  processor.generator().activate();
  block.flush(lock);
  parameters.cache.refresh(processor.controller());
  core.tellEditor(lock, [](BramelInstrumentUICallback& editor) { editor.programChanged(); });
  return isRestored;
}

}  // namespace tesh::bramel::vst
