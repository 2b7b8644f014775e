// Plays two seconds of every kit, at 44100 Hz as the renderer does without a plug-in, and at 48000 Hz through the
// instrument's resampler. Prints a line with a hash for each, to compare processors. Both runs of a comparison must
// read the same content, set by BRAMEL_COMMON_FILES.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <bit>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <span>
#include <string>
#include <vector>

#include "host/shell/BramelInstrument.h"
#include "host/shell/Construction.h"
#include "render/DirectTarget.h"

namespace {

using Bytes = std::vector<std::uint8_t>;
using tesh::bramel::vst::BramelInstrument;

constexpr int kSteps = 16;             ///< Of an eighth of a second, with one hit each.
constexpr int kBlocksPerStep = 11;     ///< Of 501 frames at 44100 Hz, so that each hit is in a block of its own.
constexpr int kFirstPad = 36;          ///< The note of the first pad.
constexpr std::uint64_t kFactory = 0;  ///< The bank.

/// FNV-1a over the bits of samples.
class Hash {
 public:
  void add(std::span<const float> samples) {
    for (const float sample : samples) {
      value = (value ^ std::bit_cast<std::uint32_t>(sample)) * 0x100000001B3U;
    }
  }
  std::uint64_t value = 0xCBF29CE484222325U;
};

/// Hits every pad twice within two seconds, at different levels. `hit` takes a MIDI message, `process` two channels and
/// a number of frames. Returns whether any sample was not zero.
template <typename Hit, typename Process>
bool play(int rate, Hash& hash, Hit hit, Process process) {
  const int frames = rate / (8 * kBlocksPerStep);
  std::vector<float> left(static_cast<std::size_t>(frames));
  std::vector<float> right(left.size());
  bool sounded = false;
  for (int step = 0; step < kSteps; ++step) {
    const std::array<std::uint8_t, 3> note{0x90, static_cast<std::uint8_t>(kFirstPad + step * 3 % 8),
                                           static_cast<std::uint8_t>(127 - step * 5)};
    hit(note);
    for (int block = 0; block < kBlocksPerStep; ++block) {
      process(left.data(), right.data(), frames);
      hash.add(left);
      hash.add(right);
      sounded |= std::any_of(left.begin(), left.end(), [](float sample) { return sample != 0.0F; });
    }
  }
  return sounded;
}

bool playDirectly(const Bytes& state, Hash& hash) {
  sivray::render::DirectTarget target;
  target.setState(state);
  target.start(0);
  return play(
      44100, hash, [&](const auto& note) { target.sendMidi(note, 0); },
      [&](float* left, float* right, int frames) { target.process(left, right, frames); });
}

bool playResampled(BramelInstrument& instrument, Hash& hash) {
  instrument.suspend();
  instrument.resume();
  return play(
      48000, hash, [&](const auto& note) { instrument.sendMidi(note.data(), note.size(), 0); },
      [&](float* left, float* right, int frames) {
        std::array<float*, 2> outputs{left, right};
        instrument.process(nullptr, outputs.data(), frames);
      });
}

/// Returns whether every kit sounded.
bool playKits() {
  BramelInstrument instrument(tesh::bramel::vst::makeProcessor());
  instrument.setSampleRate(48000.0F);
  instrument.resume();
  const std::uint64_t kits = instrument.programCount(kFactory);
  bool sounded = kits > 0;
  for (std::uint64_t kit = 0; kit < kits; ++kit) {
    instrument.setProgram(kFactory, kit);
    Hash direct;
    Hash resampled;
    sounded &= playDirectly(instrument.getState(), direct);
    sounded &= playResampled(instrument, resampled);
    std::printf("%016" PRIx64 " %016" PRIx64 " %s\n", direct.value, resampled.value,
                instrument.programName(kFactory, kit).c_str());
  }
  return sounded;
}

}  // namespace

int main() {
  try {
    if (playKits()) {
      return 0;
    }
    std::fputs("a kit is silent\n", stderr);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
  }
  return 1;
}
