// Captures, applies and swaps programs, and reads both chunk formats.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/ProgramBank.h"

#include <algorithm>
#include <cstring>
#include <mutex>
#include <utility>

namespace tesh::bramel::plugin::sivray {
namespace {

constexpr std::size_t kHeaderSize = offsetof(ProgramBankHead, editBuffer);
constexpr std::size_t kOlderRecordSize = offsetof(ProgramBankRecord, master);
static_assert(kHeaderSize + (kPrograms + 1) * kOlderRecordSize == kOlderChunkSize);

bool isProgram(int index) { return index >= 0 && index < static_cast<int>(kPrograms); }

std::string textOf(const std::array<char, 32>& name) {
  return {name.begin(), std::find(name.begin(), name.end() - 1, '\0')};
}

ProgramBankRecord readOlderRecord(const std::uint8_t* bytes) {
  ProgramBankRecord record;
  std::memcpy(static_cast<void*>(&record), bytes, kOlderRecordSize);
  record.version = 1;
  return record;
}

/// The records of all programs in `bytes`: one shared copy per content, freed with its last holder.
std::shared_ptr<const ProgramBankRecords> sharedPrograms(const void* bytes) {
  static std::mutex mutex;
  static std::vector<std::weak_ptr<const ProgramBankRecords>> known;
  const std::lock_guard lock(mutex);
  std::erase_if(known, [](const auto& copy) { return copy.expired(); });
  for (const auto& copy : known) {
    auto held = copy.lock();
    if (held && std::memcmp(held.get(), bytes, sizeof(ProgramBankRecords)) == 0) {
      return held;
    }
  }
  auto made = std::make_shared<ProgramBankRecords>();
  std::memcpy(static_cast<void*>(made.get()), bytes, sizeof(ProgramBankRecords));
  known.push_back(made);
  return made;
}

void setWord(IParameter& group, int index, std::uint32_t word) {
  auto value = static_cast<std::int32_t>(word);
  group.setValue(index, &value);
}

}  // namespace

ProgramBank::ProgramBank(const ProgramBankGroups& parameterGroups) : groups(parameterGroups) {
  capture(head.editBuffer);
  alike = head.editBuffer;
}

/// `index` must be 0 to 127.
const ProgramBankRecord& ProgramBank::programAt(int index) const {
  return programs == nullptr ? alike : (*programs)[static_cast<std::size_t>(index)];
}

const ProgramBankRecords& ProgramBank::allPrograms() {
  if (programs == nullptr) {
    const auto all = std::make_unique<ProgramBankRecords>();
    all->fill(alike);
    programs = sharedPrograms(all.get());
  }
  return *programs;
}

/// Makes a private copy of the programs for changing. Needed even if this bank is the only holder, because another bank
/// may find the shared copy in sharedPrograms at any time.
ProgramBankRecords& ProgramBank::ownPrograms() {
  const auto own = std::make_shared<ProgramBankRecords>(allPrograms());
  programs = own;
  return *own;
}

void ProgramBank::capture(ProgramBankRecord& record) const {
  for (std::size_t i = 0; i < record.effect.size(); ++i) {
    record.effect[i] = static_cast<std::uint32_t>(groups.effect->value(static_cast<int>(i)));
  }
  for (std::size_t pad = 0; pad < record.pads.size(); ++pad) {
    const IParameter* const group = groups.pads[pad];
    for (std::size_t i = 0; i < record.pads[pad].size(); ++i) {
      record.pads[pad][i] = group == nullptr ? 0U : static_cast<std::uint32_t>(group->value(static_cast<int>(i)));
    }
  }
  record.master = static_cast<std::uint32_t>(groups.master->value(0));
}

void ProgramBank::apply(const ProgramBankRecord& record) {
  for (std::size_t i = 0; i < record.effect.size(); ++i) {
    setWord(*groups.effect, static_cast<int>(i), record.effect[i]);
  }
  for (std::size_t pad = 0; pad < record.pads.size(); ++pad) {
    for (std::size_t i = 0; groups.pads[pad] != nullptr && i < record.pads[pad].size(); ++i) {
      setWord(*groups.pads[pad], static_cast<int>(i), record.pads[pad][i]);
    }
  }
  setWord(*groups.master, 0, record.master);
}

std::span<const std::uint8_t> ProgramBank::getChunk() {
  const vimo::EngineSnapshot taken = snapshot();
  exported = taken.changing;
  exported.insert(exported.end(), taken.constant.begin(), taken.constant.end());
  return exported;
}

vimo::EngineSnapshot ProgramBank::snapshot() {
  capture(head.editBuffer);
  const auto* const first = reinterpret_cast<const std::uint8_t*>(&head);
  const auto* const rest = reinterpret_cast<const std::uint8_t*>(&allPrograms());
  return {{first, first + sizeof(head)}, {rest, sizeof(ProgramBankRecords)}, programs};
}

void ProgramBank::setChunk(std::span<const std::uint8_t> bytes) {
  std::int32_t version = 0;
  if (bytes.size() < sizeof(version)) {
    return;
  }
  std::memcpy(&version, bytes.data(), sizeof(version));
  const bool isOlder = bytes.size() == kOlderChunkSize || version <= 0;
  if (isOlder) {
    if (bytes.size() < kOlderChunkSize) {
      return;
    }
    upgrade(bytes);
  } else if (version == 1) {
    if (bytes.size() < sizeof(ProgramBankImage)) {
      return;
    }
    std::memcpy(static_cast<void*>(&head), bytes.data(), sizeof(head));
    programs = sharedPrograms(bytes.data() + sizeof(head));
  }
  apply(head.editBuffer);
}

void ProgramBank::upgrade(std::span<const std::uint8_t> bytes) {
  head.version = 1;
  std::memcpy(head.bankName.data(), bytes.data() + offsetof(ProgramBankHead, bankName), head.bankName.size());
  const std::uint8_t* next = bytes.data() + kHeaderSize;
  head.editBuffer = readOlderRecord(next);
  for (ProgramBankRecord& program : ownPrograms()) {
    next += kOlderRecordSize;
    program = readOlderRecord(next);
  }
}

void ProgramBank::setProgram(int index) {
  if (index == currentProgram) {
    return;
  }
  currentProgram = std::clamp(index, 0, static_cast<int>(kPrograms) - 1);
  head.editBuffer = programAt(currentProgram);
  apply(head.editBuffer);
}

void ProgramBank::storeProgram(int index) {
  capture(head.editBuffer);
  if (isProgram(index)) {
    ownPrograms()[static_cast<std::size_t>(index)] = head.editBuffer;
  }
}

void ProgramBank::swapPrograms(int a, int b) {
  if (isProgram(a) && isProgram(b)) {
    ProgramBankRecords& own = ownPrograms();
    std::swap(own[static_cast<std::size_t>(a)], own[static_cast<std::size_t>(b)]);
  }
}

std::string ProgramBank::programName() const { return textOf(head.editBuffer.name); }

std::string ProgramBank::programNameAt(int index) const {
  return isProgram(index) ? textOf(programAt(index).name) : std::string();
}

void ProgramBank::setProgramName(std::string_view name) {
  head.editBuffer.name.fill('\0');
  const std::size_t kept = std::min(name.size(), head.editBuffer.name.size() - 1);
  std::copy_n(name.begin(), kept, head.editBuffer.name.begin());
}

}  // namespace tesh::bramel::plugin::sivray
