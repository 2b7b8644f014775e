// The whole instrument with the panel's macros, and a sample library whose ids, list indices and categories differ.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "engine/SivrayPlugin.h"
#include "host/shell/BramelInstrument.h"
#include "macro/MacroSetLinear.h"
#include "support/SampleFolder.h"

namespace support {

/// The category of each wave, from 0, by its id; not sorted, and with gaps.
inline constexpr std::array<std::uint32_t, 11> kCategoryOfWave{9, 0, 1, 3, 0, 5, 1, 8, 3, 9, 7};

inline constexpr std::uint64_t kHidden = 100;  ///< The only macro that the host does not see.
inline constexpr std::uint64_t kMacros = 101;

/// Returns the engine parameter that a macro moves.
constexpr std::uint32_t targetOf(std::uint64_t macro) {
  constexpr std::array<std::uint32_t, 5> kMasterTargets{0x100, 0x102, 0x103, 0x110, 0x101};
  return static_cast<std::uint32_t>(macro < 96 ? macro / 12 << 4 | macro % 12 : kMasterTargets[macro - 96]);
}

inline std::vector<Wave> categorisedWaves() {
  std::vector<Wave> made;
  for (const std::uint32_t category : kCategoryOfWave) {
    Wave wave;
    wave.name = "wave" + std::to_string(made.size());
    wave.left.assign(40, 1000);
    wave.category = category + 1;
    made.push_back(std::move(wave));
  }
  return made;
}

/// Returns an instrument on the library of `folder`, with the factory programs "first" to "third".
inline std::shared_ptr<tesh::bramel::vst::BramelInstrument> makeInstrument(const SampleFolder& folder) {
  namespace sivray = tesh::bramel::plugin::sivray;
  using tesh::bramel::vst::BramelInstrument;
  constexpr std::size_t kSlotFrames = 64;
  auto plugin = std::make_unique<sivray::SivrayPlugin<sivray::VstXSynth>>(sivray::kSampleFolder, kSlotFrames);
  plugin->sampleLibrary()->load(folder.pathOf("drumparam_category.bin").string());
  auto processor = std::make_unique<BramelInstrument::Processor>("Sivray", std::move(plugin));
  auto& controller = processor->controller();
  for (std::uint64_t macro = 0; macro < kMacros; ++macro) {
    auto set = tesh::vimo::makeMacroSet(tesh::vimo::MacroSetType::linear);
    set->setTargetId(targetOf(macro));
    controller.addMacro().addSet(std::move(set));
    controller.macroAt(macro)->setName("macro" + std::to_string(macro));
    controller.macroAt(macro)->defaultValue = 0.25F;
  }
  controller.automationBlacklist = {kHidden};
  for (const char* const name : {"first", "second", "third"}) {
    controller.setProgramName(name);
    controller.programs().storeCurrent(tesh::vimo::Bank::factory);
  }
  processor->generator().activate();
  return std::make_shared<BramelInstrument>(std::move(processor));
}

}  // namespace support
