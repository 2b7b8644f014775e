// The whole instrument on a small sample library, with a macro for every value of the pads and of the master section.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <random>
#include <vector>

#include "engine/SivrayPlugin.h"
#include "host/shell/BramelInstrument.h"
#include "macro/MacroSetLinear.h"
#include "support/SampleFolder.h"
#include "viewmodels/texts/SivrayTooltipProvider.h"

namespace instrument {

using namespace tesh;
using bramel::vst::BramelInstrument;
using Bytes = std::vector<std::uint8_t>;
using Plugin = bramel::plugin::sivray::SivrayPlugin<bramel::plugin::sivray::VstXSynth>;

inline constexpr std::size_t kSlot = 4000;
inline constexpr std::uint32_t kPadValues = 128;
inline constexpr std::uint32_t kMasterOut = 0x110;

/// Four groups of values after those of the pads belong to the effect and the output.
inline std::unique_ptr<BramelInstrument> makeInstrument(int programs = 2,
                                                        const std::vector<std::uint64_t>& hidden = {}) {
  auto processor = std::make_unique<BramelInstrument::Processor>(
      "Sivray", std::make_unique<Plugin>(bramel::plugin::sivray::kSampleFolder, kSlot));
  auto& controller = processor->controller();
  const auto add = [&](std::uint32_t target) {
    auto set = vimo::makeMacroSet(vimo::MacroSetType::linear);
    set->setTargetId(target);
    controller.addMacro().addSet(std::move(set));
  };
  for (std::uint32_t target = 0; target < kPadValues; ++target) {
    add(target);
  }
  add(kMasterOut);
  for (std::uint64_t id = 0; id <= kPadValues; ++id) {
    controller.macroAt(id)->storedValue =
        processor->generator().getParameter(id < kPadValues ? static_cast<std::uint32_t>(id) : kMasterOut);
  }
  controller.automationBlacklist = hidden;
  controller.ccMap = {{7, 8}, {vimo::MacroControllerBase::kPitchBendKey, 24}};
  for (int program = 0; program < programs; ++program) {
    controller.programs().storeCurrent(vimo::Bank::factory);
  }
  processor->generator().activate();
  auto shell = std::make_unique<BramelInstrument>(std::move(processor));
  shell->setTooltipProvider(std::make_unique<bramel::tooltip::SivrayTooltipProvider>());
  shell->setParameter(kPadValues, 100.0F / 127.0F);
  shell->resume();
  return shell;
}

/// Samples of each block: all of left, then all of right.
class Player {
 public:
  explicit Player(std::unique_ptr<BramelInstrument> played) : shell(std::move(played)) {}

  void note(int key, int velocity = 100, std::int32_t delta = 0) {
    const std::array<std::uint8_t, 3> bytes{0x90, static_cast<std::uint8_t>(key), static_cast<std::uint8_t>(velocity)};
    shell->sendMidi(bytes.data(), bytes.size(), delta);
  }

  /// Reserves memory for the samples that `play` keeps.
  void reserve(std::size_t frames) {
    left.reserve(frames);
    right.reserve(frames);
  }

  void play(std::int32_t frames) {
    const std::size_t start = left.size();
    left.resize(start + static_cast<std::size_t>(frames), 9.0F);
    right.resize(left.size(), 9.0F);
    std::array<float*, 2> outputs{left.data() + start, right.data() + start};
    shell->process(nullptr, outputs.data(), frames);
  }

  std::unique_ptr<BramelInstrument> shell;
  std::vector<float> left;
  std::vector<float> right;
};

}  // namespace instrument
