// Checks with audio on one thread and all other calls on others.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <atomic>
#include <chrono>
#include <thread>

#include "check/Check.h"
#include "check/Scene.h"
#include "claphost/ClapInstance.h"
#include "render/PluginModel.h"

namespace sivray::check {
namespace {

using hosting::HostedPlugin;

/// Renders blocks on its own thread until stopped.
class AudioThread {
 public:
  explicit AudioThread(HostedPlugin& plugin) : host(plugin), thread([this] { run(); }) { awaitBlocks(1); }
  ~AudioThread() { finish(); }

  /// Waits until `count` further blocks have been rendered.
  void awaitBlocks(int count) const {
    for (const int wanted = blocks + count; blocks < wanted;) {
      std::this_thread::sleep_for(std::chrono::microseconds(100));
    }
  }

  void finish() {
    stopping = true;
    if (thread.joinable()) {
      thread.join();
    }
  }

  std::atomic<int> blocks{0};
  SoundFacts facts;  ///< Complete after `finish`.

 private:
  void run() {
    Random random(101);
    std::vector<float> left(256);
    std::vector<float> right(256);
    while (!stopping) {
      host.queueNote(36 + random.below(8), random.below(128), random.below(256));
      host.process(left.data(), right.data(), 256);
      facts.add(left.data(), 256);
      facts.add(right.data(), 256);
      ++blocks;
    }
  }

  HostedPlugin& host;
  std::atomic<bool> stopping{false};
  std::thread thread;
};

Verdict anotherThread(const CheckSettings& settings) {
  const auto library = settings.load();
  const auto host = library->makeInstance();
  host->start(kPlainRate, 256);
  const int wanted = settings.count(2000, 9999);
  AudioThread audio(*host);
  while (audio.blocks < wanted) {
    // Calls that a host makes while it plays.
    host->currentProgram();
    host->parameterText(0);
    std::this_thread::yield();
  }
  audio.finish();
  return verdict(audio.facts.isSane() && audio.facts.isHeard(), "%d blocks", audio.blocks.load());
}

Verdict parametersFromTwoThreads(const CheckSettings& settings) {
  const auto library = settings.load();
  const auto host = library->makeInstance();
  AudioThread audio(*host);
  const int before = audio.blocks;
  const int rounds = settings.count(50, 500);
  // Waves are not changed here: another check covers reading them.
  const auto write = [&](std::uint32_t seed) {
    Random random(seed);
    for (int round = 0; round < rounds; ++round) {
      for (int index = 0; index < host->parameterCount(); ++index) {
        if (!choosesWave(index)) {
          host->setParameter(index, random.unit());
          host->parameter(index);
        }
      }
      // As in a host, blocks are rendered in between; otherwise the writers would hold the plug-in's lock almost all
      // the time.
      audio.awaitBlocks(1);
    }
  };
  std::thread other(write, 111);
  write(112);
  other.join();
  audio.finish();
  const int blocks = audio.blocks - before;
  return verdict(audio.facts.isSane() && blocks >= rounds, "%d rounds of %d parameters from two threads, %d blocks",
                 rounds, host->parameterCount(), blocks);
}

Verdict loadsWhilePlaying(const CheckSettings& settings) {
  const auto library = settings.load();
  const auto host = library->makeInstance();
  host->currentProgram();
  render::PluginModel model;
  if (!model.takeIn(host->chunk())) {
    return verdict(false, "the plug-in gives a state that cannot be read");
  }
  std::vector<std::vector<std::uint8_t>> programs;
  for (const render::ListedProgram& program : model.programs()) {
    model.selectProgram(program.number);
    programs.push_back(model.state());
  }
  AudioThread audio(*host);
  const int before = audio.blocks;
  Random random(121);
  const int loads = settings.count(100, 1000);
  for (int load = 0; load < loads; ++load) {
    host->setChunk(programs[static_cast<std::size_t>(random.below(static_cast<int>(programs.size())))]);
    host->chunk();
    const int wavePad = 12 * random.below(8);
    if (wavePad < host->parameterCount()) {
      host->setParameter(wavePad, random.unit());
    }
    if (load % 10 == 9) {
      audio.awaitBlocks(1);
    }
  }
  audio.finish();
  if (auto* const clap = dynamic_cast<claphost::ClapInstance*>(host.get())) {
    const auto calls = clap->takeHostCalls();
    return verdict(audio.facts.isSane() && calls.all > loads && calls.onWrongThread == 0,
                   "%d programs, states and waves loaded, %d blocks meanwhile, %d of %d calls to the host on a thread "
                   "that is not theirs",
                   loads, audio.blocks.load(), calls.onWrongThread, calls.all);
  }
  return verdict(audio.facts.isSane(), "%d programs, states and waves loaded, %d blocks meanwhile", loads,
                 audio.blocks - before);
}

}  // namespace

std::vector<Check> threadChecks() {
  return {{"audio on another thread", anotherThread},
          {"parameters from two threads", parametersFromTwoThreads},
          {"loads while playing", loadsWhilePlaying}};
}

}  // namespace sivray::check
