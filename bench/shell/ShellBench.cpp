// The cost that the shell adds to a block, and of saving and loading a state.
//
//   bench_shell               time (Google Benchmark)
//   bench_shell count BLOCKS  runs BLOCKS blocks in which nothing happens. Count the instructions of two runs with
//                             different numbers of blocks; their difference, divided by the additional blocks, is the
//                             cost of a block.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string_view>

#include "shell/InstrumentScene.h"
#include "support/QuietGenerator.h"
#include "support/QuietSides.h"

namespace {

using namespace instrument;

/// The shell and the macro layer around a generator that renders nothing.
struct Scene {
  Scene() {
    auto processor = std::make_unique<BramelInstrument::Processor>("Sivray", std::make_unique<vimo::QuietGenerator>());
    for (std::uint32_t i = 0; i < kPadValues; ++i) {
      auto set = vimo::makeMacroSet(vimo::MacroSetType::linear);
      set->setTargetId(i);
      processor->controller().addMacro().addSet(std::move(set));
    }
    shell = std::make_unique<BramelInstrument>(std::move(processor));
    shell->setUICallback(editor);
    shell->setTooltipProvider(std::make_unique<bramel::tooltip::SivrayTooltipProvider>());
  }

  void run() {
    shell->process(nullptr, outputs.data(), kFrames);
    benchmark::DoNotOptimize(left);
  }

  static constexpr std::int32_t kFrames = 128;
  std::array<float, kFrames> left{};
  std::array<float, kFrames> right{};
  std::array<float*, 2> outputs{left.data(), right.data()};
  std::shared_ptr<support::QuietEditor> editor = std::make_shared<support::QuietEditor>();
  std::unique_ptr<BramelInstrument> shell;
};

void idleBlock(benchmark::State& state) {
  Scene scene;
  for (auto _ : state) {
    scene.run();
  }
  state.SetItemsProcessed(state.iterations() * Scene::kFrames);
}
BENCHMARK(idleBlock);

/// Measures a block in which several parameters move; the benchmark's argument is their number.
void movingBlock(benchmark::State& state) {
  Scene scene;
  float value = 0.0F;
  for (auto _ : state) {
    value = value < 1.0F ? value + 0.001F : 0.0F;
    for (std::int64_t id = 0; id < state.range(0); ++id) {
      scene.shell->setParameter(static_cast<std::uint64_t>(id), value);
    }
    scene.run();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(movingBlock)->Arg(1)->Arg(128);

void notes(benchmark::State& state) {
  Scene scene;
  const std::array<std::uint8_t, 3> note{0x90, 36, 100};
  for (auto _ : state) {
    for (std::int32_t i = 0; i < 16; ++i) {
      scene.shell->sendMidi(note.data(), note.size(), i * 8);
    }
    scene.run();
  }
  state.SetItemsProcessed(state.iterations() * 16);
}
BENCHMARK(notes);

/// Measures saving a state; the argument is the number of factory programs, which every state carries.
void saveState(benchmark::State& state) {
  const support::SampleFolder folder(support::assortedWaves(12, 900));
  const auto shell = makeInstrument(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    benchmark::DoNotOptimize(shell->getState());
  }
}
BENCHMARK(saveState)->Arg(2)->Arg(128)->Unit(benchmark::kMicrosecond);

void loadState(benchmark::State& state) {
  const support::SampleFolder folder(support::assortedWaves(12, 900));
  Player player(makeInstrument(static_cast<int>(state.range(0))));
  const Bytes saved = player.shell->getState();
  for (auto _ : state) {
    player.shell->setState(saved.data(), saved.size());
    player.left.clear();
    player.right.clear();
    player.play(1);  // Applies the queued values, as a host's blocks between two loads do.
  }
}
BENCHMARK(loadState)->Arg(2)->Arg(128)->Unit(benchmark::kMicrosecond);

void changeRate(benchmark::State& state) {
  Scene scene;
  for (auto _ : state) {
    scene.shell->setSampleRate(48000.0F);
  }
}
BENCHMARK(changeRate)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
  if (argc == 3 && std::string_view(argv[1]) == "count") {
    Scene scene;
    for (int block = std::atoi(argv[2]); block > 0; --block) {
      scene.run();
    }
    return 0;
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
