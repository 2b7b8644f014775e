// The output of the command measure: each wave's figures and nearest recording, and a table by group.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <vector>

#include "content/measure/References.h"
#include "content/measure/Sources.h"
#include "content/measure/Targets.h"

namespace sivray::content {

struct MeasuredWave {
  std::string name;
  int category = 0;  ///< Index into kCategoryNames.
  std::optional<Group> group;
  std::optional<double> monoLoss;  ///< See monoLossOf.
  Hit hit;
  Picture picture;
  Figures figures{};
};

/// Measures waves on all cores.
std::vector<MeasuredWave> measureWaves(std::span<const SourceWave> waves);

struct Nearest {
  const Reference* reference = nullptr;
  float distance = 0.0F;
};

/// Returns the nearest of these recordings, except those of the set `without`.
Nearest nearestOf(const Picture& picture, std::span<const Reference* const> references,
                  const std::string& without = {});

/// Prints each figure of a wave beside its group's range, and marks those outside.
void printWave(std::ostream& out, const MeasuredWave& wave, std::span<const Reference> references, Half half);

/// Prints a table with a line for each group: the number of recordings of `half`; the median D of all recordings to the
/// nearest one of another set; the goal for the waves; the median D of the other half to `half`; the number of waves,
/// their median and least D to `half`, and the share of the waves with many figures outside.
void printGroups(std::ostream& out, std::span<const MeasuredWave> waves, std::span<const Reference> references,
                 Half half);

/// Two waves with a smaller D sound alike.
inline constexpr float kTwins = 3.5F;

/// Prints the pairs of waves that are closer than kTwins.
void printTwins(std::ostream& out, std::span<const MeasuredWave> waves);

/// Prints the recordings' ranges as the rows of TargetTable.cpp.
void printTargets(std::ostream& out, std::span<const Reference> references);

}  // namespace sivray::content
