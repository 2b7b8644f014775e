// One drum hit as the measure takes it: mono, at 44100 Hz, from its first audible sample.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

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

/// Averages the channels, converts the rate and drops the silence before the hit.
Hit hitOf(const Wave& wave);

}  // namespace sivray::content
