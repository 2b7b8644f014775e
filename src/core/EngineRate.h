// The one sample rate of the engine, the effects and the factory's waves.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tesh::cofu::core {

/// Hertz. The sample-rate converter translates between it and the host's rate. A float represents it exactly.
inline constexpr double kEngineRate = 44100.0;

}  // namespace tesh::cofu::core
