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

/// Parameters give times in milliseconds and frequencies in Hz. A time without further comment is a t60: the time to
/// fall by 60 dB.
struct Model {
  std::string name;
  std::vector<ParameterRule> rules;
  /// Renders one channel into a silent signal. `dice` identifies the channel; only its `own` numbers may differ between
  /// two channels. `parameters` holds those of `rules` and `width`: 0 for mono, up to 1 for channels with little in
  /// common.
  void (*make)(Signal& signal, const Parameters& parameters, Dice dice);
};

/// Returns the model with this name, or null.
const Model* findModel(std::string_view name);

/// Returns all names, separated by commas.
std::string modelNames();

}  // namespace sivray::content
