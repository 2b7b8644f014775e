// What a macro's movement costs for each of its targets, and what a program change costs without its waves.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <benchmark/benchmark.h>

#include "engine/SivrayPlugin.h"
#include "macro/PluginMacroControllable.h"

namespace {

using namespace tesh::vimo;
using Plugin = tesh::bramel::plugin::sivray::SivrayPlugin<tesh::bramel::plugin::sivray::VstXSynth>;

/// A processor of the real engine with 128 macros of one set each, on the levels and pans of the pads.
struct Scene {
  explicit Scene(std::size_t setsEach) : processor("Sivray", std::make_unique<Plugin>()) {
    for (std::uint32_t macro = 0; macro < 128; ++macro) {
      auto& control = processor.controller().addMacro();
      for (std::uint32_t set = 0; set < setsEach; ++set) {
        auto curve = makeMacroSet(MacroSetType::cubicCurve);
        curve->setTargetId((set % 8) << 4 | (set < 8 ? 8U : 9U));
        control.addSet(std::move(curve));
      }
    }
    processor.controller().storeCurrent(0);
    processor.controller().storeCurrent(0);
    processor.generator().activate();
    block.automationRing = &automation;
    block.notificationRing = &echoes;
  }

  void run() { processor.process(block, 0, 1.0, 0.0); }

  TimedValueRing automation{4096};
  TimedValueRing echoes{1024};
  ProcessBlock block;
  PluginMacroControllable<Generator<float>> processor;
};

void moveMacro(benchmark::State& state) {
  Scene scene(static_cast<std::size_t>(state.range(0)));
  float value = 0.0F;
  for (auto _ : state) {
    value = value < 1.0F ? value + 0.001F : 0.0F;
    scene.processor.commandQueue.put({MacroCommandKind::setMacro, 5, value, 0, 0});
    scene.run();
    while (scene.automation.take()) {
    }
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(moveMacro)->Arg(1)->Arg(16);

void selectProgram(benchmark::State& state) {
  Scene scene(1);
  std::uint32_t program = 0;
  for (auto _ : state) {
    program ^= 1U;
    scene.processor.programQueue.put(MidiEvent::programChange(1, 0, program));
    scene.run();
  }
}
BENCHMARK(selectProgram);

}  // namespace

BENCHMARK_MAIN();
