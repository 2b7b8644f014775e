// The binary files of the macro description: engine chunk, macro chunk and run flags; then all files on disk.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/factory/MacroFiles.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <random>
#include <stdexcept>
#include <utility>

#include "content/Files.h"
#include "core/LittleEndian.h"
#include "core/Uuid.h"
#include "effects/EffectTable.h"
#include "engine/ProgramBank.h"
#include "macro/MacroParameterControl.h"
#include "macro/MacroSetLinear.h"
#include "macro/MacroSetQuantized.h"
#include "storage/programs/ProgramDatabase.h"
#include "storage/state/StateContent.h"
#include "viewmodels/texts/EditScreenEffects.h"

namespace sivray::factory {
namespace {

namespace vimo = tesh::vimo;
namespace engine = tesh::bramel::plugin::sivray;
using tesh::cofu::core::ByteWriter;

/// The creation time of all factory programs, in Unix seconds: the start of 2026. It is constant so that the same kits
/// give the same bytes.
constexpr std::uint32_t kFactoryTime = 1767225600;

constexpr std::uint32_t kMacroChunkVersion = 1280;

std::unique_ptr<vimo::MacroSetBase> setOf(const MacroRow& row) {
  if (!row.steps.empty()) {
    auto set = std::make_unique<vimo::MacroSetQuantized>();
    set->setTargetId(row.targetId);
    set->setValues(row.steps);
    return set;
  }
  auto set = std::make_unique<vimo::MacroSetLinear>();
  set->setTargetId(row.targetId);
  set->setRange({row.minimum, row.maximum});
  return set;
}

std::vector<std::uint8_t> makeMacroSection(const std::vector<MacroRow>& layout) {
  std::vector<std::uint8_t> records;
  std::vector<std::uint8_t> section;
  ByteWriter writer(section);
  writer.word(static_cast<std::uint32_t>(layout.size()));
  for (const MacroRow& row : layout) {
    vimo::MacroParameterControl macro(nullptr, nullptr);
    macro.setName(row.name);
    macro.addSet(setOf(row));
    const std::size_t before = records.size();
    macro.writeRecord(records);
    writer.word(static_cast<std::uint32_t>(records.size() - before));
  }
  writer.bytes(records);
  return section;
}

void writeEntries(ByteWriter& writer, const std::vector<float>& values) {
  for (const float value : values) {
    writer.real(value);
    writer.longWord(0);
  }
}

std::vector<std::uint8_t> makeProgramImage(const FactoryBank& bank) {
  std::mt19937 generator(std::mt19937::default_seed);
  std::vector<std::uint8_t> image;
  ByteWriter writer(image);
  writer.word(vimo::ProgramDatabase::kImageVersion);
  writer.word(static_cast<std::uint32_t>(bank.programs.size()));
  for (const FactoryProgram& program : bank.programs) {
    const auto text = [&writer](std::string_view words) {
      vimo::ProgramRecord::Text field{};
      vimo::ProgramRecord::setText(field, words);
      writer.text({field.data(), field.size()});
    };
    writer.word(vimo::ProgramRecord::kMarkerLoaded);
    text(program.kit.name);
    text(program.kit.comment);
    writer.word(kFactoryTime);
    writer.zeros(8);
    std::array<std::uint32_t, 4> draws{};
    std::ranges::generate(draws, [&generator] { return static_cast<std::uint32_t>(generator()); });
    writer.bytes(tesh::cofu::core::uuidFromDraws(draws));
    writeEntries(writer, program.values);
  }
  return image;
}

/// Returns a pad's parameters as the engine stores them, by parameter index.
std::array<std::uint32_t, 18> padWordsOf(const KitPad& pad, std::uint32_t wave) {
  constexpr std::uint32_t kAccentOn = 1;
  constexpr std::uint32_t kModDepthCentre = 64;
  const auto word = [](int value) { return static_cast<std::uint32_t>(value); };
  return {wave,
          word(static_cast<int>(pad.group)),
          pad.gate ? 1U : 0U,
          pad.reverse ? 1U : 0U,
          word(pad.pitch + 24),
          word(pad.fine + 100),
          word(pad.punch),
          word(pad.decay),
          word(pad.level),
          word(pad.pan + 64),
          word(pad.boost),
          0,
          pad.mute ? 1U : 0U,
          pad.send ? 1U : 0U,
          kAccentOn,
          kModDepthCentre,
          0,
          0};
}

engine::ProgramBankRecord engineRecordOf(const FactoryProgram& program) {
  engine::ProgramBankRecord record;
  const std::size_t nameLength = std::min(program.kit.name.size(), record.name.size() - 1);
  std::copy_n(program.kit.name.begin(), nameLength, record.name.begin());
  const auto& list = tesh::bramel::kEditScreenEffects;
  const auto* effect = std::ranges::find_if(list, [&](const auto& row) { return program.kit.effect == row.name; });
  record.effect = {static_cast<std::uint32_t>(effect->typeId), 1, static_cast<std::uint32_t>(program.kit.edit1),
                   static_cast<std::uint32_t>(program.kit.edit2)};
  for (std::size_t pad = 0; pad < kPads; ++pad) {
    record.pads[pad] = padWordsOf(program.kit.pads[pad], program.waves[pad]);
  }
  record.master = static_cast<std::uint32_t>(program.kit.master);
  return record;
}

}  // namespace

FactoryBank makeFactoryBank(const std::vector<BankKit>& kits, const std::vector<std::string>& waveNames) {
  if (kits.empty()) {
    throw std::invalid_argument("a factory bank needs at least one kit");
  }
  FactoryBank bank;
  bank.layout = makeMacroLayout(waveNames.size());
  for (const auto& [file, kit] : kits) {
    FactoryProgram program{kit, {}, macroValuesOf(kit, waveNames, file)};
    std::ranges::transform(kit.pads, program.waves.begin(), [&waveNames](const KitPad& pad) {
      return static_cast<std::uint32_t>(std::ranges::find(waveNames, pad.wave) - waveNames.begin());
    });
    bank.programs.push_back(std::move(program));
  }
  return bank;
}

std::vector<std::uint8_t> makePluginChunk(const FactoryBank& bank) {
  const auto image = std::make_unique<engine::ProgramBankImage>();
  for (std::size_t i = 0; i < image->programs.size(); ++i) {
    image->programs[i] = engineRecordOf(bank.programs[std::min(i, bank.programs.size() - 1)]);
  }
  image->editBuffer = image->programs.front();
  std::vector<std::uint8_t> chunk(sizeof(*image));
  std::memcpy(chunk.data(), image.get(), chunk.size());
  return chunk;
}

std::vector<std::uint8_t> makeMacroChunk(const FactoryBank& bank) {
  const Kit& first = bank.programs.front().kit;
  const auto section = makeMacroSection(bank.layout);
  const auto image = makeProgramImage(bank);
  const auto count = static_cast<std::uint32_t>(bank.layout.size());
  std::vector<std::uint8_t> chunk;
  ByteWriter writer(chunk);
  writer.word(kMacroChunkVersion);
  writer.word(count);
  writer.word(static_cast<std::uint32_t>(section.size()));
  writer.word(static_cast<std::uint32_t>(image.size()));
  writer.word(4);
  writer.word(count * static_cast<std::uint32_t>(vimo::ProgramDatabase::kEntryBytes));  // Offset of the texts.
  writer.word(0);
  writer.word(static_cast<std::uint32_t>(first.name.size()));
  writer.word(static_cast<std::uint32_t>(first.comment.size()));
  writer.word(kFactoryTime);
  writer.word(0);  // The selected program, and its bank.
  writer.word(0);
  writer.bytes(section);
  writer.bytes(image);
  writeEntries(writer, bank.programs.front().values);
  writer.text(first.name);
  writer.text(first.comment);
  return chunk;
}

std::vector<std::uint8_t> makeMiscChunk() {
  std::vector<std::uint8_t> chunk;
  tesh::bramel::vst::appendRunFlags(chunk, {.running = true, .storesEngineChunk = false});
  return chunk;
}

void writeMacroFiles(const std::string& folder, const FactoryBank& bank) {
  content::writeText(folder + "/readme.json", makeReadme(bank));
  content::writeFile(folder + "/plugin_chunk.bin", makePluginChunk(bank));
  content::writeFile(folder + "/macro_chunk.bin", makeMacroChunk(bank));
  content::writeFile(folder + "/misc_chunk.bin", makeMiscChunk());
  content::writeText(folder + "/parameter_description.json", makeParameterDescription(bank));
  content::writeText(folder + "/Sivray.ccmap", makeCcMap());
  content::writeText(folder + "/Sivray.native_mode_map", makeNativeModeMap());
}

}  // namespace sivray::factory
