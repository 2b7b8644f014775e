// The checks' music: reproducible random numbers, drum hits, and their rendering in blocks of any size.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <random>
#include <vector>

#include "check/Sound.h"
#include "core/EngineRate.h"
#include "hosting/HostedPlugin.h"

namespace sivray::check {

inline constexpr float kPlainRate = static_cast<float>(tesh::cofu::core::kEngineRate);
inline constexpr int kPlainBlock = 512;

/// Random numbers that are the same on every machine.
class Random {
 public:
  explicit Random(std::uint32_t seed) : engine(seed) {}

  /// Returns a number from 0 to count - 1.
  int below(int count) { return static_cast<int>(engine() % static_cast<std::uint32_t>(count)); }
  /// Returns a number from 0 to 1 inclusive.
  float unit() { return static_cast<float>(engine() >> 8) / 16777215.0F; }
  std::uint8_t byte() { return static_cast<std::uint8_t>(engine() >> 24); }
  std::uint32_t word() { return static_cast<std::uint32_t>(engine()); }

 private:
  std::mt19937 engine;
};

struct Hit {
  int frame = 0;
  int note = 0;
  int velocity = 0;  ///< 0 ends the note.
};

/// Returns hits on all pads over `frames` frames, ordered by time, some with note-offs. `density` scales their number.
std::vector<Hit> hitsOver(int frames, std::uint32_t seed, int density = 40);

/// Returns the length of the next block in frames.
using Partition = std::function<int()>;

Partition blocksOf(int frames);
Partition randomBlocks(std::uint32_t seed, int longest);

/// Renders hits in blocks whose lengths the partition chooses.
Sound play(hosting::HostedPlugin& host, const std::vector<Hit>& hits, int frames, const Partition& partition);

/// Plays the hits of `seed` in blocks of kPlainBlock frames, to hear whether the plug-in still works.
SoundFacts playPlain(hosting::HostedPlugin& host, int frames, std::uint32_t seed = 1);

/// Renders a block, so that the plug-in applies a new state or program. The crossfade of a change of effect is in this
/// block.
void settle(hosting::HostedPlugin& host);

/// Whether all pads are sent to the effect, or none.
enum class PadSends { off, on };

/// Gives all pads the same send and plays every voice twice. Afterwards all voices have equal gates and fades, so the
/// samples no longer depend on which voice a note gets, which in turn depends on the block boundaries.
void warm(hosting::HostedPlugin& host, PadSends sends);

/// Makes the first pad play the sine of SineContent unchanged.
void playSineOn(hosting::HostedPlugin& host);

/// Returns the phase in turns of a tone of `hertz`, measured over the second around `centre` (in seconds).
double phaseAt(const std::vector<float>& samples, double rate, double hertz, double centre);

/// Whether the parameter chooses a pad's wave. Changing a wave reads the disk; all other parameters work in memory.
bool choosesWave(int index);

/// Returns the host index of a parameter by its name, or -1.
int indexOf(hosting::HostedPlugin& host, const char* name);

/// Sets a parameter by its name; does nothing if there is none.
void setNamed(hosting::HostedPlugin& host, const char* name, float value);

}  // namespace sivray::check
