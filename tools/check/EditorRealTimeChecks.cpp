// The cost of an open editor: for the audio thread and the message thread while everything moves, and at rest.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef __linux__

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <iterator>
#include <thread>

#include "check/CallCounter.h"
#include "check/EditorScene.h"
#include "check/InstructionCounter.h"
#include "check/Process.h"
#include "check/Scene.h"
#include "check/ThreadOwners.h"
#include "formhost/FormFile.h"
#include "viewmodels/texts/PanelMacros.h"

namespace sivray::check {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kRoundRate = 48000;
constexpr int kRoundBlock = 64;
constexpr int kBlocksOfRound = kRoundRate / kRoundBlock / 2;
constexpr std::chrono::nanoseconds kBlockTime{1'000'000'000LL * kRoundBlock / kRoundRate};

/// A value for every parameter that differs in each block. A sample parameter stays within its step, because reading
/// another sample is not the editor's cost.
void moveAll(hosting::HostedPlugin& host, int block) {
  const float value = static_cast<float>(block % 97) / 97.0F;
  for (int index = 0; index < host.parameterCount(); ++index) {
    const bool isEffect = index == static_cast<int>(tesh::bramel::panel::kEffectTypeMacro);
    host.setParameter(index, choosesWave(index) || isEffect ? value * 1e-4F : value);
  }
}

struct RoundCost {
  double others = 0.0;  ///< CPU time of the threads that the panel started, relative to the elapsed time.
  std::int64_t mostWrites = 0;
  CallCounts counts;
};

/// For a form whose message thread is this one, lets it run.
void restUntil(Clock::time_point end) {
  constexpr std::chrono::milliseconds kTurn{1};
  while (formhost::isMessageThread() && Clock::now() + kTurn < end) {
    formhost::rest(kTurn);
  }
  std::this_thread::sleep_until(end);
}

/// Half a second of real time, because the message thread depends on the clock.
RoundCost playRound(EditorScene& scene, const std::vector<int>& panelThreads) {
  RoundCost cost;
  const auto start = Clock::now();
  const double before = secondsOf(panelThreads);
  for (int block = 0; block < kBlocksOfRound; ++block) {
    const std::int64_t writes = cost.counts.writes;
    {
      const CallCounter counter(cost.counts);
      moveAll(scene.host, block);
      scene.render(kRoundBlock);
    }
    cost.mostWrites = std::max(cost.mostWrites, cost.counts.writes - writes);
    restUntil(start + (block + 1) * kBlockTime);
  }
  cost.others = (secondsOf(panelThreads) - before) / std::chrono::duration<double>(Clock::now() - start).count();
  return cost;
}

/// Counts the library's calls in a block in which everything moves, after one that a panel had time to follow. For VST
/// 3, calls through the host are omitted: the counter slows the host so much that it notices changed key names between
/// two values, and reads all of them.
std::int64_t instructionsOf(EditorScene& scene, const CheckSettings& settings) {
  constexpr std::chrono::milliseconds kToFollow{100};
  InstructionCounts counts;
  moveAll(scene.host, 0);
  scene.render(kRoundBlock);
  formhost::rest(kToFollow);
  const bool areMovesCounted = settings.form != hosting::Form::vst3;
  if (!areMovesCounted) {
    moveAll(scene.host, 1);
  }
  {
    const InstructionCounter counter(counts, ModuleRange::of(settings.moduleName()));
    if (areMovesCounted) {
      moveAll(scene.host, 1);
    }
    scene.render(kRoundBlock);
  }
  return counts.library;
}

/// The threads that run now and did not run before.
std::vector<int> newThreads(const std::vector<int>& before) {
  const std::vector<int> now = threadsOfProcess();
  std::vector<int> added;
  std::set_difference(now.begin(), now.end(), before.begin(), before.end(), std::back_inserter(added));
  return added;
}

Verdict whilePlaying(const CheckSettings& settings) {
  constexpr double kMostMore = 1.1;
  // A change takes the instrument's lock for a few stores, and so does the panel when it reads a value.
  constexpr std::int64_t kLocksToAWait = 1000;
  constexpr double kMostOfACore = 0.25;
  const auto library = settings.load();
  EditorScene scene(*library);
  const std::vector<int> before = threadsOfProcess();
  scene.open();
  const std::vector<int> panelThreads = newThreads(before);
  scene.host.start(static_cast<float>(kRoundRate), kRoundBlock);
  playRound(scene, panelThreads);
  // The minimum of several rounds, because other programs can only add time.
  RoundCost open{1e9, 0, {}};
  std::int64_t fewestWaits = INT64_MAX;
  const int rounds = settings.full ? 20 : 4;
  for (int round = 0; round < rounds; ++round) {
    const RoundCost cost = playRound(scene, panelThreads);
    fewestWaits = std::min(fewestWaits, cost.counts.waits);
    open = {std::min(open.others, cost.others), std::max(open.mostWrites, cost.mostWrites), open.counts + cost.counts};
  }
  const auto whileOpen = static_cast<double>(instructionsOf(scene, settings));
  scene.close();
  const auto whileClosed = static_cast<double>(instructionsOf(scene, settings));
  const CallCounts& counts = open.counts;
  const bool clean = counts.allocations == 0 && counts.frees == 0 && counts.files == 0 &&
                     fewestWaits * rounds * kLocksToAWait <= counts.locks && open.mostWrites <= 1;
  const double more = whileClosed > 0.0 ? whileOpen / whileClosed : 0.0;
  const bool isCounted = !InstructionCounter::works() || (more > 0.0 && more <= kMostMore);
  const bool cheap = isSanitized() || (isCounted && open.others <= kMostOfACore);
  return verdict(
      clean && cheap,
      "%lld allocations, %lld frees, %lld files, %lld waits in %lld locks, at most %lld writes a block; %.2f "
      "times the instructions with it closed (%.0f), %.1f %% of a core on the panel's threads",
      static_cast<long long>(counts.allocations), static_cast<long long>(counts.frees),
      static_cast<long long>(counts.files), static_cast<long long>(counts.waits), static_cast<long long>(counts.locks),
      static_cast<long long>(open.mostWrites), more, whileClosed, 100.0 * open.others);
}

struct Rest {
  double share = 1.0;    ///< Of a core, taken by the whole process in the quietest look.
  double wakeUps = 0.0;  ///< A second, of the plug-in's own threads.
};

/// Measures the process while nothing happens, at least three times, because the first measurement may include the end
/// of earlier work, and until one is at most `most`. On a busy machine some measurements are higher, because the caches
/// are cold after each sleep.
Rest restingUse(std::chrono::milliseconds time, double most, const ModuleRange& plugin) {
  constexpr int kLeastLooks = 3;
  constexpr int kMostLooks = 12;
  const std::vector<int> threads = threadsOf(plugin);
  const std::int64_t wakeUpsBefore = wakeUpsOf(threads);
  const double seconds = std::chrono::duration<double>(time).count();
  Rest rest;
  int looks = 0;
  for (; looks < kLeastLooks || (looks < kMostLooks && rest.share > most); ++looks) {
    const double before = processSeconds();
    formhost::rest(time);
    rest.share = std::min(rest.share, (processSeconds() - before) / seconds);
  }
  rest.wakeUps = static_cast<double>(wakeUpsOf(threads) - wakeUpsBefore) / (looks * seconds);
  return rest;
}

Verdict atRest(const CheckSettings& settings) {
  constexpr double kMostOpen = 0.002;
  constexpr double kMostClosed = 0.001;
  constexpr double kMostWakeUps = 5.0;
  // Waiting for a repaint must not be part of the measurement.
  constexpr std::chrono::milliseconds kAfterPainting{300};
  const std::chrono::milliseconds time(settings.count(1000, 10000));
  const auto library = settings.load();
  EditorScene scene(*library);
  const ModuleRange plugin = ModuleRange::of(settings.moduleName());
  scene.show();
  scene.render();
  scene.window.moveTo({4, 464});  // No control is there, so no tooltip opens.
  const std::uint64_t picture = scene.settledPicture();
  formhost::rest(kAfterPainting);
  const Rest open = restingUse(time, kMostOpen, plugin);
  const bool isStill = scene.window.picture() == picture;
  scene.close();
  scene.letSettle();
  const Rest closed = restingUse(time, kMostClosed, plugin);
  // JUCE's host itself wakes a thousand times a second, and sixty times for an LV2 panel.
  constexpr double kMostWithHost = 0.02;
  const bool isCheap = settings.isVst2() ? open.share <= kMostOpen && closed.share <= kMostClosed
                                         : open.share <= closed.share + kMostWithHost;
  const bool isQuiet = isCheap && open.wakeUps <= kMostWakeUps && closed.wakeUps <= kMostWakeUps;
  return verdict(isStill && (isSanitized() || isQuiet),
                 "%.3f %% of a core and %.1f wake-ups a second of the plug-in's threads open, %.3f %% and %.1f closed",
                 100.0 * open.share, open.wakeUps, 100.0 * closed.share, closed.wakeUps);
}

/// On every page the panel must show the last values, independent of earlier ones.
Verdict afterAutomation(const CheckSettings& settings) {
  const int rounds = settings.count(100, 1000);
  const auto library = settings.load();
  EditorScene scene(*library);
  scene.show();
  const auto setAll = [&](float value) {
    for (int index = 0; index < scene.host.parameterCount(); ++index) {
      scene.host.setParameter(index, value);
    }
    for (int block = 0; block < 4; ++block) {
      scene.render();
    }
  };
  int right = 0;
  for (std::size_t page = 0; page < 3; ++page) {
    scene.showPage(page);
    scene.window.moveTo({4, 464});
    setAll(0.25F);
    const std::uint64_t low = scene.settledPicture();
    setAll(0.75F);
    const std::uint64_t high = scene.settledPicture();
    Random random(201);
    for (int round = 0; round < rounds / 3; ++round) {
      setAll(random.unit());
    }
    setAll(0.25F);
    const bool isLow = scene.settledPicture() == low;
    right += isLow && low != high ? 1 : 0;
  }
  return verdict(right == 3, "%d rounds of all parameters, then %d of 3 pages show the last values", rounds, right);
}

}  // namespace

std::vector<Check> editorRealTimeChecks() {
  return {
      {"editor while playing", whilePlaying}, {"editor at rest", atRest}, {"editor after automation", afterAutomation}};
}

}  // namespace sivray::check

#endif
