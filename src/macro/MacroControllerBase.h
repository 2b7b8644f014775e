// The list of macros with their programs, and the controller map: everything that does not depend on the engine's type.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/MidiStatus.h"
#include "core/RealTime.h"
#include "macro/MacroParameterControl.h"
#include "storage/programs/ProgramShelf.h"

namespace tesh::vimo {

/// One call at a time, where a block counts as a call. The macro list changes only while no audio runs.
class MacroControllerBase : public MacroList, public MacroParameterControlListener {
 public:
  static constexpr std::uint8_t kPitchBendKey = cofu::core::kMidiPitchBend;
  static constexpr std::uint8_t kLastMappableController = 126;
  /// Whether a map may assign a macro to this MIDI controller: never to bank select.
  static constexpr bool canMove(std::uint8_t controller) {
    return controller <= kLastMappableController && !cofu::core::isMidiBankSelect(controller);
  }

  MacroControllerBase();

  float macroValue(std::uint64_t index) const SIVRAY_NONBLOCKING override;
  std::uint64_t macroObject(std::uint64_t index) const SIVRAY_NONBLOCKING override;
  const std::string& programName() const override { return selectedName; }
  const std::string& programComment() const override { return selectedComment; }
  std::uint32_t programTime() const override { return selectedTime; }
  void macrosChanged() override {}

  /// The live value, 0 to 1; 0 past the list.
  float liveMacroValue(std::uint64_t index) const SIVRAY_NONBLOCKING;

  std::uint64_t macroCount() const final { return macros.size(); }
  /// Returns null past the list.
  MacroParameterControl* macroAt(std::uint64_t index) SIVRAY_NONBLOCKING;
  const MacroParameterControl* macroAt(std::uint64_t index) const SIVRAY_NONBLOCKING;
  float macroDefault(std::uint64_t index) const final;

  /// The macro of a MIDI controller or of pitch bend (kPitchBendKey); -1 if there is none.
  std::int64_t macroForController(std::uint8_t number) const SIVRAY_NONBLOCKING;
  bool hasController(std::uint8_t number) const { return ccMap.contains(number); }
  bool hasPitchBend() const { return ccMap.contains(kPitchBendKey); }
  std::int64_t macroForPitchBend() const { return macroForController(kPitchBendKey); }
  /// Reads the map from a file. A file that cannot be opened empties the map. Throws std::runtime_error if the text is
  /// not a JSON object with an object "cc_map"; the map then stays as it was.
  void loadCcMap(const std::string& path);
  void readCcMap(std::span<const std::uint8_t> text);
  /// The map in a file's text. Throws as `loadCcMap`.
  static std::map<std::uint8_t, std::uint64_t> ccMapIn(std::span<const std::uint8_t> text);

  bool isHidden(std::uint64_t macro) const;

  ProgramShelf& programs() { return shelf; }
  const ProgramShelf& programs() const { return shelf; }
  void setProgramName(std::string_view name) { selectedName.assign(name); }

  std::vector<std::uint64_t> automationBlacklist;  ///< Macros that the host does not see.
  std::map<std::uint8_t, std::uint64_t> ccMap;     ///< MIDI controller, or kPitchBendKey, to macro.

 protected:
  std::vector<std::unique_ptr<MacroParameterControl>> macros;
  ProgramShelf shelf{*this};
  std::string selectedName;
  std::string selectedComment;
  std::uint32_t selectedTime = 0;
};

}  // namespace tesh::vimo
