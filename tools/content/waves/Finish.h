// The processing that every wave gets after its model: channels, strokes, drive, filters, rooms, and clean ends.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "content/models/Model.h"

namespace sivray::content {

/// Returns the parameters that a row of any model may set.
const std::vector<ParameterRule>& commonRules();

/// Renders a sound from its first stroke to the end of its decay: one channel, or two if `width` is above 0. It starts
/// and ends at zero and has no DC offset. All random numbers derive from `seed`.
Sound makeSound(const Model& model, const Parameters& parameters, std::uint64_t seed);

}  // namespace sivray::content
