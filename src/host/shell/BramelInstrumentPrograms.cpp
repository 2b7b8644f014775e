// Programs, their files, and the state that a host keeps.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <numeric>
#include <span>

#include "host/shell/BramelInstrumentImpl.h"
#include "host/shell/ProgramBanks.h"
#include "storage/paths/Paths.h"
#include "storage/programs/UserProgramFile.h"
#include "storage/state/EditBufferRecord.h"

namespace tesh::bramel::vst {
namespace {

using vimo::Bank;

constexpr std::uint64_t placeOf(Bank database) { return static_cast<std::uint64_t>(database); }

void write(const std::string& path, const std::vector<std::uint8_t>& bytes) {
  writeFile(path, bytes.data(), bytes.size());
}

}  // namespace

void BramelInstrument::Impl::postProgramChange(std::uint64_t program, Bank database) {
  processor->programQueue.put(
      vimo::MidiEvent::programChange(1, static_cast<std::uint8_t>(database), static_cast<std::uint32_t>(program)));
}

void BramelInstrument::Impl::writeUserPrograms() {
  auto& controller = processor->controller();
  controller.databaseByteSize(placeOf(Bank::user));  // Brings its records to the present macro count.
  const std::string path = pathFor(kBramelPath_UserProgram, processor->instrumentName());
  write(path, vimo::makeUserProgramFile(*controller.database(placeOf(Bank::user))));
}

std::uint64_t BramelInstrument::currentProgram() {
  const std::lock_guard lock(impl->mainMutex);
  if (!impl->processor) {
    return 0;
  }
  impl->flush();
  impl->cache.refreshTexts(impl->processor->controller());
  return impl->processor->controller().selection().program;
}

std::uint64_t BramelInstrument::currentBank() const {
  const std::lock_guard lock(impl->mainMutex);
  return impl->processor ? bankOf(impl->processor->controller().selection().bank) : 0;
}

std::string BramelInstrument::currentProgramName() {
  const std::lock_guard lock(impl->mainMutex);
  if (!impl->processor) {
    return {};
  }
  impl->flush();
  return impl->processor->controller().programName();
}

std::uint64_t BramelInstrument::programCount(std::uint64_t bank) const {
  const std::lock_guard lock(impl->mainMutex);
  return impl->processor ? impl->processor->controller().programCount(placeOf(databaseOf(bank))) : 0;
}

std::string BramelInstrument::programName(std::uint64_t bank, std::uint64_t index) const {
  const std::lock_guard lock(impl->mainMutex);
  return impl->processor ? impl->processor->controller().database(placeOf(databaseOf(bank)))->name(index)
                         : std::string();
}

void BramelInstrument::setProgram(std::uint64_t bank, std::uint64_t index) {
  const std::lock_guard lock(impl->mainMutex);
  if (!impl->processor) {
    return;
  }
  impl->postProgramChange(index, databaseOf(bank));
  impl->flush();
  impl->cache.refresh(impl->processor->controller());
  impl->tellEditor([](BramelInstrumentUICallback& editor) { editor.programChanged(); });
  impl->tellHost([](BramelInstrumentHostCallback& host) { host.parametersChanged(); });
}

void BramelInstrument::saveProgramAs(std::uint64_t bank, const std::string& name) {
  const std::lock_guard lock(impl->mainMutex);
  const Bank database = databaseOf(bank);
  if (!impl->processor || database == Bank::ghost) {
    return;
  }
  impl->flushMail();
  auto& controller = impl->processor->controller();
  controller.setProgramName(name);
  controller.storeCurrent(placeOf(database));
  const std::array<std::uint64_t, 2> saved{controller.programCount(placeOf(database)) - 1, bank};
  impl->postProgramChange(saved[0], database);
  impl->writeUserPrograms();
  impl->tellEditor([&](BramelInstrumentUICallback& editor) {
    editor.programChanged();
    editor.programSaved(bankName(bank), saved.data(), 1);
  });
}

void BramelInstrument::overwriteProgram() {
  const std::lock_guard lock(impl->mainMutex);
  if (!impl->processor) {
    return;
  }
  impl->flushMail();
  auto& controller = impl->processor->controller();
  const vimo::ProgramSelection selection = controller.selection();
  controller.overwrite(selection.program, selection.bank);
  impl->postProgramChange(selection.program, static_cast<Bank>(selection.bank));
  impl->writeUserPrograms();
}

void BramelInstrument::renameCurrentProgram(const std::string& name) {
  const std::lock_guard lock(impl->mainMutex);
  if (impl->processor) {
    impl->processor->controller().setProgramName(name);
  }
}

void BramelInstrument::deleteProgram(std::uint64_t bank, std::uint64_t index) {
  const std::lock_guard lock(impl->mainMutex);
  if (index >= programCount(bank)) {
    return;
  }
  impl->processor->controller().deleteProgram(index, placeOf(databaseOf(bank)));
  impl->writeUserPrograms();
  impl->tellEditor([&](BramelInstrumentUICallback& editor) { editor.programDeleted(bankName(bank), &index, 1); });
}

void BramelInstrument::moveProgram(std::uint64_t bank, std::uint64_t from, std::uint64_t to) {
  const std::lock_guard lock(impl->mainMutex);
  const std::uint64_t count = programCount(bank);
  if (from >= count || to >= count || from == to) {
    return;
  }
  impl->processor->controller().moveProgram(placeOf(databaseOf(bank)), from, to);
  impl->writeUserPrograms();
  impl->tellEditor([&](BramelInstrumentUICallback& editor) { editor.programMoved(bankName(bank), from, to); });
}

void BramelInstrument::importPrograms(const std::string& path) {
  const std::lock_guard lock(impl->mainMutex);
  if (!impl->processor) {
    return;
  }
  auto& controller = impl->processor->controller();
  const std::uint64_t before = controller.programCount(placeOf(Bank::user));
  const std::vector<std::uint8_t> file = readFile(path);
  const auto programs = vimo::readExportedPrograms(file, impl->processor->instrumentName());
  if (programs) {
    controller.loadDatabase(placeOf(Bank::user), programs->image, programs->macroCount,
                            vimo::ProgramDatabase::Mode::append);
  }
  impl->writeUserPrograms();
  std::vector<std::uint64_t> added(static_cast<std::size_t>(controller.programCount(placeOf(Bank::user)) - before));
  std::iota(added.begin(), added.end(), before);
  impl->tellEditor([&](BramelInstrumentUICallback& editor) {
    editor.programSaved(bankName(kUserBank), added.data(), added.size());
  });
}

void BramelInstrument::exportPrograms(const std::string& path) {
  const std::lock_guard lock(impl->mainMutex);
  if (!impl->processor) {
    return;
  }
  auto& controller = impl->processor->controller();
  controller.databaseByteSize(placeOf(Bank::user));  // As when the user's file is written.
  write(path, vimo::makeExportedPrograms(*controller.database(placeOf(Bank::user)), impl->processor->instrumentName()));
}

std::vector<std::uint8_t> BramelInstrument::getState() {
  const std::lock_guard lock(impl->mainMutex);
  if (!impl->processor) {
    return {};
  }
  impl->flushMail();
  const auto content = impl->processor->getStateContent();
  EditBufferRecord record;
  record.content.assign(content.begin(), content.end());
  return packState(record);
}

void BramelInstrument::setState(const void* data, std::size_t size) {
  if (data == nullptr) {
    return;
  }
  const auto record = unpackState({static_cast<const std::uint8_t*>(data), size});
  if (!record || record->name != kEditBufferName || record->version != kEditBufferVersion) {
    return;
  }
  const std::lock_guard lock(impl->mainMutex);
  if (!impl->processor) {
    return;
  }
  Processor& processor = *impl->processor;
  impl->flush();
  processor.generator().deactivate();
  processor.setStateContent(record->content);
  processor.generator().activate();
  impl->flush();
  impl->cache.refresh(processor.controller());
  impl->tellEditor([](BramelInstrumentUICallback& editor) { editor.programChanged(); });
}

}  // namespace tesh::bramel::vst
