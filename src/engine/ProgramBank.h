// The engine's own store of settings: an edit buffer and 128 programs, each a flat record of all values, and the byte
// format in which they travel.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/RealTime.h"
#include "parameters/IParameter.h"

namespace tesh::bramel::plugin::sivray {

inline constexpr std::size_t kPrograms = 128;

/// One program, word for word as in the chunk. Little-endian, as all machines that this is built for.
struct ProgramBankRecord {
  std::uint32_t version = 1;
  std::array<char, 32> name{};  ///< Zero-terminated.
  std::array<std::uint32_t, 10> effect{};
  std::array<std::array<std::uint32_t, 18>, 16> pads{};
  std::uint32_t master = 100;
};
static_assert(sizeof(ProgramBankRecord) == 1232);

/// The whole chunk.
struct ProgramBankImage {
  std::uint32_t version = 1;
  std::array<char, 32> bankName{};
  ProgramBankRecord editBuffer;
  std::array<ProgramBankRecord, kPrograms> programs{};
};
static_assert(sizeof(ProgramBankImage) == 158964);

/// Size of the older chunk, whose records end before the master word.
inline constexpr std::size_t kOlderChunkSize = 158448;

/// The parameter groups that a record holds; not owned. Pads without a group are null.
struct ProgramBankGroups {
  std::array<IParameter*, 16> pads{};
  IParameter* effect = nullptr;
  IParameter* master = nullptr;
};

/// Applying a record sets every value, which reads the sample file where a Wave differs, on the calling thread.
class ProgramBank {
 public:
  /// Captures the groups' values into the edit buffer and all programs.
  explicit ProgramBank(const ProgramBankGroups& parameterGroups);

  /// The chunk with the live values in its edit buffer. The bytes stay good until the next call.
  std::span<const std::uint8_t> getChunk();

  /// Takes over a chunk of the present or the older format and applies its edit buffer. An unknown version only applies
  /// the present edit buffer again; a chunk too short for its format is ignored altogether.
  void setChunk(std::span<const std::uint8_t> bytes);

  int getProgram() const { return currentProgram; }

  /// Copies a program (clamped to 0 .. 127) to the edit buffer and applies it. The current program is left alone.
  void setProgram(int index) SIVRAY_NONBLOCKING;

  /// Captures the live values into the edit buffer and program `index`. A bad index stores nothing.
  void storeProgram(int index);
  void swapPrograms(int a, int b);

  std::string programName() const;
  std::string programNameAt(int index) const;

  /// Keeps the first 31 characters.
  void setProgramName(std::string_view name);

 private:
  void capture(ProgramBankRecord& record) const;
  void apply(const ProgramBankRecord& record);
  void upgrade(std::span<const std::uint8_t> bytes);

  ProgramBankGroups groups;
  std::vector<std::uint8_t> exported;
  int currentProgram = 0;
  ProgramBankImage image;
};

}  // namespace tesh::bramel::plugin::sivray
