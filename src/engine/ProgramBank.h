// The engine's own store of settings: an edit buffer and 128 programs, each a flat record of all values, and their
// bytes in a host's state.
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

/// One program, in the chunk's byte layout. Words are little-endian, like all machines that run this.
struct ProgramBankRecord {
  std::uint32_t version = 1;
  std::array<char, 32> name{};                           ///< Zero-terminated.
  std::array<std::uint32_t, 10> effect{};                ///< Type, switch, two edits; the rest is 0.
  std::array<std::array<std::uint32_t, 18>, 16> pads{};  ///< Values by pad and index; 0 for pads that do not exist.
  std::uint32_t master = 100;                            ///< Master level.
};
static_assert(sizeof(ProgramBankRecord) == 1232);

using ProgramBankRecords = std::array<ProgramBankRecord, kPrograms>;

/// The beginning of the chunk; the records of all programs follow.
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

/// Bytes of the older chunk format, whose records have no master level.
inline constexpr std::size_t kOlderChunkSize = 158448;

/// The parameter groups that a record captures, not owned. Null for pads that do not exist.
struct ProgramBankGroups {
  std::array<IParameter*, 16> pads{};
  IParameter* effect = nullptr;
  IParameter* master = nullptr;
};

/// Applying a record sets all values on the calling thread, and for each pad whose Wave changes reads the sample file
/// there. One operation at a time, and none during a block.
class ProgramBank {
 public:
  /// Captures the groups' values into the edit buffer and all programs.
  explicit ProgramBank(const ProgramBankGroups& parameterGroups);

  /// Captures the live values into the edit buffer and returns the chunk, valid until the next call.
  std::span<const std::uint8_t> getChunk();

  /// The same bytes as `getChunk`. Copies only the edit buffer, because programs are never changed in place.
  vimo::EngineSnapshot snapshot();

  /// Reads a chunk of the current or the older format and applies its edit buffer. For a chunk of an unknown version,
  /// it applies the present edit buffer again. Ignores a chunk too short for its format.
  void setChunk(std::span<const std::uint8_t> bytes);

  int getProgram() const { return currentProgram; }

  /// Copies a program (limited to 0 .. 127) to the edit buffer and applies it. Does nothing if it is already selected.
  /// May run on the audio thread, inside a block.
  void setProgram(int index) SIVRAY_NONBLOCKING;

  /// Captures the live values into the edit buffer, and copies it to program `index` if that is 0 to 127.
  void storeProgram(int index);

  /// Swaps two programs. Does nothing if an index is out of range.
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
  /// Every program while `programs` is null. Most banks get shared programs before this is ever used.
  ProgramBankRecord alike;
  /// Shared by all banks with equal programs, such as the factory's, until a bank changes its own.
  std::shared_ptr<const ProgramBankRecords> programs;
};

}  // namespace tesh::bramel::plugin::sivray
