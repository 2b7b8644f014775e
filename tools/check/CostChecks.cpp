// The cost of a form: the instructions of its library for the same blocks, compared with those of VST 2.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "check/Check.h"
#include "check/InstructionCounter.h"
#include "check/Scene.h"

namespace sivray::check {
namespace {

using hosting::HostedPlugin;

/// Eight voices through an effect.
struct CountedScene {
  int frames = 0;         ///< Of a block.
  bool movesAll = false;  ///< All parameters that choose no wave move in each block.
};

/// The effect's type and edits stay: crossfades between effects are the engine's cost, not the form's.
bool isMoved(int index) {
  constexpr int kFirstOfEffect = 96;
  constexpr int kLastOfEffect = 98;
  return !choosesWave(index) && (index < kFirstOfEffect || index > kLastOfEffect);
}

void playBlock(HostedPlugin& plugin, const CountedScene& scene, int number, std::vector<float>& left,
               std::vector<float>& right) {
  constexpr int kPads = 8;
  for (int index = 0; scene.movesAll && index < plugin.parameterCount(); ++index) {
    if (isMoved(index)) {
      plugin.setParameter(index, static_cast<float>((7 * number + index) % 100) / 100.0F);
    }
  }
  plugin.queueNote(36 + number % kPads, 100, 7);
  plugin.queueNote(36 + 3 * number % kPads, 90, 70);
  plugin.process(left.data(), right.data(), scene.frames);
}

/// Counts on another thread than the message thread, as hosts render. On the message thread, JUCE's VST 3 host would
/// notify its listeners of each value at once.
InstructionCounts countScene(const hosting::PluginFile& file, const std::string& module, const CountedScene& scene,
                             int blocks) {
  constexpr int kUncounted = 16;  // All voices sound, and nothing is called for the first time.
  const auto plugin = file.makeInstance();
  plugin->start(48000.0F, scene.frames);
  warm(*plugin, PadSends::on);
  InstructionCounts counts;
  std::thread audio([&] {
    std::vector<float> left(static_cast<std::size_t>(scene.frames));
    std::vector<float> right(static_cast<std::size_t>(scene.frames));
    for (int number = 0; number < kUncounted; ++number) {
      playBlock(*plugin, scene, number, left, right);
    }
    const InstructionCounter counter(counts, ModuleRange::of(module));
    for (int number = kUncounted; number < kUncounted + blocks; ++number) {
      playBlock(*plugin, scene, number, left, right);
    }
  });
  audio.join();
  return counts;
}

Verdict cost(const CheckSettings& settings) {
  // Short blocks in which nothing moves are judged by instructions per frame: with a ratio, every speed-up of the
  // engine, which all forms share, would look like a loss of the form.
  constexpr double kMostMore = 0.02;
  constexpr double kMostMoreAtRest = 10.0;
  constexpr std::array<CountedScene, 3> kScenes{{{512, false}, {128, true}, {128, false}}};
  if (!InstructionCounter::works()) {
    return verdict(true, "not judged here");
  }
  const auto form = settings.load();
  const auto vst2 = settings.loadVst2();
  const std::string vst2Module = std::filesystem::absolute(settings.libraryPath).lexically_normal().string();
  const int blocks = settings.full ? 8 : 1;
  std::array<double, kScenes.size()> more{};
  std::array<double, kScenes.size()> moreWithHost{};
  double moreAtRest = 0.0;
  for (std::size_t scene = 0; scene < kScenes.size(); ++scene) {
    const InstructionCounts ours = countScene(*form, settings.moduleName(), kScenes[scene], blocks);
    const InstructionCounts base = countScene(*vst2, vst2Module, kScenes[scene], blocks);
    if (ours.library == 0 || base.library == 0) {
      return verdict(false, "no instruction of the library was counted");
    }
    const auto ratio = [](std::int64_t a, std::int64_t b) { return static_cast<double>(a) / static_cast<double>(b); };
    more[scene] = ratio(ours.library, base.library) - 1.0;
    moreWithHost[scene] = ratio(ours.library + ours.program, base.library + base.program) - 1.0;
    moreAtRest = ratio(ours.library - base.library, std::int64_t{blocks} * kScenes[scene].frames);
  }
  return verdict(
      more[0] <= kMostMore && more[1] <= kMostMore && moreAtRest <= kMostMoreAtRest,
      "%+.2f %% instructions over VST 2 in 512 frames, %+.2f %% in 128 in which all parameters move, %+.2f %% "
      "in 128 in which none moves, %.1f a frame (with the host's own %+.1f %%, %+.1f %% and %+.1f %%)",
      100.0 * more[0], 100.0 * more[1], 100.0 * more[2], moreAtRest, 100.0 * moreWithHost[0], 100.0 * moreWithHost[1],
      100.0 * moreWithHost[2]);
}

}  // namespace

std::vector<Check> costChecks() { return {{"cost over VST 2", cost, CheckedForms::others}}; }

}  // namespace sivray::check
