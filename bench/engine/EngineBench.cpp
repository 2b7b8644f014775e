// The cost of the whole engine behind its frame: voices, idling, wave changes and construction.
//
//   bench_engine                     time (Google Benchmark)
//   bench_engine count SCENE BLOCKS  runs BLOCKS blocks of 128 frames of a scene and ends. Count the instructions of
//                                    two runs with different numbers of blocks; their difference, divided by the
//                                    additional frames, is the cost of a frame. Scenes: dry8, dry4, dry1, decay8 and
//                                    decay1 (envelopes on the move), dry8short (blocks of 64), wet8 (through the
//                                    effect), idle (effect bypassed), rest (default effect), out8 and outs8 (dry8
//                                    with one pad's own out connected, and with all outs); behind the sample-rate
//                                    converter, in blocks of 64 frames at 48 kHz: host8, host8wet, host1, hostrest
//   bench_engine count KERNEL BLOCKS the same for eight voices alone on one kernel: SSE2, SSE4.1 or AVX2
//   bench_engine count wave BLOCKS   changes a six-second stereo wave BLOCKS times, each in a block of 64 with its note
//   bench_engine count whole BLOCKS  the same without notes, with all of the wave read each time
//   bench_engine count build BLOCKS  builds the engine BLOCKS times
//   bench_engine memory              prints what one more engine adds to the resident memory of this process
// SPDX-License-Identifier: GPL-3.0-or-later
#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include <unistd.h>

#include "engine/SivrayPlugin.h"
#include "host/resample/CFsConverterWrapper.h"
#include "support/SampleFolder.h"

namespace {

using namespace tesh::bramel::plugin::sivray;
using Plugin = SivrayPlugin<VstXSynth>;

constexpr int kFrames = 128;
constexpr int kWaveFrames = 264598;
constexpr std::uint32_t kEffectType = parameterId(kEffectGroup, 0);
constexpr std::uint32_t kMasterOut = parameterId(kMasterGroup, 0);
constexpr int kBypass = 0;
constexpr int kDefaultEffect = 12;

/// Blocks between hits: the shortest sound of a scene has almost ended by then.
constexpr int kBlocksPerHit = 1500;

struct Scene {
  std::string_view name;
  int voices;
  int effect;
  float send;
  float egTime = 1.0F;
  int frames = kFrames;
  std::size_t padOuts = 0;
  float hostRate = 44100.0F;
};

constexpr float kHostRate = 48000.0F;

constexpr std::array<Scene, 15> kScenes{{{"dry8", 8, kBypass, 0.0F},
                                         {"dry8short", 8, kBypass, 0.0F, 1.0F, kFrames / 2},
                                         {"dry4", 4, kBypass, 0.0F},
                                         {"dry1", 1, kBypass, 0.0F},
                                         {"decay8", 8, kBypass, 0.0F, 100.0F / 127.0F},
                                         {"decay1", 1, kBypass, 0.0F, 100.0F / 127.0F},
                                         {"wet8", 8, kDefaultEffect, 1.0F},
                                         {"host8", 8, kBypass, 0.0F, 1.0F, kFrames / 2, 0, kHostRate},
                                         {"host8wet", 8, kDefaultEffect, 1.0F, 1.0F, kFrames / 2, 0, kHostRate},
                                         {"host1", 1, kBypass, 0.0F, 1.0F, kFrames / 2, 0, kHostRate},
                                         {"hostrest", 0, kDefaultEffect, 0.0F, 1.0F, kFrames / 2, 0, kHostRate},
                                         {"idle", 0, kBypass, 0.0F},
                                         {"rest", 0, kDefaultEffect, 0.0F},
                                         {"out8", 8, kBypass, 0.0F, 1.0F, kFrames, 1},
                                         {"outs8", 8, kBypass, 0.0F, 1.0F, kFrames, 9}}};

support::SampleFolder makeFolder() {
  std::vector<support::Wave> waves;
  for (std::uint32_t i = 0; i < 9; ++i) {
    waves.push_back({"bench", support::fallingNoise(i, kWaveFrames), support::fallingNoise(i + 20, kWaveFrames)});
  }
  return support::SampleFolder(waves);
}

class Player : public tesh::bramel::vst::CFsConvListener {
 public:
  explicit Player(const Scene& playedScene) : scene(playedScene), converter(*this) {
    set(kMasterOut, 100.0F / 127.0F);
    set(kEffectType, static_cast<float>(scene.effect) / 29.0F);
    for (std::uint32_t pad = 0; pad < 8; ++pad) {
      set(parameterId(pad, 1), 0.0F);
      set(parameterId(pad, 4), 23.0F / 48.0F);
      set(parameterId(pad, 7), scene.egTime);
      set(parameterId(pad, 13), scene.send);
    }
    for (std::size_t channel = 0; channel < 2 * (1 + scene.padOuts); ++channel) {
      outputs[channel] = samples[channel].data();
    }
    block.midiIn = &midi;
    converter.setSampleRate(scene.hostRate);
    playFrames();
    plugin.activate();
    for (int i = 0; i < 20; ++i) {
      playBlock();
    }
  }

  void playBlock() {
    if (played++ % kBlocksPerHit == 0) {
      for (int voice = 0; voice < scene.voices; ++voice) {
        const std::array<std::uint8_t, 3> hit{0x90, static_cast<std::uint8_t>(36 + voice), 100};
        midi.emplace_back(hit, 0U);
      }
    }
    playFrames();
  }

 private:
  void playFrames() {
    if (scene.hostRate == kHostRate) {
      converter.process(nullptr, outputs.data(), scene.frames);
    } else {
      const auto channels = scene.padOuts > 0 ? tesh::vimo::kAllChannels : tesh::vimo::kMainChannels;
      render(outputs.data(), channels, scene.frames);
    }
  }

  void onProcess(float**, std::span<float*> engineOutputs, std::int32_t frames) override {
    render(engineOutputs.data(), tesh::vimo::kMainChannels, frames);
  }
  bool gaveSilence() const override { return block.isSilent; }
  void render(float** engineOutputs, std::int32_t count, std::int32_t frames) {
    block.outputs = engineOutputs;
    block.outputCount = count;
    block.frames = frames;
    plugin.process(block);
    midi.clear();
  }

  void set(std::uint32_t id, float value) { plugin.setParameter(id, value); }

  const Scene& scene;
  Plugin plugin;
  tesh::bramel::vst::CFsConverterWrapper converter;
  std::array<std::array<float, kFrames>, tesh::vimo::kAllChannels> samples{};
  std::array<float*, tesh::vimo::kAllChannels> outputs{};
  std::vector<tesh::vimo::MidiEvent> midi;
  tesh::vimo::ProcessBlock block;
  int played = 0;
};

/// Eight voices on one kernel, without effect and output stage.
class Voices {
 public:
  explicit Voices(const VoiceKernel& kernel) {
    constexpr std::array<std::int32_t, kPadParameterCount> kSettings{0,  0,  0, 0, 23, 100, 0,  127, 100,
                                                                     64, 30, 0, 0, 0,  1,   64, 0,   0};
    for (int pad = 0; pad < kPadCount; ++pad) {
      PadValues& values = pads[static_cast<std::size_t>(pad)];
      for (std::size_t i = 0; i < kSettings.size(); ++i) {
        values.set(i, kSettings[i]);
      }
      std::int32_t wave = pad;
      core.waveChange().setValue(pad, &wave);
      allocator.setPad(pad, &values);
    }
    core.makeVoices(allocator, kernel);
    core.waves().finish();
  }

  void playBlock() {
    for (int pad = 0; played % kBlocksPerHit == 0 && pad < kPadCount; ++pad) {
      allocator.noteOn(VoiceAllocator::kFirstNote + pad, 100);
    }
    ++played;
    allocator.render({dry.data(), effect.data()}, kFrames);
  }

 private:
  PcmFile file{kSampleFolder};
  DrumCore core{file, kPadCount, kSlotFrames};
  VoiceAllocator allocator{core, kPadCount};
  std::array<PadValues, static_cast<std::size_t>(kPadCount)> pads;
  std::array<std::int16_t, static_cast<std::size_t>(2 * (kFrames + kBusSlack))> dry{};
  std::array<std::int16_t, static_cast<std::size_t>(2 * (kFrames + kBusSlack))> effect{};
  int played = 0;
};

class WaveChanger {
 public:
  /// Changes the wave in a block with its first note.
  void change() {
    choose();
    engine.noteOn(VoiceAllocator::kFirstNote, 100);
    engine.render(left.data(), right.data(), static_cast<int>(left.size()));
    engine.readOn();
  }

  void changeWhole() {
    choose();
    engine.loadWaves();
  }

 private:
  void choose() { engine.setParameter(parameterId(0, 0), static_cast<float>(++wave % 2) / 8.0F); }

  PcmFile file{kSampleFolder};
  DrumEngine engine{file, kPadCount, kSlotFrames};
  std::array<float, 64> left{};
  std::array<float, 64> right{};
  int wave = 0;
};

void playScene(benchmark::State& state, const Scene& scene) {
  Player player(scene);
  for (auto _ : state) {
    player.playBlock();
  }
  state.SetItemsProcessed(state.iterations() * scene.frames);
}

void changeWave(benchmark::State& state, void (WaveChanger::*change)()) {
  WaveChanger changer;
  for (auto _ : state) {
    (changer.*change)();
  }
}

/// Builds an engine while `others` engines exist.
void build(benchmark::State& state, int others) {
  std::vector<std::unique_ptr<Plugin>> alive;
  alive.reserve(static_cast<std::size_t>(others));
  for (int i = 0; i < others; ++i) {
    alive.push_back(std::make_unique<Plugin>());
  }
  for (auto _ : state) {
    benchmark::DoNotOptimize(std::make_unique<Plugin>());
  }
}

int countKernel(const VoiceKernel& kernel, int blocks) {
  Voices voices(kernel);
  for (int i = 0; i < blocks; ++i) {
    voices.playBlock();
  }
  return 0;
}

/// Returns the resident memory of this process in kilobytes.
long residentKilobytes() {
  long size = 0;
  long resident = 0;
  if (std::FILE* const file = std::fopen("/proc/self/statm", "r")) {
    if (std::fscanf(file, "%ld %ld", &size, &resident) != 2) {
      resident = 0;
    }
    std::fclose(file);
  }
  return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

int printMemory() {
  const long before = residentKilobytes();
  const Player player(kScenes[8]);
  std::printf("one engine, every slot filled: %ld KiB\n", residentKilobytes() - before);
  return 0;
}

int countOnly(std::string_view name, int blocks) {
  if (name == "wave" || name == "whole") {
    WaveChanger changer;
    for (int i = 0; i < blocks; ++i) {
      name == "wave" ? changer.change() : changer.changeWhole();
    }
    return 0;
  }
  if (name == "build") {
    for (int i = 0; i < blocks; ++i) {
      const auto plugin = std::make_unique<Plugin>();
    }
    return 0;
  }
  for (const VoiceKernel& kernel : voiceKernels()) {
    if (kernel.name == name && tesh::bramel::platform::supports(kernel.needs)) {
      return countKernel(kernel, blocks);
    }
  }
  for (const Scene& scene : kScenes) {
    if (scene.name == name) {
      Player player(scene);
      for (int i = 0; i < blocks; ++i) {
        player.playBlock();
      }
      return 0;
    }
  }
  std::fprintf(stderr, "bench_engine: no scene or kernel of this name\n");
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  const support::SampleFolder folder = makeFolder();
  if (argc == 4 && std::string_view(argv[1]) == "count") {
    return countOnly(argv[2], std::atoi(argv[3]));
  }
  if (argc == 2 && std::string_view(argv[1]) == "memory") {
    return printMemory();
  }
  for (const Scene& scene : kScenes) {
    benchmark::RegisterBenchmark(("play/" + std::string(scene.name)).c_str(), playScene, scene);
  }
  benchmark::RegisterBenchmark("wave change/its block", changeWave, &WaveChanger::change)
      ->Unit(benchmark::kMicrosecond);
  benchmark::RegisterBenchmark("wave change/whole", changeWave, &WaveChanger::changeWhole)
      ->Unit(benchmark::kMicrosecond);
  benchmark::RegisterBenchmark("build/first", build, 0)->Unit(benchmark::kMicrosecond);
  benchmark::RegisterBenchmark("build/second", build, 1)->Unit(benchmark::kMicrosecond);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
