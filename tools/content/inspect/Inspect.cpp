// Chooses the inspection for a file, by its name or its first bytes.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/inspect/Inspect.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <system_error>

#include "content/Files.h"
#include "content/inspect/Inspectors.h"
#include "core/LittleEndian.h"
#include "engine/ProgramBank.h"
#include "engine/samples/SimilarWaves.h"
#include "storage/state/EditBufferRecord.h"
#include "storage/state/StateContent.h"

namespace sivray::content {
namespace {

using Inspector = std::function<void(CheckedReader, Report&)>;

std::uint64_t sizeOf(const std::filesystem::path& path) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  return error ? 0 : size;
}

LibraryNeighbours neighboursOf(const std::string& path) {
  constexpr std::uint64_t kSampleRecordBytes = 12;
  const std::filesystem::path folder = pathOf(path).parent_path();
  return {sizeOf(folder / "drumdata.bin"), sizeOf(folder / "sampleparam.bin") / kSampleRecordBytes};
}

/// Empty if there is none.
std::vector<std::uint8_t> indexBeside(const std::string& path) {
  const std::filesystem::path index = pathOf(path).parent_path() / "drumparam_category.bin";
  std::error_code error;
  return std::filesystem::is_regular_file(index, error) ? readFile(textOf(index)) : std::vector<std::uint8_t>();
}

/// Recognises the kinds that have a fixed file name or extension.
Inspector inspectorByName(const std::string& path) {
  const std::string name = fileNameOf(path);
  const LibraryNeighbours neighbours = neighboursOf(path);
  const std::map<std::string, Inspector> byName{
      {"drumdata.bin", inspectSampleData},
      {"sampleparam.bin",
       [=](CheckedReader reader, Report& report) { inspectSampleIndex(reader, neighbours, report); }},
      {"drumparam.bin", [=](CheckedReader reader, Report& report) { inspectWaveIndex(reader, neighbours, report); }},
      {"drumparam_category.bin", inspectCategoryIndex},
      {std::string(tesh::vimo::SimilarWaves::kFileName),
       [path](CheckedReader reader, Report& report) { inspectSimilarWaves(reader, indexBeside(path), report); }},
      {"readme.json", inspectDescription},
      {"parameter_description.json", inspectParameterDescription},
  };
  const auto found = byName.find(name);
  if (found != byName.end()) {
    return found->second;
  }
  if (name.ends_with(".ccmap")) {
    return inspectCcMap;
  }
  return name.ends_with(".native_mode_map") ? Inspector(inspectNativeModeMap) : Inspector();
}

/// A program file and a macro chunk begin alike. A program file states the byte count of its programs, which extend to
/// its end; a fourth word of 4 identifies it even if it is cut short.
bool isProgramFile(const CheckedReader& reader, const std::string& name) {
  constexpr std::uint32_t kMark = 4;
  const std::uint64_t imageBytes = reader.peek(2);
  const bool isFilled = reader.remaining() == imageBytes + 20 || reader.remaining() == imageBytes + 16;
  return name.ends_with(".prog") || (isFilled && reader.peek(3) == kMark);
}

/// Returns a four-character tag as the little-endian word of its bytes.
std::uint32_t wordOf(std::string_view tag) {
  return tesh::cofu::core::wordIn({reinterpret_cast<const std::uint8_t*>(tag.data()), tag.size()}, 0).value_or(0);
}

/// Recognises the other kinds by their first bytes.
Inspector inspectorByContent(const CheckedReader& reader, const std::string& name) {
  constexpr std::uint32_t kExportVersion = 256;
  constexpr std::array<std::uint32_t, 4> kMacroChunkVersions{512, 768, 1024, 1280};
  namespace engine = tesh::bramel::plugin::sivray;
  const std::uint32_t first = reader.peek(0);
  if (first == wordOf(tesh::bramel::vst::kStateTag)) {
    return inspectHostState;
  }
  if (reader.peek(1) == wordOf(tesh::bramel::vst::kRunFlagsTag)) {
    return inspectMiscChunk;
  }
  if (isProgramFile(reader, name)) {
    return first == kExportVersion ? inspectExportedPrograms : inspectProgramFile;
  }
  if (first == kExportVersion) {
    return inspectExportedPrograms;
  }
  if (std::ranges::find(kMacroChunkVersions, first) != kMacroChunkVersions.end()) {
    return inspectMacroChunk;
  }
  const bool isEngineSize =
      reader.remaining() == engine::kOlderChunkSize || reader.remaining() == sizeof(engine::ProgramBankImage);
  return isEngineSize || first <= 1 ? Inspector(inspectEngineChunk) : Inspector();
}

}  // namespace

Inspection inspectFile(const std::string& path) {
  const std::vector<std::uint8_t> bytes = readFile(path);
  const CheckedReader reader(bytes);
  Inspector inspector = inspectorByName(path);
  if (!inspector && !bytes.empty()) {
    inspector = inspectorByContent(reader, fileNameOf(path));
  }
  if (!inspector) {
    throw std::runtime_error(path + ": is none of the files that can be looked into");
  }
  Inspection inspection;
  try {
    inspector(reader, inspection.report);
  } catch (const BrokenFile& broken) {
    inspection.broken = broken;
  }
  return inspection;
}

}  // namespace sivray::content
