// Checks of the host's state: what is restored, and how broken bytes are handled.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <memory>

#include "check/Check.h"
#include "check/Scene.h"
#include "core/LittleEndian.h"
#include "render/PluginModel.h"

namespace sivray::check {
namespace {

using hosting::HostedPlugin;
using Bytes = std::vector<std::uint8_t>;

/// Offset of the content: after the tag, the map's head, the key and the length of the bytes.
constexpr std::size_t kContentAt = 4 + 1 + 8 + 5;
constexpr std::size_t kSectionSizes = 16;

/// Returns a state with its programs' ids and times zeroed: each instance assigns new ids to the programs that it
/// loads, and a time to those without one.
Bytes withoutIds(Bytes state) {
  constexpr std::size_t kListSize = 8;
  constexpr std::size_t kMacroHead = 48;
  constexpr std::size_t kImageHead = 8;
  constexpr std::size_t kTimeAt = 196;
  constexpr std::size_t kIdentityEnd = 224;
  constexpr std::size_t kEntryBytes = 12;
  const auto wordAt = [&](std::size_t at) { return tesh::cofu::core::wordIn(state, at).value_or(0); };
  // The sections follow the content's head of four words; the third is the macro chunk.
  const std::size_t macros = kContentAt + kSectionSizes + wordAt(kContentAt + 4) + wordAt(kContentAt + 8);
  const std::size_t image = macros + kMacroHead + wordAt(macros + kListSize);
  const std::size_t recordBytes = kIdentityEnd + kEntryBytes * wordAt(macros + 4);
  const std::size_t count = wordAt(image + 4);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t record = image + kImageHead + i * recordBytes;
    if (record + kIdentityEnd <= state.size()) {
      std::fill_n(state.begin() + static_cast<std::ptrdiff_t>(record + kTimeAt), kIdentityEnd - kTimeAt, 0);
    }
  }
  return state;
}

/// Passes a state through several hosts in turn; each loads and saves it.
class RoundTrip {
 public:
  explicit RoundTrip(const CheckSettings& settings)
      : library(settings.load()), full(settings.full), firstInstance(library->makeInstance()) {}

  /// Loads `state` into one plug-in, loads the state that it saves into another, and compares the states of both. Each
  /// plays a block first, because the engine's own values follow the macros only then.
  void run(const Bytes& state) {
    first.setChunk(state);
    settle(first);
    const Bytes saved = first.chunk();
    if (full || trips % kFreshEvery == 0) {
      second = library->makeInstance();
    }
    second->setChunk(saved);
    settle(*second);
    different += withoutIds(second->chunk()) == withoutIds(saved) ? 0 : 1;
    ++trips;
  }

  int trips = 0;
  int different = 0;

 private:
  static constexpr int kFreshEvery = 10;

  std::unique_ptr<hosting::PluginFile> library;
  bool full;
  std::unique_ptr<HostedPlugin> firstInstance;
  std::unique_ptr<HostedPlugin> second;

 public:
  HostedPlugin& first = *firstInstance;
};

Verdict roundTrips(const CheckSettings& settings) {
  RoundTrip trip(settings);
  trip.first.currentProgram();
  render::PluginModel model;
  if (!model.takeIn(trip.first.chunk())) {
    return verdict(false, "the plug-in gives a state that cannot be read");
  }
  // JUCE's host takes 30 ms to wrap a state and to unwrap it.
  const int step = settings.isVst2() || settings.full ? 1 : 4;
  int listed = 0;
  int programs = 0;
  for (const render::ListedProgram& program : model.programs()) {
    if (listed++ % step != 0) {
      continue;
    }
    model.selectProgram(program.number);
    trip.run(model.state());
    ++programs;
  }
  Random random(81);
  const int states = settings.count(60, 1000);
  for (int i = 0; i < states; ++i) {
    for (int index = 0; index < trip.first.parameterCount(); ++index) {
      trip.first.setParameter(index, random.unit());
    }
    settle(trip.first);
    trip.run(trip.first.chunk());
  }
  // The host has just set these values: notifying it of them would be an echo. JUCE's host asks for them itself.
  const bool isSilent = !settings.isVst2() || trip.first.takeCalls().empty();
  return verdict(trip.different == 0 && programs > 0 && isSilent,
                 "%d programs and %d random states, %d differ, %zu bytes", programs, states, trip.different,
                 trip.first.chunk().size());
}

/// Broken states; none of them may change anything.
class BrokenStates {
 public:
  explicit BrokenStates(HostedPlugin& plugin) : host(plugin), good(plugin.chunk()) {}

  const Bytes& valid() const { return good; }

  void give(const Bytes& bytes) {
    host.setChunk(bytes);
    ++given;
    if (host.chunk() != good) {
      ++changed;
      host.setChunk(good);
    }
  }

  int given = 0;
  int changed = 0;

 private:
  HostedPlugin& host;
  Bytes good;
};

void giveFlipped(BrokenStates& broken, bool givesAll) {
  const Bytes& good = broken.valid();
  std::vector<std::size_t> places;
  for (std::size_t at = 0; at < kContentAt + kSectionSizes; ++at) {
    places.push_back(at);
  }
  // The envelope's two other entries, after the content.
  constexpr std::size_t kTail = 5 + 30 + 8 + 1;
  for (std::size_t at = good.size() - kTail; at < good.size(); ++at) {
    places.push_back(at);
  }
  for (const std::size_t at : places) {
    for (const std::uint8_t bits : {std::uint8_t{0xFF}, std::uint8_t{0x01}, std::uint8_t{0x80}}) {
      if (bits != 0xFF && !givesAll) {
        continue;
      }
      Bytes flipped = good;
      flipped[at] = static_cast<std::uint8_t>(flipped[at] ^ bits);
      broken.give(flipped);
    }
  }
}

void giveWildSizes(BrokenStates& broken) {
  for (const std::size_t at : {kContentAt - 4, kContentAt + 4, kContentAt + 8, kContentAt + 12}) {
    for (const std::uint8_t top : {std::uint8_t{0x80}, std::uint8_t{0xFF}}) {
      Bytes wild = broken.valid();
      std::fill_n(wild.begin() + static_cast<std::ptrdiff_t>(at), 4, top == 0xFF ? 0xFF : 0x00);
      wild[at] = top;
      wild[at + 3] = top;
      broken.give(wild);
    }
  }
}

Verdict badStates(const CheckSettings& settings) {
  const auto library = settings.load();
  const auto host = library->makeInstance();
  settle(*host);
  BrokenStates broken(*host);
  const Bytes& good = broken.valid();
  broken.give({});
  const auto size = static_cast<int>(good.size());
  const int step = std::max(1, size / settings.count(100, 4000));
  for (int length = 0; length < size; length += length < 64 ? 1 : step) {
    broken.give({good.begin(), good.begin() + length});
  }
  giveFlipped(broken, settings.isVst2() || settings.full);
  giveWildSizes(broken);
  Random random(91);
  for (int i = 0; i < 3; ++i) {
    Bytes noise(1 << 20);
    std::generate(noise.begin(), noise.end(), [&] { return random.byte(); });
    if (i == 2) {
      std::copy_n(good.begin(), kContentAt, noise.begin());
    }
    broken.give(noise);
  }
  const bool alive = playPlain(*host, 22050).isHeard();
  return verdict(broken.changed == 0 && alive, "%d broken states, %d changed anything", broken.given, broken.changed);
}

}  // namespace

std::vector<Check> stateChecks() { return {{"state round trip", roundTrips}, {"bad state", badStates}}; }

}  // namespace sivray::check
