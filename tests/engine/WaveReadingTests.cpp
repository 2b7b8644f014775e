// Waves that are still being read while they play.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <random>

#include "engine/DrumEngine.h"
#include "support/SampleFolder.h"
#include "support/Sanitized.h"

namespace tesh::bramel::plugin::sivray {
namespace {

constexpr int kWaves = 9;
constexpr int kShortestWave = 14000;
constexpr std::size_t kLongSlot = 14200;  ///< Shorter than the longest waves, and no multiple of a piece.
static_assert(kShortestWave > 3 * WaveReading::kPieceFrames);

/// Two engines that get the same changes. One reads each wave completely into its own memory; the other reads piece by
/// piece, or plays a wave that was read ahead.
class TwoEngines {
 public:
  TwoEngines() { set(parameterId(kMasterGroup, 0), 0.8F); }

  void set(std::uint32_t id, float value) {
    whole.setParameter(id, value);
    whole.loadWaves();
    inPieces.setParameter(id, value);
  }
  void prepare(std::uint32_t id, float value) { inPieces.prepare(id, value); }
  void note(int pad) {
    whole.noteOn(36 + pad, 100);
    inPieces.noteOn(36 + pad, 100);
  }
  void readOn() { inPieces.readOn(); }

  /// Returns whether both engines render the same samples.
  bool render(int frames) {
    std::array<std::array<float, 2048>, 4> out{};
    whole.render(out[0].data(), out[1].data(), frames);
    inPieces.render(out[2].data(), out[3].data(), frames);
    return out[0] == out[2] && out[1] == out[3];
  }

 private:
  PcmFile file{"SivrayPCM"};
  DrumEngine whole{file, kPadCount, kLongSlot};
  DrumEngine inPieces{file, kPadCount, kLongSlot};
};

TEST(WaveReading, SoundsTheSameHoweverFarItHasCome) {
  const support::SampleFolder folder(support::assortedWaves(kWaves, kShortestWave));
  const auto data = folder.pathOf("drumdata.bin");
  const auto elsewhere = folder.pathOf("elsewhere");
  TwoEngines engines;
  std::mt19937 random(7);
  const auto below = [&random](unsigned end) { return static_cast<unsigned>(random() % end); };
  const auto unit = [&] { return static_cast<float>(below(128)) / 127.0F; };
  for (int step = 0; step < support::scenes(20000); ++step) {
    const unsigned pad = below(8);
    const std::uint32_t wave = parameterId(pad, static_cast<unsigned>(PadParameter::wave));
    switch (below(8)) {
      case 0:
        engines.set(wave, unit());
        break;
      case 1:
        engines.prepare(wave, unit());
        break;
      case 2:  // The pad becomes silent, but a playing voice keeps its wave.
        std::filesystem::rename(data, elsewhere);
        for (const float other : {0.0F, 0.5F, 1.0F}) {
          engines.prepare(wave, other);  // Fails, and drops the wave that was read ahead.
        }
        engines.set(wave, unit());
        std::filesystem::rename(elsewhere, data);
        break;
      case 3:
        engines.note(static_cast<int>(pad));
        break;
      case 4:
        engines.set(parameterId(pad, 1 + below(15)), unit());
        break;
      case 5:
        if (below(8) == 0) {
          engines.readOn();
        }
        break;
      default: {
        constexpr std::array<unsigned, 4> kLongest{1, 8, 300, 2048};
        ASSERT_TRUE(engines.render(static_cast<int>(1 + below(kLongest[below(4)])))) << step;
      }
    }
  }
}

}  // namespace
}  // namespace tesh::bramel::plugin::sivray
