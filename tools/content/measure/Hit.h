// One drum hit as the measure takes it: mono, at 44100 Hz, from its first audible sample.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "content/library/Wave.h"
#include "core/EngineRate.h"

namespace sivray::content {

/// The rate that everything here measures at, in Hz. Hits of other rates are converted.
inline constexpr double kMeasureRate = tesh::cofu::core::kEngineRate;

/// Full scale is 1.0. Empty if the sound is silent.
using Hit = std::vector<float>;

/// Drops what comes before the first sample that reaches 40 dB below the peak.
Hit hitFrom(std::span<const float> mono);

/// Returns how many dB are lost when both sides are averaged: 0 if they are alike, 3 if they are unrelated. Nothing for
/// a mono wave, and for one whose sides are the same.
std::optional<double> monoLossOf(const Wave& wave);

/// Averages the channels, converts the rate and drops the silence before the hit.
Hit hitOf(const Wave& wave);

}  // namespace sivray::content
