// Fuzzes the index files of the sample library: for any contents, every counted wave can be assigned to a pad and
// played in both directions, and the browser's list stays within its bounds. The first two bytes are the sizes of the
// sample index and the wave index, which follow; the rest is the category file.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "FuzzInput.h"
#include "engine/samples/SivraySampleLibrary.h"
#include "engine/voice/DrumCore.h"
#include "engine/voice/VoiceAllocator.h"
#include "support/SampleFolder.h"

namespace {

using namespace tesh::bramel::plugin::sivray;
using fuzz::require;
using Bytes = std::span<const std::uint8_t>;

constexpr int kPads = 8;
constexpr std::size_t kSlotFrames = 500;
constexpr int kFrames = 192;

Bytes takeSized(Bytes& data) {
  const std::size_t size = std::min<std::size_t>(data.empty() ? 0 : data[0], data.size() - (data.empty() ? 0 : 1));
  const Bytes taken = data.subspan(data.empty() ? 0 : 1, size);
  data = data.subspan(size + (data.empty() ? 0 : 1));
  return taken;
}

/// Voices with a data file of a few hundred samples.
class Engine {
 public:
  Engine() {
    for (int pad = 0; pad < kPads; ++pad) {
      allocator.setPad(pad, &pads[static_cast<std::size_t>(pad)]);
    }
    core.makeVoices(allocator);
  }

  WaveDatabase& database() { return file.database(); }

  void hit(int pad, std::int32_t wave) {
    constexpr std::array<PadParameter, 4> kKept{PadParameter::pitch, PadParameter::egTime, PadParameter::level,
                                                PadParameter::fxSend};
    PadValues& values = pads[static_cast<std::size_t>(pad)];
    for (const PadParameter parameter : kKept) {
      values.set(static_cast<std::size_t>(parameter), pad * 6);
    }
    values.set(static_cast<std::size_t>(PadParameter::reverse), wave & 1);
    values.set(static_cast<std::size_t>(PadParameter::wave), wave);
    core.waveChange().setValue(pad, &wave);
    allocator.noteOn(VoiceAllocator::kFirstNote + pad, 100);
  }

  void play() {
    allocator.render({dry.data(), effect.data()}, kFrames);
    const auto isInRange = [](std::int16_t word) { return word >= -32767; };
    require(std::all_of(dry.begin(), dry.end(), isInRange) && std::all_of(effect.begin(), effect.end(), isInRange));
  }

 private:
  support::SampleFolder folder{support::assortedWaves(4, 100)};
  PcmFile file{"SivrayPCM"};
  DrumCore core{file, kPads, kSlotFrames};
  VoiceAllocator allocator{core, kPads};
  std::array<PadValues, kPads> pads;
  std::array<std::int16_t, static_cast<std::size_t>(2 * (kFrames + kBusSlack))> dry{};
  std::array<std::int16_t, static_cast<std::size_t>(2 * (kFrames + kBusSlack))> effect{};
};

void readList(Bytes records) {
  tesh::vimo::SivraySampleLibrary library;
  library.loadFrom(records);
  std::int32_t sum = 0;
  for (std::int32_t category = 0; category < library.categoryCount(); ++category) {
    sum += library.categorySize(category);
  }
  require(sum == library.waveCount());
  for (std::int32_t place = 0; place < library.waveCount(); ++place) {
    require(library.flatIndexOf(library.waveId(place)) == place);
    require(library.waveCategory(place) < library.categoryCount());
    require(library.waveName(place).size() <= 12);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Engine engine;
  Bytes rest(data, size);
  const Bytes samples = takeSized(rest);
  const Bytes waves = takeSized(rest);
  engine.database().loadFrom(samples, waves);
  readList(rest);
  for (std::int32_t wave = -1; wave <= engine.database().waveCount(); ++wave) {
    engine.hit((wave + 1) % kPads, wave);
    engine.play();
  }
  return 0;
}
