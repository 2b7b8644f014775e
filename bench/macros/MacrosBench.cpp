// What a macro's movement costs for each of its targets, from the command to the record that waits for its frame, and
// what a program change costs without its waves.
//
//   bench_macros                       time (Google Benchmark)
//   bench_macros count SETS MOVES      moves a macro of SETS sets MOVES times: two runs under an instruction counter
//                                      that differ in MOVES give the cost of a movement
//                                      (no block takes the records: SETS times MOVES must stay below 10240)
//   bench_macros count program CHANGES selects CHANGES programs of 128 macros, and fires what they move
// SPDX-License-Identifier: GPL-3.0-or-later
#include <benchmark/benchmark.h>

#include <array>
#include <cstdlib>
#include <string_view>

#include "engine/SivrayPlugin.h"
#include "macro/PluginMacroControllable.h"

namespace {

using namespace tesh::vimo;
using Plugin = tesh::bramel::plugin::sivray::SivrayPlugin<tesh::bramel::plugin::sivray::VstXSynth>;

/// The most movements per block that fit the engine's list of records as first reserved, without growing it.
constexpr int kMovesPerBlock = 400;

/// A processor with the real engine and 128 macros of `sets` sets each, on the levels and pans of the pads.
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
    processor.controller().programs().storeCurrent(Bank::factory);
    processor.controller().programs().storeCurrent(Bank::factory);
    processor.generator().activate();
    block.outputs = outputs.data();
    block.automationRing = &automation;
    block.notificationRing = &echoes;
  }

  void move() {
    value = value < 1.0F ? value + 0.001F : 0.0F;
    processor.commandQueue.put({MacroCommandKind::setMacro, 5, value, 0, 0});
    run(0);
  }

  void select() {
    program ^= 1U;
    processor.programQueue.put(MidiEvent::programChange(1, 0, program));
    run(1);
  }

  void run(int frames) {
    block.frames = frames;
    processor.process(block, 0, 1.0, 0.0);
  }

  std::array<float, 2> left{};
  std::array<float, 2> right{};
  std::array<float*, 2> outputs{left.data(), right.data()};
  TimedValueRing automation{4096};
  TimedValueRing echoes{1024};
  ProcessBlock block;
  PluginMacroControllable<Generator<float>> processor;
  float value = 0.0F;
  std::uint32_t program = 0;
};

void moveMacro(benchmark::State& state) {
  Scene scene(static_cast<std::size_t>(state.range(0)));
  int moves = 0;
  for (auto _ : state) {
    scene.move();
    if (++moves % kMovesPerBlock == 0) {
      state.PauseTiming();
      scene.run(1);
      state.ResumeTiming();
    }
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(moveMacro)->Arg(1)->Arg(16);

void selectProgram(benchmark::State& state) {
  Scene scene(1);
  for (auto _ : state) {
    scene.select();
  }
}
BENCHMARK(selectProgram);

int countOnly(std::string_view what, int times) {
  const bool isProgram = what == "program";
  Scene scene(isProgram ? 1 : std::strtoul(what.data(), nullptr, 10));
  for (int i = 0; i < times; ++i) {
    if (isProgram) {
      scene.select();
    } else {
      scene.move();
    }
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 4 && std::string_view(argv[1]) == "count") {
    return countOnly(argv[2], std::atoi(argv[3]));
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
