// Checks of events and automation within a block: dense, unordered, out of range, and malformed.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <climits>

#include "check/Check.h"
#include "check/Scene.h"
#include "vsthost/Host.h"

namespace sivray::check {
namespace {

using namespace tesh::bramel::vst;
using hosting::HostedPlugin;
using hosting::PluginFile;

constexpr int kEventBlock = 2048;

/// Queues notes `step` frames apart, each with a parameter change.
void queueDense(HostedPlugin& host, int step, Random& random) {
  for (int frame = 0; frame < kEventBlock; frame += step) {
    host.queueNote(36 + random.below(8), random.below(128), frame);
    host.setParameter(random.below(host.parameterCount()), random.unit());
  }
}

void queueOdd(HostedPlugin& host, Random& random) {
  for (const int frame :
       {kEventBlock - 1, -1, 0, INT_MIN, 17, kEventBlock, 16, kEventBlock + 100, 3 * kEventBlock, 5}) {
    host.queueNote(36 + random.below(8), 100, frame);
  }
}

/// Returns whether events queued after one with a far-future frame still sound.
bool soundsBehindHopeless(const PluginFile& library) {
  const auto host = library.makeInstance();
  host->queueNote(36, 100, INT_MAX);
  return playPlain(*host, 22050).isHeard();
}

void queueFull(HostedPlugin& host, Random& random) {
  for (int i = 0; i < 2048; ++i) {
    host.queueNote(36 + random.below(8), random.below(128), random.below(kEventBlock));
  }
}

Verdict insideBlocks(const CheckSettings& settings) {
  const auto library = settings.load();
  SoundFacts facts;
  Random random(51);
  int blocks = 0;
  bool alive = true;
  for (const float rate : {kPlainRate, 96000.0F}) {
    const auto host = library->makeInstance();
    host->setSampleRate(rate);
    const std::vector<std::uint8_t> state = host->chunk();
    Sound sound{std::vector<float>(kEventBlock), std::vector<float>(kEventBlock)};
    const auto render = [&] {
      host->process(sound.left.data(), sound.right.data(), kEventBlock);
      facts.add(sound);
      ++blocks;
    };
    for (int round = 0; round < settings.count(3, 50); ++round) {
      for (const int step : {1, 10, 32, 100, 1000}) {
        queueDense(*host, step, random);
        render();
      }
      queueOdd(*host, random);
      render();
      queueFull(*host, random);
      render();
    }
    for (int block = 0; block < 4; ++block) {
      render();
    }
    // Events for later blocks must arrive, and no note may hang.
    host->setChunk(state);
    settle(*host);
    alive = alive && playPlain(*host, 22050).isHeard();
  }
  const bool isHopeful = soundsBehindHopeless(*library);
  return verdict(facts.notNumbers == 0 && alive && isHopeful,
                 "%d blocks, every 1 to 1000 frames, up to 2048 events, then %s%s", blocks,
                 alive ? "a sound" : "silence", isHopeful ? "" : ", but silence behind an event that never comes");
}

/// Events that only VST 2 can bring: system-exclusive ones with little data or none, and kinds that do not exist.
class ForeignEvents {
 public:
  explicit ForeignEvents(HostedPlugin& plugin) : host(dynamic_cast<vsthost::Host*>(&plugin)) {
    sysEx.type = kVstSysExType;
    sysEx.byteSize = sizeof sysEx;
  }

  /// Adds one of each to the next block.
  void queue(Random& random) {
    sysEx.dumpBytes = random.below(64);
    sysEx.sysexDump = random.below(2) == 0 ? nullptr : dump.data();
    strange.type = static_cast<std::int32_t>(random.word());
    strange.type = strange.type == kVstMidiType ? 0 : strange.type;
    if (host != nullptr) {
      host->queueForeign(&sysEx);
      host->queueForeign(&strange);
    }
  }

  /// Brings lists without events.
  void giveEmptyLists() {
    vsthost::EventList none;
    if (host != nullptr) {
      host->call(effProcessEvents, 0, 0, none.head());
      host->call(effProcessEvents, 0, 0, nullptr);
    }
  }

 private:
  vsthost::Host* host;
  std::array<char, 64> dump{};
  VstMidiSysexEvent sysEx{};
  VstEvent strange{};
};

/// Sends events of random bytes, and system-exclusive events with little or much data.
Verdict inconsistentMidi(const CheckSettings& settings) {
  const auto library = settings.load();
  const auto host = library->makeInstance();
  const std::vector<std::uint8_t> state = host->chunk();
  SoundFacts facts;
  Random random(61);
  Sound sound{std::vector<float>(kEventBlock), std::vector<float>(kEventBlock)};
  ForeignEvents foreign(*host);
  const int events = settings.count(100000, 1000000);
  for (int given = 0; given < events;) {
    for (int i = 0; i < 1000; ++i, ++given) {
      const int kind = random.below(10);
      std::array<std::uint8_t, 3> bytes{random.byte(), random.byte(), random.byte()};
      if (kind < 3) {
        bytes = {static_cast<std::uint8_t>((kind == 0 ? 0x80 : 0x90) | random.below(16)),
                 static_cast<std::uint8_t>(random.below(128)), static_cast<std::uint8_t>(random.below(128))};
      }
      host->queueMidi({bytes.data(), static_cast<std::size_t>(1 + random.below(3))}, random.below(kEventBlock));
    }
    foreign.queue(random);
    host->process(sound.left.data(), sound.right.data(), 64);
    facts.add(sound.left.data(), 64);
  }
  foreign.giveEmptyLists();
  host->setChunk(state);
  settle(*host);
  const bool alive = playPlain(*host, 22050).isHeard();
  const auto sent = host->takeMidi();
  const auto first = sent.empty() ? std::array<std::uint8_t, 4>{} : sent.front();
  return verdict(
      facts.notNumbers == 0 && alive && sent.empty(),
      "%d events of random bytes, notes out of order, system-exclusive, then %s; %zu messages to the host, the "
      "first %02x %02x %02x",
      events, alive ? "a sound" : "silence", sent.size(), first[0], first[1], first[2]);
}

}  // namespace

std::vector<Check> eventChecks() {
  return {{"automation and notes inside a block", insideBlocks}, {"inconsistent MIDI", inconsistentMidi}};
}

}  // namespace sivray::check
