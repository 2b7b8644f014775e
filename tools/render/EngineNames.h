// Names of the engine's parameters, waves and effects on the command line and in MIDI files, and their values.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "engine/Generator.h"
#include "engine/samples/SampleLibrary.h"

namespace sivray::render {

/// One engine parameter: its integers run from 0 to `range`.
struct EngineParameter {
  std::string name;  ///< As in "pad3.punch".
  std::uint32_t id = 0;
  std::int32_t range = 0;
};

/// Returns the integer of a normalised value, rounded as the engine does.
std::int32_t engineInteger(const EngineParameter& parameter, float value);

/// Returns the normalised value, 0 to 1, of an integer.
float engineValue(const EngineParameter& parameter, std::int32_t integer);

/// Looks names up, ignoring case, blanks, dashes and underscores.
class EngineNames {
 public:
  EngineNames(const tesh::vimo::Generator<float>& generator, const tesh::vimo::SampleLibrary& library);

  /// Returns the parameter with a short name ("pad3.punch", "fx.type", "master") or the engine's name ("003: Punch",
  /// "017: Master OUT"). Throws RenderError for an unknown name.
  const EngineParameter& parameter(const std::string& text) const;

  /// Returns the integer for a parameter: `text` is a number, or the name of a wave or effect where the parameter
  /// chooses one. Throws RenderError for an unknown name and a number out of range.
  std::int32_t integerOf(const EngineParameter& parameter, const std::string& text) const;

 private:
  void add(const std::string& name, const EngineParameter& parameter);

  std::map<std::string, EngineParameter> parameters;
  std::map<std::string, std::int32_t> waves;
  std::map<std::string, std::int32_t> effects;
};

/// Returns `text` in the form in which names are compared.
std::string plainName(const std::string& text);

}  // namespace sivray::render
