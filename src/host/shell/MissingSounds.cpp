// Recognises the user's own wave numbers, and looks removed sounds up in the user's list.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/shell/MissingSounds.h"

#include <algorithm>
#include <sstream>

#include "engine/samples/IndexRecords.h"
#include "engine/samples/SampleLibrary.h"
#include "host/shell/BramelInstrument.h"
#include "platform/SpecialFolders.h"
#include "storage/paths/Paths.h"
#include "viewmodels/texts/ParameterSteps.h"

namespace tesh::bramel::vst {
namespace {

/// Adds the names from the lines "removed <tab> number <tab> category <tab> hash <tab> name ..." of the user's list.
void nameRemoved(std::vector<MissingSound>& sounds) {
  const auto bytes = readFile(pathBelow(platform::ownContentFolder(), "ledger.txt"));
  std::istringstream lines(std::string(bytes.begin(), bytes.end()));
  for (std::string line; std::getline(lines, line);) {
    std::istringstream fields(line);
    std::string kind;
    std::string number;
    std::string name;
    std::getline(fields, kind, '\t');
    std::getline(fields, number, '\t');
    for (int skipped = 0; skipped < 3; ++skipped) {
      std::getline(fields, name, '\t');
    }
    for (MissingSound& sound : sounds) {
      if (kind == "removed" && number == std::to_string(sound.number)) {
        sound.name = name;
      }
    }
  }
}

}  // namespace

std::vector<MissingSound> missingSounds(const SoundValues& values, const vimo::SampleLibrary& library) {
  const std::int32_t distance = plugin::sivray::kNumbersPerFactoryWave;
  const bool hasOwn = library.numbersPerFactoryWave() == distance;
  const std::int32_t highest = std::max(library.numberCount() - 1, 0) * (hasOwn ? 1 : distance);
  std::vector<MissingSound> missing;
  for (std::size_t pad = 0; pad < values.size() && highest > 0; ++pad) {
    const std::int32_t number = quantizeValue(values[pad], highest + 1, 0);
    const bool isOwn = number % distance != 0 && normaliseState(number, highest + 1, 0) == values[pad];
    if (isOwn && (!hasOwn || library.isFree(number))) {
      missing.push_back({pad, number, {}});
    }
  }
  return missing;
}

std::vector<MissingSound> missingSounds(BramelInstrument& instrument) {
  auto* const processor = instrument.processorHandle();
  const vimo::SampleLibrary* const library = processor == nullptr ? nullptr : processor->generator().sampleLibrary();
  if (library == nullptr) {
    return {};
  }
  SoundValues values{};
  for (std::size_t pad = 0; pad < values.size(); ++pad) {
    values[pad] = instrument.parameterValue(panel::padMacro(pad, panel::kSample));
  }
  return missingSounds(values, *library);
}

std::string describeMissing(const std::vector<MissingSound>& sounds) {
  if (sounds.empty()) {
    return {};
  }
  std::vector<MissingSound> named = sounds;
  nameRemoved(named);
  std::string text;
  for (const MissingSound& sound : named) {
    text += (text.empty() ? "Pad " : ", pad ") + std::to_string(sound.pad + 1) + " misses " +
            (sound.name.empty() ? "your sound no. " + std::to_string(sound.number) : '"' + sound.name + "\" (removed)");
  }
  return text + ": factory sounds play instead";
}

}  // namespace tesh::bramel::vst
