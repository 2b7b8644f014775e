// The instrument's saved state, as macros, programs and names that can be read and changed.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "EngineNames.h"
#include "engine/samples/SivraySampleLibrary.h"
#include "macro/PluginMacroControllable.h"

namespace sivray::render {

/// A program, for --list-programs.
struct ListedProgram {
  std::string number;  ///< "12" in the factory bank, "U3" in the user's.
  std::string name;
  std::string comment;
};

/// A macro and the value of it that sets an engine parameter to the wanted integer.
struct MacroPlace {
  std::size_t macro = 0;
  float value = 0.0F;
};

class PluginModel {
 public:
  /// Reads the sample library's names. The user's programs are read when a state is loaded.
  PluginModel();

  /// Loads a state as a host saves it. Returns false and changes nothing if the bytes are not a state.
  bool takeIn(std::span<const std::uint8_t> state);

  /// Returns the state with all changes.
  std::vector<std::uint8_t> state() const;

  const EngineNames& names() const { return engineNames; }
  const tesh::vimo::SampleLibrary& library() const { return sampleLibrary; }

  /// Returns the integer to which the macros set an engine parameter; nothing if no macro controls it.
  std::optional<std::int32_t> integerOf(const EngineParameter& parameter) const;

  /// Sets which macros hosts see, by host index. Names are matched in order.
  void setHostNames(const std::vector<std::string>& hostNames);
  /// Returns the host index of a macro; -1 if hosts do not see it.
  int hostIndexOf(std::size_t macro) const;

  /// Returns a macro by number or name. Throws RenderError for an unknown one.
  std::size_t macroOf(const std::string& text) const;

  /// As `macroOf`, among the host's parameters only: a number is a host index.
  std::size_t hostMacroOf(const std::string& text) const;

  /// Returns the macro's name for messages.
  std::string macroName(std::size_t macro) const;

  /// Returns the macro and value that set an engine parameter to an integer, preferably a macro that hosts see; nothing
  /// if no macro can.
  std::optional<MacroPlace> placeFor(const EngineParameter& parameter, std::int32_t integer) const;

  /// Returns the first macro that controls an engine parameter; nothing if none does.
  std::optional<std::size_t> macroOn(const EngineParameter& parameter) const;

  void setMacro(std::size_t macro, float value);

  /// Returns one line that names the user's own sounds that pads need and that are missing; empty if none.
  std::string missingSounds() const;

  std::vector<ListedProgram> programs() const;

  std::size_t factoryCount() const;

  /// Selects a program by number or name, and returns its name. Throws RenderError for an unknown one.
  std::string selectProgram(const std::string& text);

  /// Returns the values of a program's macros. Throws RenderError for an unknown one.
  std::vector<float> programValues(const std::string& text) const;

 private:
  using Processor = tesh::vimo::PluginMacroControllable<tesh::vimo::Generator<float>>;
  using Controller = Processor::Controller;

  std::pair<tesh::vimo::Bank, std::uint64_t> placeOf(const std::string& text) const;

  mutable Processor processor;
  tesh::vimo::SivraySampleLibrary sampleLibrary;
  EngineNames engineNames;
  std::vector<std::uint8_t> miscSection;
  std::vector<std::uint8_t> engineSection;
  std::vector<std::size_t> shownMacros;
};

}  // namespace sivray::render
