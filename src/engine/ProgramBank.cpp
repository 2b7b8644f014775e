// How programs are captured, applied and exchanged, and how both chunk formats are read.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/ProgramBank.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace tesh::bramel::plugin::sivray {
namespace {

constexpr std::size_t kHeaderSize = offsetof(ProgramBankImage, editBuffer);
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

void setWord(IParameter& group, int index, std::uint32_t word) {
  auto value = static_cast<std::int32_t>(word);
  group.setValue(index, &value);
}

}  // namespace

ProgramBank::ProgramBank(const ProgramBankGroups& parameterGroups) : groups(parameterGroups) {
  capture(image.editBuffer);
  image.programs.fill(image.editBuffer);
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
  capture(image.editBuffer);
  exported.resize(sizeof(image));
  std::memcpy(exported.data(), &image, sizeof(image));
  return exported;
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
    if (bytes.size() < sizeof(image)) {
      return;
    }
    std::memcpy(static_cast<void*>(&image), bytes.data(), sizeof(image));
  }
  apply(image.editBuffer);
}

void ProgramBank::upgrade(std::span<const std::uint8_t> bytes) {
  image.version = 1;
  std::memcpy(image.bankName.data(), bytes.data() + offsetof(ProgramBankImage, bankName), image.bankName.size());
  const std::uint8_t* next = bytes.data() + kHeaderSize;
  image.editBuffer = readOlderRecord(next);
  for (ProgramBankRecord& program : image.programs) {
    next += kOlderRecordSize;
    program = readOlderRecord(next);
  }
}

void ProgramBank::setProgram(int index) {
  if (index == currentProgram) {
    return;
  }
  currentProgram = std::clamp(index, 0, static_cast<int>(kPrograms) - 1);
  image.editBuffer = image.programs[static_cast<std::size_t>(currentProgram)];
  apply(image.editBuffer);
}

void ProgramBank::storeProgram(int index) {
  capture(image.editBuffer);
  if (isProgram(index)) {
    image.programs[static_cast<std::size_t>(index)] = image.editBuffer;
  }
}

void ProgramBank::swapPrograms(int a, int b) {
  if (isProgram(a) && isProgram(b)) {
    std::swap(image.programs[static_cast<std::size_t>(a)], image.programs[static_cast<std::size_t>(b)]);
  }
}

std::string ProgramBank::programName() const { return textOf(image.editBuffer.name); }

std::string ProgramBank::programNameAt(int index) const {
  return isProgram(index) ? textOf(image.programs[static_cast<std::size_t>(index)].name) : std::string();
}

void ProgramBank::setProgramName(std::string_view name) {
  image.editBuffer.name.fill('\0');
  const std::size_t kept = std::min(name.size(), image.editBuffer.name.size() - 1);
  std::copy_n(name.begin(), kept, image.editBuffer.name.begin());
}

}  // namespace tesh::bramel::plugin::sivray
