// What the checks play: random numbers that are the same everywhere, a pattern of drum hits, and its rendering in
// blocks of any sizes.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <random>
#include <vector>

#include "check/Sound.h"
#include "core/EngineRate.h"
#include "vsthost/Host.h"

namespace sivray::check {

inline constexpr float kPlainRate = static_cast<float>(tesh::cofu::core::kEngineRate);
inline constexpr int kPlainBlock = 512;

/// The same numbers on every machine.
class Random {
 public:
  explicit Random(std::uint32_t seed) : engine(seed) {}

  /// From 0 to count - 1.
  int below(int count) { return static_cast<int>(engine() % static_cast<std::uint32_t>(count)); }
  /// From 0 to 1, both included.
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

/// Hits on all pads over `frames` frames, in the order of time, with some of their ends.
std::vector<Hit> hitsOver(int frames, std::uint32_t seed, int density = 40);

/// Gives the length of the next block.
using Partition = std::function<int()>;

Partition blocksOf(int frames);
Partition randomBlocks(std::uint32_t seed, int longest);

/// Renders hits in blocks as the partition cuts them.
Sound play(vsthost::Host& host, const std::vector<Hit>& hits, int frames, const Partition& partition);

/// Plays the same hits in plain blocks, to hear whether the plug-in is well.
SoundFacts playPlain(vsthost::Host& host, int frames, std::uint32_t seed = 1);

/// Takes in what a new state or program leaves for the next block: the change of effect has its crossfade in the block
/// that brings it.
void settle(vsthost::Host& host);

/// Whether all pads send to the effect, or none.
enum class PadSends { off, on };

/// Gives all pads the same send and plays every voice twice. After that all voices' gates and fades are alike, so the
/// samples no longer depend on which voice a note gets, which in turn depends on where blocks end.
void warm(vsthost::Host& host, PadSends sends);

/// The host index of a parameter by its name, or -1.
int indexOf(vsthost::Host& host, const char* name);

/// Sets a parameter that may not exist.
void setNamed(vsthost::Host& host, const char* name, float value);

}  // namespace sivray::check
