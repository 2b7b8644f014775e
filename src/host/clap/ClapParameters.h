// The instrument's parameters in CLAP's terms: ids, ranges, texts, and the pages of eight that controllers show.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "host/clap/ClapExtensions.h"
#include "host/shell/BramelInstrument.h"

namespace tesh::bramel::clap {

/// The parameters are those that other forms' hosts see, in their order. The id is the macro's number, which never
/// changes its meaning. A parameter of few states has their numbers as its values; all others run from 0 to 1.
/// Everything but `normalised` and `find` on the main thread.
class ClapParameters {
 public:
  /// `instrument` outlives this object.
  explicit ClapParameters(vst::BramelInstrument& instrument);

  std::uint32_t count() const { return static_cast<std::uint32_t>(all.size()); }

  /// False out of range.
  bool describe(std::uint32_t index, ParamInfo& info) const;

  static constexpr std::uint32_t kNone = kInvalidId;
  /// The index of the parameter `id`, or kNone. `cookie` is a hint from `describe`, and may be null or wrong. Audio
  /// thread too.
  std::uint32_t find(std::uint32_t id, const void* cookie = nullptr) const SIVRAY_NONBLOCKING;

  std::uint32_t idAt(std::uint32_t index) const SIVRAY_NONBLOCKING { return all[index].id; }

  /// A parameter of states stays on the one that it has.
  bool isModulatable(std::uint32_t index) const SIVRAY_NONBLOCKING { return all[index].lastState == 0; }

  /// A value of the host as the instrument has it, 0 to 1, limited to the range; NaN is the least value. Audio thread
  /// too.
  float normalised(std::uint32_t index, double value) const SIVRAY_NONBLOCKING;
  /// The reverse.
  double hostValue(std::uint32_t index, float value) const SIVRAY_NONBLOCKING;

  std::string textOf(std::uint32_t index, double value) const;
  /// Finds the value that has this text, or the number nearest to that in the text. False if there is none.
  bool valueOf(std::uint32_t index, const std::string& text, double& value) const;

  // Pages: one for each row of the panel with its eight pads, and one for the master effect.

  std::uint32_t pageCount() const;
  /// False out of range.
  bool describePage(std::uint32_t index, RemoteControlsPage& page) const;

 private:
  struct Parameter {
    std::uint32_t id = 0;
    int lastState = 0;  ///< 0 for a parameter that runs from 0 to 1.
  };

  vst::BramelInstrument& instrument;
  std::vector<Parameter> all;
  std::vector<std::uint32_t> indexOfId;
};

}  // namespace tesh::bramel::clap
