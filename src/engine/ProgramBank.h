// The engine's own store of settings: an edit buffer and 128 programs, each a flat record of all values, and the bytes
// in which a host's state carries them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/RealTime.h"
#include "engine/Generator.h"
#include "parameters/IParameter.h"

namespace tesh::bramel::plugin::sivray {

inline constexpr std::size_t kPrograms = 128;

/// One program, word for word as in the chunk. Its words are little-endian, as are all machines that run this.
struct ProgramBankRecord {
  std::uint32_t version = 1;
  std::array<char, 32> name{};                           ///< Zero-terminated.
  std::array<std::uint32_t, 10> effect{};                ///< Type, switch, two edits; the rest is 0.
  std::array<std::array<std::uint32_t, 18>, 16> pads{};  ///< Values by pad and index; 0 for pads that do not exist.
  std::uint32_t master = 100;                            ///< Master level.
};
static_assert(sizeof(ProgramBankRecord) == 1232);

using ProgramBankRecords = std::array<ProgramBankRecord, kPrograms>;

/// What the chunk begins with; the records of all programs follow it.
struct ProgramBankHead {
  std::uint32_t version = 1;
  std::array<char, 32> bankName{};
  ProgramBankRecord editBuffer;
};

/// The whole chunk.
struct ProgramBankImage : ProgramBankHead {
  ProgramBankRecords programs{};
};
static_assert(sizeof(ProgramBankImage) == 158964);

/// Bytes of the older chunk, whose records have no master level.
inline constexpr std::size_t kOlderChunkSize = 158448;

/// The parameter groups whose values a record holds, not owned. Null for pads that do not exist.
struct ProgramBankGroups {
  std::array<IParameter*, 16> pads{};
  IParameter* effect = nullptr;
  IParameter* master = nullptr;
};

/// Every operation that applies a record sets all values on the calling thread; for each pad whose Wave changes, it
/// reads the sample file there. Only one operation may run at a time, and none during a block.
class ProgramBank {
 public:
  /// Captures the groups' values into the edit buffer and all programs.
  explicit ProgramBank(const ProgramBankGroups& parameterGroups);

  /// Captures the live values into the edit buffer and returns the chunk, valid until the next call.
  std::span<const std::uint8_t> getChunk();

  /// The same bytes. Copies the edit buffer alone: programs are never changed in place.
  vimo::EngineSnapshot snapshot();

  /// Reads a chunk of the present or the older format and applies its edit buffer. A chunk of an unknown version is not
  /// read, but the present edit buffer is applied again. A chunk too short for its format is ignored.
  void setChunk(std::span<const std::uint8_t> bytes);

  int getProgram() const { return currentProgram; }

  /// Copies a program (limited to 0 .. 127) to the edit buffer and applies it. Does nothing if it is current already.
  /// May also run on the audio thread, inside a block.
  void setProgram(int index) SIVRAY_NONBLOCKING;

  /// Captures the live values into the edit buffer, and copies it to program `index` if there is one.
  void storeProgram(int index);

  /// Exchanges two programs. Does nothing if an index is out of range.
  void swapPrograms(int a, int b);

  /// The name in the edit buffer, or of a program; empty for an index out of range.
  std::string programName() const;
  std::string programNameAt(int index) const;

  /// Names the edit buffer; keeps the first 31 bytes.
  void setProgramName(std::string_view name);

 private:
  void capture(ProgramBankRecord& record) const;
  void apply(const ProgramBankRecord& record);
  void upgrade(std::span<const std::uint8_t> bytes);
  const ProgramBankRecord& programAt(int index) const;
  const ProgramBankRecords& allPrograms();
  ProgramBankRecords& ownPrograms();

  ProgramBankGroups groups;
  std::vector<std::uint8_t> exported;  ///< Empty until a chunk is asked for.
  int currentProgram = 0;
  ProgramBankHead head;
  ProgramBankRecord alike;  ///< Each program while `programs` is null, which most banks get before anybody asks.
  /// Shared by all banks with the same programs, as those of the factory are, until a bank changes its own.
  std::shared_ptr<const ProgramBankRecords> programs;
};

}  // namespace tesh::bramel::plugin::sivray
