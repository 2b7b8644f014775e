// A model: one kind of drum, its parameters, and the function that renders one channel of its sound.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "content/synth/Parameters.h"
#include "content/synth/Random.h"
#include "content/synth/Signal.h"

namespace sivray::content {

/// Parameters give times in milliseconds and frequencies in Hz. A decay time is a t60, the time to fall by 60 dB,
/// unless a comment says otherwise.
struct Model {
  std::string name;
  std::vector<ParameterRule> rules;
  /// Renders one channel into a silent signal. `dice` holds the channel's random numbers; only those of its `own`
  /// generator may differ between the two channels. `parameters` holds the values of `rules` and `width`: 0 for mono,
  /// up to 1 for channels with little in common.
  void (*make)(Signal& signal, const Parameters& parameters, Dice dice);
};

/// Returns the model with this name, or null.
const Model* findModel(std::string_view name);

/// Returns all names, separated by commas.
std::string modelNames();

}  // namespace sivray::content
