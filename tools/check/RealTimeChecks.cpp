// Checks of real-time behaviour: the audio thread's system calls, the cost of a crowded block, and leaks over hours.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <thread>

#include "check/CallCounter.h"
#include "check/Check.h"
#include "check/InstructionCounter.h"
#include "check/Process.h"
#include "check/Scene.h"
#include "claphost/ClapInstance.h"
#include "claphost/ClapLibrary.h"
#include "claphost/KitList.h"

namespace sivray::check {
namespace {

using hosting::HostedPlugin;

/// Makes the changes that a song makes between two blocks.
void stir(HostedPlugin& host, Random& random, int block) {
  for (int i = 0; i < 6; ++i) {
    host.queueNote(36 + random.below(8), random.below(128), random.below(256));
  }
  const std::array<std::uint8_t, 3> controller{0xB0, static_cast<std::uint8_t>(1 + random.below(119)),
                                               static_cast<std::uint8_t>(random.below(128))};
  const std::array<std::uint8_t, 3> bend{0xE0, static_cast<std::uint8_t>(random.below(128)),
                                         static_cast<std::uint8_t>(random.below(128))};
  host.queueMidi(controller, random.below(256));
  host.queueMidi(bend, random.below(256));
  for (int i = 0; i < 8; ++i) {
    if (const int index = random.below(host.parameterCount()); !choosesWave(index)) {
      host.setParameter(index, random.unit());
    }
  }
  host.tempo = 60.0 + random.below(180);
  host.playing = block / 100 % 2 == 0;
}

/// Counts the calls of blocks at three rates, and adds the blocks to `blocks`.
CallCounts callsOfBlocks(const CheckSettings& settings, std::int64_t& blocks) {
  const auto library = settings.load();
  CallCounts counts;
  for (const float rate : {kPlainRate, 48000.0F, 96000.0F}) {
    const auto host = library->makeInstance();
    // In the other forms JUCE's host is not judged, but its wrapper inside the library is.
    std::optional<CountedModule> module;
    if (!settings.isVst2()) {
      module.emplace(settings.moduleName());
    }
    host->start(rate, 256);
    std::vector<float> left(256);
    std::vector<float> right(256);
    Random random(131);
    settle(*host);
    for (int block = 0; block < settings.count(2000, 20000); ++block, ++blocks) {
      stir(*host, random, block);
      const CallCounter counter(counts);
      host->process(left.data(), right.data(), 1 + random.below(256));
    }
  }
  return counts;
}

/// Looks again after a wait. The message thread of the other forms takes the instrument's lock for a few stores when it
/// reads the texts of moved parameters, and a busy machine may stop it there. What waits by itself does so in each
/// look.
Verdict callsInside(const CheckSettings& settings) {
  if (!CallCounter::works()) {
    return verdict(true, "not judged here");
  }
  const int mostLooks = settings.isVst2() ? 1 : 3;
  CallCounts counts;
  std::int64_t fewestWaits = INT64_MAX;
  std::int64_t blocks = 0;
  for (int look = 0; look < mostLooks && fewestWaits > 0; ++look) {
    const CallCounts more = callsOfBlocks(settings, blocks);
    fewestWaits = std::min(fewestWaits, more.waits);
    counts = counts + more;
  }
  const bool clean = counts.allocations == 0 && counts.frees == 0 && counts.files == 0 && fewestWaits == 0;
  return verdict(clean, "%lld blocks: %lld allocations, %lld frees, %lld files, %lld waits, %.1f free locks a block",
                 static_cast<long long>(blocks), static_cast<long long>(counts.allocations),
                 static_cast<long long>(counts.frees), static_cast<long long>(counts.files),
                 static_cast<long long>(counts.waits), static_cast<double>(counts.locks) / static_cast<double>(blocks));
}

/// Plays two notes in every second block: with or without them, VST 2 takes the shell's lock once, for the block.
Verdict locksInside(const CheckSettings& settings) {
  if (!CallCounter::works() || !settings.isVst2()) {
    return verdict(true, "not judged here");
  }
  constexpr int kBlocks = 1000;
  const auto library = settings.load();
  const auto host = library->makeInstance();
  settle(*host);
  CallCounts counts;
  std::vector<float> left(64);
  std::vector<float> right(64);
  for (int block = 0; block < kBlocks; ++block) {
    if (block % 2 == 0) {
      host->queueNote(36 + block % 8, 1 + block % 127, block % 64);
      host->queueNote(36 + (block + 1) % 8, 1 + block % 127, block % 64);
    }
    const CallCounter counter(counts);
    host->process(left.data(), right.data(), 64);
  }
  return verdict(counts.locks == kBlocks, "%.2f a block, every second with two notes",
                 static_cast<double>(counts.locks) / kBlocks);
}

constexpr double kShortBlockSeconds = 64.0 / 44100.0;

/// Changes all values of a program, the effect among them, and queues a note for each pad. Another thread sets the
/// values, as a host's window does, so that it reads the waves ahead. In the other forms the waves stay: JUCE's host
/// passes values on with the block, which would read the waves itself.
void changeAll(const CheckSettings& settings, HostedPlugin& host, Random& random) {
  std::thread([&] {
    for (int index = 0; index < host.parameterCount(); ++index) {
      if (settings.isVst2() || !choosesWave(index)) {
        host.setParameter(index, random.unit());
      }
    }
  }).join();
  for (int pad = 0; pad < 8; ++pad) {
    host.queueNote(36 + pad, 127, 8 * pad);
  }
}

/// Returns the shares of their duration that many blocks of 64 frames with changes take, ascending.
std::vector<double> sharesOfChangedBlocks(const CheckSettings& settings, HostedPlugin& host, Random& random) {
  std::vector<double> shares;
  std::vector<float> left(64);
  std::vector<float> right(64);
  for (int round = 0; round < settings.count(200, 2000); ++round) {
    changeAll(settings, host, random);
    const double before = threadSeconds();
    host.process(left.data(), right.data(), 64);
    shares.push_back((threadSeconds() - before) / kShortBlockSeconds);
    settle(host);
  }
  std::sort(shares.begin(), shares.end());
  return shares;
}

/// Returns the library's instructions in a changed block of 64 frames; 0 where none are counted, or another form's
/// wrapper would be counted too.
std::int64_t instructionsOfChangedBlock(const CheckSettings& settings, HostedPlugin& host, Random& random) {
  std::vector<float> left(64);
  std::vector<float> right(64);
  InstructionCounts counts;
  if (settings.isVst2()) {
    changeAll(settings, host, random);
    const InstructionCounter counter(counts, ModuleRange::of(settings.moduleName()));
    host.process(left.data(), right.data(), 64);
  }
  return counts.library;
}

/// Judged by instructions, and by the quietest of a few looks at the time: other programs push the block's memory out
/// of the caches, and a thread beside it on the same core halves its speed.
Verdict worstBlock(const CheckSettings& settings) {
  constexpr std::int64_t kMostInstructions = 300'000;
  constexpr double kMostShare = 0.16;
  constexpr int kMostLooks = 5;
  const auto library = settings.load();
  const auto host = library->makeInstance();
  settle(*host);
  Random random(141);
  double median = 1.0;
  double late = 1.0;
  for (int look = 0; look < kMostLooks && median > kMostShare; ++look) {
    const std::vector<double> shares = sharesOfChangedBlocks(settings, *host, random);
    median = std::min(median, shares[shares.size() / 2]);
    late = std::min(late, shares[shares.size() * 95 / 100]);
  }
  const std::int64_t instructions = instructionsOfChangedBlock(settings, *host, random);
  const std::string counted =
      instructions > 0 ? ", " + std::to_string(instructions / 1000) + " thousand instructions in one" : "";
  return verdict(isSanitized() || (median <= kMostShare && instructions <= kMostInstructions),
                 "%.1f %% of the block's time, 95 in 100 below %.1f %%%s", 100.0 * median, 100.0 * late,
                 counted.c_str());
}

constexpr int kEffectSteps = 26;

void chooseEffect(HostedPlugin& host, int step) {
  setNamed(host, "FX Type", static_cast<float>(step) / static_cast<float>(kEffectSteps - 1));
}

/// Plays eight voices through every effect of the panel at 48 kHz, in blocks of 128 frames.
Verdict speed(const CheckSettings& settings) {
  constexpr double kLeastFactor = 120.0;
  constexpr int kRate = 48000;
  const auto library = settings.load();
  const auto host = library->makeInstance();
  host->setSampleRate(static_cast<float>(kRate));
  warm(*host, PadSends::on);
  const std::vector<Hit> hits = hitsOver(kRate, 161, 80);
  double slowest = 1e9;
  int slowestType = 0;
  for (int type = 0; type < kEffectSteps; ++type) {
    chooseEffect(*host, type);
    settle(*host);
    double least = 1e9;
    for (int round = 0; round < settings.count(2, 10); ++round) {
      const double before = threadSeconds();
      play(*host, hits, kRate, blocksOf(128));
      least = std::min(least, threadSeconds() - before);
    }
    if (1.0 / least < slowest) {
      slowest = 1.0 / least;
      slowestType = type;
    }
  }
  return verdict(isSanitized() || slowest >= kLeastFactor,
                 "at least %.0f times real time at 48 kHz and 128 frames (effect step %d)", slowest, slowestType);
}

/// Returns the median of several runs in milliseconds.
template <typename Action>
double millisecondsOf(int runs, Action action) {
  std::vector<double> times;
  for (int run = 0; run < runs; ++run) {
    const double before = threadSeconds();
    action();
    times.push_back(1000.0 * (threadSeconds() - before));
  }
  std::sort(times.begin(), times.end());
  return times[times.size() / 2];
}

Verdict waitingTimes(const CheckSettings& settings) {
  // JUCE's host wraps a state as text and unwraps it, which takes it 7 ms.
  const double mostForState = settings.isVst2() ? 5.0 : 30.0;
  constexpr double kMostForInstance = 80.0;
  const auto library = settings.load();
  const auto host = library->makeInstance();
  settle(*host);
  const std::vector<std::uint8_t> state = host->chunk();
  const int runs = settings.count(20, 200);
  const double saving = millisecondsOf(runs, [&] { host->chunk(); });
  const double loading = millisecondsOf(runs, [&] { host->setChunk(state); });
  const double making = millisecondsOf(runs, [&] { const auto another = library->makeInstance(); });
  const bool fast = saving <= mostForState && loading <= mostForState && making <= kMostForInstance;
  return verdict(isSanitized() || fast, "state saved in %.2f ms and loaded in %.2f ms, an instance made in %.1f ms",
                 saving, loading, making);
}

/// The work of hosts for each plug-in that they find: loading and inspecting it, and for CLAP listing its kits. JUCE's
/// LV2 host also reads all bundles of the system.
Verdict scan(const CheckSettings& settings) {
  constexpr double kMostForLoad = 100.0;
  constexpr double kMostForKits = 20.0;
  const int runs = settings.count(9, 50);
  const double loading = millisecondsOf(runs, [&] { settings.load(); });
  double listing = 0.0;
  std::size_t kits = 0;
  if (settings.form == hosting::Form::clap) {
    const claphost::ClapLibrary library(settings.formPath, settings.parameterNames);
    listing = millisecondsOf(runs, [&] { kits = claphost::findKits(library).size(); });
  }
  const bool fast = (loading <= kMostForLoad || settings.form == hosting::Form::lv2) && listing <= kMostForKits;
  return verdict(isSanitized() || fast, "loaded and looked at in %.1f ms, %zu kits listed in %.1f ms", loading, kits,
                 listing);
}

/// Makes instances and keeps them, as a song with many tracks does. Returns the cost of one.
Verdict furtherInstances(const CheckSettings& settings) {
  constexpr int kCount = 8;
  constexpr std::int64_t kMostKiB = 1280;  // 320 of it are the host's; the waves of the first kit are there already.
  // In the other forms JUCE's host and wrapper take 2 MiB for LV2, and 6 for VST 3, where each controller of each MIDI
  // channel is a parameter.
  constexpr std::int64_t kMostWrapperKiB = 8192;
  const auto library = settings.load();
  std::vector<std::unique_ptr<HostedPlugin>> kept;
  const auto makeOne = [&] {
    kept.push_back(library->makeInstance());
    settle(*kept.back());
  };
  makeOne();
  const std::int64_t before = processUse().ownKiB;
  const double milliseconds = millisecondsOf(kCount, makeOne);
  const std::int64_t each = (processUse().ownKiB - before) / kCount;
  const std::int64_t most = settings.isVst2() ? kMostKiB : kMostKiB + kMostWrapperKiB;
  return verdict(isSanitized() || each <= most, "%lld KiB and %.1f ms each", static_cast<long long>(each),
                 milliseconds);
}

/// Plays through every effect for as long as the longest delay line, so that all have had their memory. Twice, as an
/// effect's lines lie elsewhere after each change to it.
void fillDelayLines(HostedPlugin& host) {
  constexpr int kLongestLine = 131072;
  constexpr int kWithoutLines = 0;
  warm(host, PadSends::on);
  for (int round = 0; round < 2 * kEffectSteps; ++round) {
    chooseEffect(host, round / 2);
    playPlain(host, kLongestLine, 152);
    chooseEffect(host, kWithoutLines);
    settle(host);
  }
}

Verdict soak(const CheckSettings& settings) {
  constexpr double kLeastFactor = 100.0;
  constexpr std::int64_t kLeakKiB = 64;
  const auto library = settings.load();
  const auto host = library->makeInstance();
  host->start(48000.0F, 256);
  const double minutes = settings.soakHours > 0.0 ? 60.0 * settings.soakHours : settings.count(180, 600) / 60.0;
  const auto blocks = static_cast<std::int64_t>(minutes * 60.0 * 48000.0 / 256.0);
  Random random(151);
  SoundFacts facts;
  std::vector<float> left(256);
  std::vector<float> right(256);
  fillDelayLines(*host);
  ProcessUse warm;
  double spent = 0.0;
  for (std::int64_t block = 0; block < blocks; ++block) {
    if (block % 16 == 0) {
      stir(*host, random, static_cast<int>(block % 1000000));
    }
    const double before = threadSeconds();
    host->process(left.data(), right.data(), 256);
    spent += threadSeconds() - before;
    facts.add(left.data(), 256);
    facts.add(right.data(), 256);
    if (block == blocks / 10) {
      warm = processUse();
    }
  }
  const ProcessUse end = processUse();
  const std::int64_t growth = end.heapKiB - warm.heapKiB;
  const double factor = minutes * 60.0 / spent;
  const bool fast = isSanitized() || (factor >= kLeastFactor && growth <= kLeakKiB);
  return verdict(facts.notNumbers == 0 && fast && end.threads == warm.threads,
                 "%.1f minutes of audio at %.0f times real time, %+lld KiB", minutes, factor,
                 static_cast<long long>(growth));
}

}  // namespace

std::vector<Check> realTimeChecks() {
  return {{"calls inside process", callsInside},
          {"locks inside process", locksInside},
          {"worst block", worstBlock},
          {"speed", speed},
          {"waiting times", waitingTimes},
          {"scan", scan, CheckedForms::others},
          {"further instances", furtherInstances},
          {"soak", soak}};
}

}  // namespace sivray::check
