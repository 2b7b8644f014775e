// Checks of an instance's life: loading, opening, calls in odd orders, badly behaved hosts, unknown calls, many
// instances, suspend and resume.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <memory>
#include <thread>

#include "check/Check.h"
#include "check/Process.h"
#include "check/Scene.h"
#include "vsthost/Host.h"

namespace sivray::check {
namespace {

using namespace tesh::bramel::vst;
using hosting::HostedPlugin;
using vsthost::Host;
using vsthost::HostManners;
using vsthost::PluginLibrary;

constexpr double kColdMilliseconds = 100.0;
constexpr std::int64_t kLeakKiB = 64;  // 2 was measured in 20 cycles, 8 in 990.
constexpr std::int64_t kLeakOfPagesKiB = 512;
/// JUCE's host leaks a little per load: 13 was measured in 20 cycles, 185 in 990. Its threads use separate arenas of
/// the allocator, so the number of pages grows by more: 636.
constexpr std::int64_t kLeakWithHostKiB = 256;
constexpr std::int64_t kLeakOfPagesWithHostKiB = 2048;

/// Must run first, before any of the library is in this process.
Verdict loadAndUnload(const CheckSettings& settings) {
  const int cycles = settings.full ? 1000 : 3 * GrowthWatch::kWarmCycles;
  double coldMilliseconds = 0.0;
  GrowthWatch growth;
  int leftBehind = 0;
  for (int cycle = 0; cycle < cycles; ++cycle) {
    {
      double before = threadSeconds();
      const auto library = settings.load();
      if (settings.form == hosting::Form::lv2) {
        // Its host has already read the texts of all plug-ins of this machine; now it loads this one.
        before = threadSeconds();
      }
      const auto host = library->makeInstance();
      if (cycle == 0) {
        coldMilliseconds = 1000.0 * (threadSeconds() - before);
      }
      growth.look();
    }
    leftBehind += isMapped(settings.moduleName()) ? 1 : 0;
  }
  const std::int64_t mostHeap = settings.isVst2() ? kLeakKiB : kLeakWithHostKiB;
  const std::int64_t mostPages = settings.isVst2() ? kLeakOfPagesKiB : kLeakOfPagesWithHostKiB;
  const bool flat = growth.threads() <= 0 && growth.files() <= 0;
  const bool small = isSanitized() || (leftBehind == 0 && growth.heapKiB() <= mostHeap &&
                                       growth.pagesKiB() <= mostPages && coldMilliseconds <= kColdMilliseconds);
  return verdict(flat && small,
                 "%d cycles, first in %.1f ms, %d stayed mapped, %+lld KiB of heap, %+lld of pages, %+d threads, "
                 "%+d files",
                 cycles, coldMilliseconds, leftBehind, static_cast<long long>(growth.heapKiB()),
                 static_cast<long long>(growth.pagesKiB()), growth.threads(), growth.files());
}

Verdict wildHosts(const CheckSettings& settings) {
  const PluginLibrary library(settings.libraryPath);
  int lives = 0;
  if (AEffect* const alone = library.entry()(nullptr)) {
    alone->dispatcher(alone, effOpen, 0, 0, nullptr, 0.0F);
    alone->dispatcher(alone, effClose, 0, 0, nullptr, 0.0F);
    ++lives;
  }
  HostManners silent;
  silent.answersNull = true;
  HostManners wild;
  wild.answersWild = true;
  HostManners timeless;
  timeless.givesTime = false;
  int early = 0;
  for (const HostManners& manners : {HostManners(), silent, wild, timeless}) {
    Host host(library, manners);
    early += host.callsBeforeRecord;
    lives += playPlain(host, 22050).isHeard() ? 1 : 0;
  }
  return verdict(lives == 5 && early == 0, "%d of 5 hosts served, %d calls before the host has its record", lives,
                 early);
}

Verdict oddOrder(const CheckSettings& settings) {
  const PluginLibrary library(settings.libraryPath);
  const int rounds = settings.count(2, 100);
  SoundFacts facts;
  for (int round = 0; round < rounds; ++round) {
    Host host(library);
    facts.add(play(host, hitsOver(2000, 3), 2000, blocksOf(100)));
    host.call(effOpen);
    host.call(effMainsChanged, 0, 1);
    host.call(effMainsChanged, 0, 1);
    host.call(effOpen);
    facts.add(play(host, hitsOver(2000, 4), 2000, blocksOf(100)));
    host.call(effMainsChanged, 0, 0);
    host.call(effMainsChanged, 0, 0);
    facts.add(play(host, hitsOver(2000, 5), 2000, blocksOf(100)));
    host.call(effStopProcess);
    host.call(effStartProcess);
    host.call(effStartProcess);
    host.setSampleRate(48000.0F);
    host.setSampleRate(kPlainRate);
    facts.add(play(host, hitsOver(2000, 6), 2000, blocksOf(100)));
  }
  return verdict(facts.isSane() && facts.isHeard(), "%d rounds of early process, double open, resume and suspend",
                 rounds);
}

/// Calls that the check skips: closing the instance, calls that need a screen, and calls that take 300 ms or a
/// structure.
bool isLeftOut(int opcode) {
  constexpr std::array<int, 10> kLeftOut{effClose,    effMainsChanged,  effEditGetRect, effEditOpen,    effEditClose,
                                         effEditIdle, effProcessEvents, effSetChunk,    effEditKeyDown, effEditKeyUp};
  return std::find(kLeftOut.begin(), kLeftOut.end(), opcode) != kLeftOut.end() || opcode == effSetEditKnobMode;
}

/// Opcodes that the interface does not define.
bool isUnknown(int opcode) {
  constexpr std::array<int, 14> kHoles{9, 16, 17, 18, 20, 21, 28, 30, 31, 32, 36, 37, 43, 46};
  constexpr std::array<int, 4> kLateHoles{53, 54, 55, 57};
  return std::find(kHoles.begin(), kHoles.end(), opcode) != kHoles.end() ||
         std::find(kLateHoles.begin(), kLateHoles.end(), opcode) != kLateHoles.end() || opcode < 0 || opcode >= 80;
}

/// Makes one call with a buffer that is checked afterwards. Returns false if the call wrote more than a text can need,
/// or if an unknown call was answered.
bool callSafely(Host& host, int opcode, int index, std::intptr_t value) {
  constexpr std::uint8_t kMark = 0xA5;
  constexpr std::size_t kText = 256;
  alignas(16) std::array<std::uint8_t, 4096> room{};
  room.fill(kMark);
  room.back() = 0;
  void* first = room.data();
  void* second = nullptr;
  if (opcode == effGetSpeakerArrangement) {
    value = reinterpret_cast<std::intptr_t>(&second);
  }
  const std::intptr_t answer = host.call(
      opcode, index, value, opcode == effGetSpeakerArrangement ? static_cast<void*>(&first) : room.data(), 0.5F);
  const std::size_t from = isUnknown(opcode) ? 0 : kText;
  const bool untouched = std::all_of(room.begin() + static_cast<std::ptrdiff_t>(from), room.end() - 1,
                                     [](std::uint8_t byte) { return byte == kMark; });
  return untouched && (!isUnknown(opcode) || answer == 0);
}

Verdict unknownCalls(const CheckSettings& settings) {
  const PluginLibrary library(settings.libraryPath);
  Host host(library);
  const std::vector<std::uint8_t> before = host.chunk();
  const std::array<int, 5> indices{0, -1, host.parameterCount(), INT_MAX, INT_MIN};
  int calls = 0;
  int wrong = 0;
  for (int opcode = 0; opcode < 128; ++opcode) {
    for (const int index : indices) {
      if (!isLeftOut(opcode)) {
        ++calls;
        wrong += callSafely(host, opcode, index, index) ? 0 : 1;
      }
    }
  }
  Random random(7);
  for (int i = 0; i < settings.count(10000, 10000); ++i) {
    const int opcode = i % 2 == 0 ? random.below(128) : static_cast<int>(random.word());
    if (!isLeftOut(opcode) && opcode != effVendorSpecific) {
      ++calls;
      wrong += callSafely(host, opcode, static_cast<int>(random.word()), static_cast<int>(random.word())) ? 0 : 1;
    }
  }
  for (const int index : {-1, host.parameterCount(), INT_MAX, INT_MIN}) {
    host.setParameter(index, 0.25F);
    wrong += host.parameter(index) == 0.0F && host.parameterName(index).empty() ? 0 : 1;
  }
  host.setSampleRate(kPlainRate);
  const bool same = host.chunk() == before;
  const bool heard = playPlain(host, 22050).isHeard();
  return verdict(wrong == 0 && same && heard, "%d calls, %d wrong answers, state %s", calls, wrong,
                 same ? "untouched" : "changed");
}

Verdict manyInstances(const CheckSettings& settings) {
  constexpr int kInstances = 32;
  const auto library = settings.load();
  std::vector<std::unique_ptr<HostedPlugin>> hosts;
  for (int i = 0; i < kInstances; ++i) {
    hosts.push_back(library->makeInstance());
    settle(*hosts.back());
  }
  // The first half renders on another thread while this one closes the second half in random order.
  std::array<SoundFacts, kInstances / 2> facts;
  std::thread renderer([&] {
    for (std::size_t i = 0; i < facts.size(); ++i) {
      facts[i].add(play(*hosts[i], hitsOver(20000, 9), 20000, blocksOf(256)));
    }
  });
  Random random(11);
  for (int left = kInstances / 2; left > 0; --left) {
    hosts.erase(hosts.begin() + kInstances / 2 + random.below(left));
  }
  renderer.join();
  const bool equal = std::all_of(facts.begin(), facts.end(), [&](const SoundFacts& f) {
    return f.isSane() && f.isHeard() && f.hash == facts[0].hash;
  });
  return verdict(equal, "%d at once, 16 ended while 16 rendered, %s", kInstances,
                 equal ? "all alike" : "not all alike");
}

/// Returns the largest difference between two sounds of the same length.
float distance(const Sound& a, const Sound& b) {
  float largest = 0.0F;
  for (std::size_t i = 0; i < a.left.size(); ++i) {
    largest = std::max({largest, std::abs(a.left[i] - b.left[i]), std::abs(a.right[i] - b.right[i])});
  }
  return largest;
}

/// After suspend and resume, an instance that has played sounds like a new one. Two parts of a voice's state survive
/// the reset, so a small difference is allowed: how far its gates to the dry and the effect bus are open, audible in
/// the first three samples of a note, and how fast it fades out after the end of a wave. Any remaining sound from
/// before would be louder.
Verdict resetIsNew(const CheckSettings& settings) {
  constexpr float kMostFromGates = 0.0005F;  // 0.0002 was measured, over a dozen scenes
  constexpr int kFrames = 60000;
  constexpr int kBlocksToRise = 50;  // the master level's rise after loading
  const auto library = settings.load();
  const auto fresh = library->makeInstance();
  const auto used = library->makeInstance();
  for (HostedPlugin* const host : {fresh.get(), used.get()}) {
    host->start(kPlainRate, kPlainBlock);
    for (int block = 0; block < kBlocksToRise; ++block) {
      settle(*host);
    }
  }
  playPlain(*used, kFrames, 21);
  used->restart();
  for (int block = 0; settings.form == hosting::Form::lv2 && block < kBlocksToRise; ++block) {
    settle(*used);  // JUCE's host makes a new instance of an LV2.
  }
  const std::vector<Hit> hits = hitsOver(kFrames, 22);
  const Sound expected = play(*fresh, hits, kFrames, blocksOf(kPlainBlock));
  const float apart = distance(play(*used, hits, kFrames, blocksOf(kPlainBlock)), expected);
  SoundFacts facts;
  facts.add(expected);
  return verdict(apart <= kMostFromGates && facts.isHeard(), "at most %.5f from a new instance, at a peak of %.3f",
                 static_cast<double>(apart), static_cast<double>(facts.peak));
}

}  // namespace

std::vector<Check> lifecycleChecks() {
  return {{"load and unload", loadAndUnload},
          {"wild hosts", wildHosts, CheckedForms::vst2},
          {"calls in odd order", oddOrder, CheckedForms::vst2},
          {"unknown calls", unknownCalls, CheckedForms::vst2},
          {"instances", manyInstances},
          {"reset", resetIsNew}};
}

}  // namespace sivray::check
