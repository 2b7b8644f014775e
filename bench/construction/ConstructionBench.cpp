// The cost of building the whole processor from the content that BRAMEL_COMMON_FILES names, and of changing from one of
// its programs to the next, including the waves that differ.
//   bench_construction count INSTANCES  makes that many and keeps them. Count the instructions of two runs with
//                                       callgrind.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <benchmark/benchmark.h>

#include <array>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>

#include "host/shell/BramelInstrument.h"
#include "host/shell/Construction.h"
#include "support/ContentMain.h"

namespace {

using namespace tesh;

constexpr int kFrames = 64;

void build(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(bramel::vst::makeProcessor());
  }
}
BENCHMARK(build)->Unit(benchmark::kMillisecond);

void selectNextProgram(benchmark::State& state) {
  const auto processor = bramel::vst::makeProcessor();
  std::array<float, kFrames> left{};
  std::array<float, kFrames> right{};
  std::array<float*, 2> outputs{left.data(), right.data()};
  vimo::TimedValueRing automation(4096);
  vimo::TimedValueRing echoes(1024);
  std::vector<vimo::MidiEvent> midi;
  vimo::ProcessBlock block;
  block.outputs = outputs.data();
  block.frames = kFrames;
  block.automationRing = &automation;
  block.notificationRing = &echoes;
  block.midiIn = &midi;
  std::uint32_t program = 0;
  for (auto _ : state) {
    program = (program + 1) %
              static_cast<std::uint32_t>(processor->controller().programs().programCount(vimo::Bank::factory));
    processor->programQueue.put(vimo::MidiEvent::programChange(1, 0, program));
    processor->process(block, 0, 1.0, 0.0);
  }
}
BENCHMARK(selectNextProgram)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
  if (argc == 3 && std::string_view(argv[1]) == "count") {
    std::vector<std::shared_ptr<bramel::vst::BramelInstrument>> kept;
    for (int instance = std::atoi(argv[2]); instance > 0; --instance) {
      kept.push_back(bramel::vst::makeInstrument());
    }
    return 0;
  }
  return support::runOnContent("bench_construction", argc, argv);
}
