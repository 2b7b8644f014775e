// A drum hit in the form that is measured: mono, at 44100 Hz, from its first audible sample.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "content/library/Wave.h"
#include "core/EngineRate.h"

namespace sivray::content {

/// The sample rate of all measurements, in Hz. Hits of other rates are converted.
inline constexpr double kMeasureRate = tesh::cofu::core::kEngineRate;

/// Samples of one hit; full scale is 1.0. Empty if the sound is silent.
using Hit = std::vector<float>;

/// Drops the samples before the first one that reaches 40 dB below the peak.
Hit hitFrom(std::span<const float> mono);

/// Returns how many dB are lost when left and right are averaged: 0 if they are alike, 3 if they are unrelated. Nothing
/// for a mono wave or for one whose sides are identical.
std::optional<double> monoLossOf(const Wave& wave);

/// Averages the channels, converts the rate and drops the silence before the hit.
Hit hitOf(const Wave& wave);

}  // namespace sivray::content
