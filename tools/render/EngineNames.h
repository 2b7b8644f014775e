// The names that the command line and MIDI files use for the engine's parameters, waves and effects, and their values.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "engine/Generator.h"
#include "engine/samples/SampleLibrary.h"

namespace sivray::render {

/// One engine parameter: its integers run from 0 to `range`.
struct EngineParameter {
  std::string name;  ///< As in "pad3.punch"; pads count from 1.
  std::uint32_t id = 0;
  std::int32_t range = 0;
};

/// A wave of the installed library.
struct ListedWave {
  std::int32_t number = 0;
  std::string name;
  std::int32_t category = 0;  ///< From 0, in the order of the panel's browser.
};

/// Returns the integer of a normalised value (0 to 1), rounded as in the engine.
std::int32_t engineInteger(const EngineParameter& parameter, float value);

/// Returns the normalised value, 0 to 1, of an integer.
float engineValue(const EngineParameter& parameter, std::int32_t integer);

/// Looks names up, ignoring case, blanks, dashes and underscores.
class EngineNames {
 public:
  EngineNames(const tesh::vimo::Generator<float>& generator, const tesh::vimo::SampleLibrary& library);

  /// Returns all named parameters: those of the pads, then of the effect, then the master.
  const std::vector<EngineParameter>& all() const { return parameters; }

  /// All waves, by category.
  const std::vector<ListedWave>& waveList() const { return allWaves; }

  /// Whether there is such a parameter.
  bool knows(const std::string& text) const { return find(text) != nullptr; }

  /// Returns the parameter of a name such as "pad3.punch", "fx.type" or "master". Throws RenderError for an unknown
  /// one.
  const EngineParameter& parameter(const std::string& text) const;

  /// Returns the integer for a parameter: `text` is a number, or the name of a wave or effect where the parameter
  /// chooses one. Throws RenderError for an unknown name and a number out of range.
  std::int32_t integerOf(const EngineParameter& parameter, const std::string& text) const;

 private:
  const EngineParameter* find(const std::string& text) const;

  std::vector<EngineParameter> parameters;
  std::vector<ListedWave> allWaves;
  std::map<std::string, std::int32_t> waves;  ///< Numbers by plain name.
  std::map<std::string, std::int32_t> effects;
};

/// Returns `text` normalised for comparison: without blanks, dashes and underscores, in lower case.
std::string plainName(const std::string& text);

}  // namespace sivray::render
