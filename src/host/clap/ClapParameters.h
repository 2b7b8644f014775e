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

/// The parameters are the ones that hosts of the other forms see, in the same order. A parameter's id is its macro's
/// number, which never changes its meaning. The values of a parameter of few states are the states' numbers; all others
/// run from 0 to 1. Main thread, except where an operation says otherwise.
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

  /// False for a parameter of few states, which modulation does not move.
  bool isModulatable(std::uint32_t index) const SIVRAY_NONBLOCKING { return all[index].lastState == 0; }

  /// Converts the host's value to the instrument's, 0 to 1, limited to the range; NaN becomes the least value. Audio
  /// thread too.
  float normalised(std::uint32_t index, double value) const SIVRAY_NONBLOCKING;
  /// The reverse. Audio thread too.
  double hostValue(std::uint32_t index, float value) const SIVRAY_NONBLOCKING;

  std::string textOf(std::uint32_t index, double value) const;
  /// Finds the value with this text, else the one nearest to the number in the text. False if there is neither.
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
