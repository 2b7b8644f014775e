// The cost of the sample-rate converter around an engine that does nothing.
//
//   bench_resample                     time per host frame (Google Benchmark)
//   bench_resample count RATE BLOCKS   plays BLOCKS blocks of 128 frames at RATE Hz and ends: with the engine sounding
//     output|input|silence             alone, with the host's input sounding too, or all silent. Count the instructions
//                                      of two runs with different numbers of blocks; their difference, divided by the
//                                      additional frames, is the cost of a frame.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "host/resample/CFsConverterWrapper.h"

namespace {

using namespace tesh::bramel::vst;

constexpr std::int32_t kFrames = 128;

/// Writes only the first sample of each output, which keeps the resampler from skipping silence.
class Engine : public CFsConvListener {
 public:
  explicit Engine(bool isSounding) : level(isSounding ? 0.5F : 0.0F) {}
  void onProcess(float**, float** outputs, std::int32_t frames) override {
    if (frames > 0) {
      outputs[0][0] = level;
      outputs[1][0] = level;
    }
  }

 private:
  float level;
};

class Host {
 public:
  Host(float rate, bool hasOutput, bool hasInput) : engine(hasOutput), converter(engine), hasInputs(hasInput) {
    converter.setSampleRate(rate);
  }

  void play() {
    std::array<float*, 2> in{input.data(), input.data()};
    std::array<float*, 2> out{left.data(), right.data()};
    converter.process(hasInputs ? in.data() : nullptr, out.data(), kFrames);
    benchmark::DoNotOptimize(left.data());
  }

 private:
  Engine engine;
  CFsConverterWrapper converter;
  bool hasInputs;
  std::vector<float> input = std::vector<float>(kFrames, 0.25F);
  std::vector<float> left = std::vector<float>(kFrames);
  std::vector<float> right = std::vector<float>(kFrames);
};

void frames(benchmark::State& state, float rate, bool hasOutput, bool hasInput) {
  Host host(rate, hasOutput, hasInput);
  for (auto _ : state) {
    host.play();
  }
  state.SetItemsProcessed(state.iterations() * kFrames);
}

void redesign(benchmark::State& state) {
  Engine engine(false);
  CFsConverterWrapper converter(engine);
  for (auto _ : state) {
    converter.setSampleRate(48000.0F);
  }
}

int countOnly(char** arguments) {
  const bool hasInput = std::strcmp(arguments[2], "input") == 0;
  Host host(std::strtof(arguments[0], nullptr), std::strcmp(arguments[2], "silence") != 0, hasInput);
  for (int blocks = std::atoi(arguments[1]); blocks > 0; --blocks) {
    host.play();
  }
  return 0;
}

void registerAll() {
  for (const float rate : {44100.0F, 48000.0F, 96000.0F, 192000.0F}) {
    const std::string name = std::to_string(static_cast<int>(rate));
    benchmark::RegisterBenchmark(("output/" + name).c_str(), frames, rate, true, false);
    benchmark::RegisterBenchmark(("input/" + name).c_str(), frames, rate, true, true);
    benchmark::RegisterBenchmark(("silence/" + name).c_str(), frames, rate, false, false);
  }
  benchmark::RegisterBenchmark("redesign", redesign);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 5 && std::strcmp(argv[1], "count") == 0) {
    return countOnly(argv + 2);
  }
  registerAll();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
