// The cost of the sample-rate converter around an engine that does nothing.
//
//   bench_resample                     time per host frame (Google Benchmark)
//   bench_resample count RATE BLOCKS   plays BLOCKS blocks of 128 frames at RATE Hz and ends: with the engine sounding
//     output|input|silence|outs|rests  alone, with the host's input sounding too, all silent, or with nine outs beside
//     [sse2]                           the main one, which sound or not. Count the instructions of two runs with
//                                      different numbers of blocks; their difference, divided by the additional frames,
//                                      is the cost of a frame. With `sse2`, in registers of 128 bits.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/resample/CFsConverterWrapper.h"
#include "platform/CpuFeatures.h"

namespace {

using namespace tesh::bramel::vst;

constexpr std::int32_t kFrames = 128;

/// Writes only the first sample of each output, so that the resampler cannot skip silence.
class Engine : public CFsConvListener {
 public:
  Engine(bool isSounding, bool haveOutsSound)
      : level(isSounding ? 0.5F : 0.0F), outLevel(haveOutsSound ? 0.5F : 0.0F) {}
  void onProcess(float**, std::span<float*> outputs, std::int32_t frames) override {
    for (std::size_t channel = 0; frames > 0 && channel < outputs.size(); ++channel) {
      outputs[channel][0] = channel < 2 ? level : outLevel;
    }
  }

 private:
  float level;
  float outLevel;
};

enum class Outs { none, resting, sounding };

class Host {
 public:
  Host(float rate, bool hasOutput, bool hasInput, Outs outs = Outs::none)
      : engine(hasOutput, outs == Outs::sounding),
        converter(engine),
        hasInputs(hasInput),
        channels(outs == Outs::none ? 2 : CFsConverterWrapper::kMostChannels, std::vector<float>(kFrames)) {
    for (std::vector<float>& channel : channels) {
      outputs.push_back(channel.data());
    }
    converter.setSampleRate(rate);
    if (outs != Outs::none) {
      converter.makeOuts();
    }
  }

  void play() {
    std::array<float*, 2> in{input.data(), input.data()};
    converter.processOuts(hasInputs ? in.data() : nullptr, outputs, kFrames);
    benchmark::DoNotOptimize(outputs[0]);
  }

 private:
  Engine engine;
  CFsConverterWrapper converter;
  bool hasInputs;
  std::vector<float> input = std::vector<float>(kFrames, 0.25F);
  std::vector<std::vector<float>> channels;
  std::vector<float*> outputs;
};

void frames(benchmark::State& state, float rate, bool hasOutput, bool hasInput) {
  Host host(rate, hasOutput, hasInput);
  for (auto _ : state) {
    host.play();
  }
  state.SetItemsProcessed(state.iterations() * kFrames);
}

void redesign(benchmark::State& state) {
  Engine engine(false, false);
  CFsConverterWrapper converter(engine);
  for (auto _ : state) {
    converter.setSampleRate(48000.0F);
  }
}

int countOnly(char** arguments) {
  const std::string_view mode = arguments[2];
  const Outs outs = mode == "outs" ? Outs::sounding : mode == "rests" ? Outs::resting : Outs::none;
  Host host(std::strtof(arguments[0], nullptr), mode != "silence", mode == "input", outs);
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
  if ((argc == 5 || argc == 6) && std::strcmp(argv[1], "count") == 0) {
    using namespace tesh::bramel::platform;
    const VectorLimit limit(argc == 6 ? VectorSet::baseline : VectorSet::avx2);
    return countOnly(argv + 2);
  }
  registerAll();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
