// What every wave goes through behind its model: channels, strokes, drive, filters, rooms, and clean ends.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "content/models/Model.h"

namespace sivray::content {

/// The parameters that a row may set whatever its model is.
const std::vector<ParameterRule>& commonRules();

/// The model's sound from its first blow to the end of its fall. One channel, or two where `width` is above 0. It
/// begins and ends at zero and has no constant part. `seed` is what all chance in it hangs on.
Sound makeSound(const Model& model, const Parameters& parameters, std::uint64_t seed);

}  // namespace sivray::content
