// A model: a kind of drum with its parameters, and the law that turns them into one channel of sound.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "content/synth/Parameters.h"
#include "content/synth/Random.h"
#include "content/synth/Signal.h"

namespace sivray::content {

/// Times in parameters are in milliseconds, frequencies in Hz; a time that says nothing else is that of a fall by 60
/// dB.
struct Model {
  std::string name;
  std::vector<ParameterRule> rules;
  /// Adds one channel to a silent signal. `dice` says which channel; what it throws is all that may differ between two.
  /// The parameters are those of `rules` and `width`: 0 for mono, up to 1 for channels that have little in common.
  void (*make)(Signal& signal, const Parameters& parameters, Dice dice);
};

/// The model of a name, or null.
const Model* findModel(std::string_view name);

/// All names with commas between them.
std::string modelNames();

}  // namespace sivray::content
