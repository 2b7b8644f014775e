// The command that collects the own files that a song or a kit uses.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <filesystem>
#include <iostream>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include "content/Files.h"
#include "content/commands/CommandLine.h"
#include "content/commands/Commands.h"
#include "content/factory/Kit.h"
#include "content/own/OwnContent.h"
#include "content/own/SoundAdder.h"
#include "host/shell/Construction.h"
#include "storage/state/EditBufferRecord.h"
#include "storage/state/StateContent.h"
#include "terminal/Printable.h"
#include "viewmodels/texts/PanelMacros.h"
#include "viewmodels/texts/ParameterSteps.h"

namespace sivray::content {
namespace {

namespace fs = std::filesystem;
namespace vst = tesh::bramel::vst;
using PadValues = std::array<float, factory::kPads>;
using Processor = tesh::vimo::PluginMacroControllable<tesh::vimo::Generator<float>>;

/// The values of the macros that choose the pads' waves.
template <typename ValueOf>
PadValues valuesBy(ValueOf valueOf) {
  PadValues values{};
  for (std::size_t pad = 0; pad < values.size(); ++pad) {
    values[pad] = valueOf(tesh::bramel::panel::padMacro(pad, tesh::bramel::panel::kSample));
  }
  return values;
}

/// Presets of several kinds contain the bytes of a state unchanged.
std::optional<PadValues> valuesIn(std::span<const std::uint8_t> file, Processor& processor) {
  for (auto from = file.begin();; ++from) {
    from = std::search(from, file.end(), vst::kStateTag.begin(), vst::kStateTag.end());
    if (from == file.end()) {
      return std::nullopt;
    }
    const auto record = vst::unpackState({from, file.end()});
    const auto content = record ? vst::readStateContent(record->content) : std::nullopt;
    if (content && record->name == vst::kEditBufferName) {
      processor.controller().readChunk(content->macros, Processor::Controller::ChunkParts::valuesOnly);
      return valuesBy([&processor](std::uint64_t macro) { return processor.controller().macroValue(macro); });
    }
  }
}

std::optional<PadValues> valuesOfProgram(const std::string& name, Processor& processor) {
  const auto* const bank = processor.controller().programs().database(tesh::vimo::Bank::user);
  for (std::size_t program = 0; program < bank->programCount(); ++program) {
    if (bank->name(program) == name) {
      const auto entries = bank->entries(program);
      return valuesBy([&entries](std::uint64_t macro) { return macro < entries.size() ? entries[macro].value : 0.0F; });
    }
  }
  return std::nullopt;
}

PadValues valuesOf(const std::string& source) {
  const auto processor = vst::makeProcessor();
  std::error_code error;
  const bool isFile = fs::is_regular_file(pathOf(source), error);
  const auto values = isFile ? valuesIn(readFile(source), *processor) : valuesOfProgram(source, *processor);
  if (!values) {
    throw std::runtime_error(source + (isFile ? ": holds no state" : ": is neither a file nor one of your kits"));
  }
  return *values;
}

/// Copies a file under its own name, or, if that is taken, with its wave number added.
void copyFile(const OwnContent& content, const OwnSound& sound, const fs::path& folder) {
  const fs::path source = content.paths().files / pathOf(sound.file);
  fs::path target = folder / pathOf(sound.file.substr(ownFileStart(sound.number).size()));
  if (fs::exists(target)) {
    target = folder / pathOf(sound.file);
  }
  std::error_code error;
  fs::copy_file(source, target, fs::copy_options::overwrite_existing, error);
  if (error) {
    throw std::runtime_error(textOf(target) + ": cannot be written: " + error.message());
  }
}

}  // namespace

void runExport(const juce::ArgumentList& list) {
  CommandLine line(list, kExportUsage);
  const std::string folder = line.takeRequired("-o");
  const std::string source = line.takeRest(1).front();
  const OwnContent content([](const std::string& text) { std::cout << printable(text) << std::endl; });
  const PadValues values = valuesOf(source);
  Ledger used;
  std::error_code error;
  fs::create_directories(pathOf(folder), error);
  for (std::size_t pad = 0; pad < values.size(); ++pad) {
    const std::int32_t number = tesh::bramel::quantizeValue(values[pad], content.tables().numbers(), 0);
    if (number % kNumbersPerFactoryWave == 0) {
      continue;
    }
    std::cout << "pad " << pad + 1 << ": ";
    const OwnSound* const sound = content.ledger().withNumber(number);
    if (sound == nullptr) {
      std::cout << "the own sound of number " << number << " is missing\n";
    } else if (sound->isRemoved()) {
      std::cout << '"' << printable(sound->name) << "\" is removed; \""
                << printable(content.tables().factoryName(sound->standIn)) << "\" plays in its place\n";
    } else {
      std::cout << '"' << printable(sound->name) << "\"\n";
      if (used.withNumber(number) == nullptr) {
        copyFile(content, *sound, pathOf(folder));
        used.sounds.push_back(*sound);
      }
    }
  }
  if (used.sounds.empty()) {
    std::cout << "It uses no sounds of your own" << std::endl;
    return;
  }
  writeText(textOf(pathOf(folder) / kNumbersFile), textOf(used));
  std::cout << "Collected " << used.sounds.size() << " files in " << printable(folder)
            << ". Where the song is to play: sivray-content add " << printable(folder) << std::endl;
}

}  // namespace sivray::content
