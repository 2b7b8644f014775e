// One inspection for each kind of file. Each adds its findings to the report as it reads and throws BrokenFile at the
// first fault, so that the report keeps everything before the fault.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "content/inspect/CheckedReader.h"
#include "content/inspect/Report.h"

namespace sivray::content {

/// The sizes of the files next to the inspected one in a sample library, to check that its offsets and numbers point
/// into them.
struct LibraryNeighbours {
  std::uint64_t dataBytes = 0;      ///< Of drumdata.bin; 0 when unknown.
  std::uint64_t sampleRecords = 0;  ///< Of sampleparam.bin; 0 when unknown.
};
void inspectSampleData(CheckedReader reader, Report& report);
void inspectSampleIndex(CheckedReader reader, const LibraryNeighbours& neighbours, Report& report);
void inspectWaveIndex(CheckedReader reader, const LibraryNeighbours& neighbours, Report& report);
void inspectCategoryIndex(CheckedReader reader, Report& report);
/// `index` are the bytes of drumparam_category.bin, empty when unknown.
void inspectSimilarWaves(CheckedReader reader, std::span<const std::uint8_t> index, Report& report);

void inspectMacroChunk(CheckedReader reader, Report& report);
void inspectMiscChunk(CheckedReader reader, Report& report);
void inspectEngineChunk(CheckedReader reader, Report& report);

/// A database image with records of `macroCount` macros.
void inspectProgramImage(CheckedReader reader, std::uint32_t macroCount, Report& report);
void inspectProgramFile(CheckedReader reader, Report& report);
void inspectExportedPrograms(CheckedReader reader, Report& report);

void inspectHostState(CheckedReader reader, Report& report);

void inspectDescription(CheckedReader reader, Report& report);
void inspectParameterDescription(CheckedReader reader, Report& report);
void inspectCcMap(CheckedReader reader, Report& report);
void inspectNativeModeMap(CheckedReader reader, Report& report);

}  // namespace sivray::content
