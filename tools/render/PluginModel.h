// The instrument's state, taken apart: its macros, programs and names, read out of the bytes that a host saves,
// changed, and put together again.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "EngineNames.h"
#include "macro/PluginMacroControllable.h"

namespace sivray::render {

/// A program as the list shows it.
struct ListedProgram {
  std::string number;  ///< "12" in the factory bank, "U3" in the user's.
  std::string name;
  std::string comment;
};

/// A macro and the place that brings an engine parameter to the wanted integer.
struct MacroPlace {
  std::size_t macro = 0;
  float value = 0.0F;
};

class PluginModel {
 public:
  /// Reads the sample library's names, and the user's programs when a state comes in.
  PluginModel();

  /// Takes in a state as a host saves it. False, and nothing changes, when it is not one.
  bool takeIn(std::span<const std::uint8_t> state);

  /// The state with all changes.
  std::vector<std::uint8_t> state() const;

  const EngineNames& names() const { return engineNames; }

  /// The macros that hosts are shown, by host index; names are matched in order.
  void setHostNames(const std::vector<std::string>& hostNames);
  /// The host index of a macro; -1 where hosts are not shown it.
  int hostIndexOf(std::size_t macro) const;

  /// By number or name. Throws RenderError for an unknown one.
  std::size_t macroOf(const std::string& text) const;

  /// The same among the host's parameters: a number is a host index.
  std::size_t hostMacroOf(const std::string& text) const;

  /// The macro's name for messages.
  std::string macroName(std::size_t macro) const;

  /// How to bring an engine parameter to an integer by a macro, one that hosts are shown if there is any.
  std::optional<MacroPlace> placeFor(const EngineParameter& parameter, std::int32_t integer) const;

  void setMacro(std::size_t macro, float value);

  std::vector<ListedProgram> programs() const;

  /// Selects a program by number or name. Throws RenderError for an unknown one.
  void selectProgram(const std::string& text);

 private:
  using Processor = tesh::vimo::PluginMacroControllable<tesh::vimo::Generator<float>>;
  using Controller = Processor::Controller;

  mutable Processor processor;
  EngineNames engineNames;
  std::vector<std::uint8_t> miscSection;
  std::vector<std::uint8_t> engineSection;
  std::vector<std::size_t> shownMacros;
};

}  // namespace sivray::render
