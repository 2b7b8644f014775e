// The interface of every group of engine parameters: integers by index, each with a name, a range
// and a display text. It lies below the effects and the engine, which both implement it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/RealTime.h"

namespace tesh::bramel::plugin::sivray {

/// Name and range of one parameter.
struct ParameterRow {
  const char* name = "";
  std::int32_t minimum = 0;
  std::int32_t maximum = 0;
  std::int32_t defaultValue = 0;
};

/// A group of integer parameters. Values are single words: they may be read on any thread while the audio thread runs.
class IParameter {
 public:
  virtual ~IParameter() = default;

  /// The number of parameters in the group.
  virtual int count() const SIVRAY_NONBLOCKING = 0;

  /// Stores the integer at `value`; a group that clamps writes the clamped value back. A bad index is ignored.
  /// Gives the value that was taken, or 0.
  virtual int setValue(int index, std::int32_t* value) SIVRAY_NONBLOCKING = 0;

  /// The integer at `index`; a bad index gives what the group decides.
  virtual std::int32_t value(int index) const SIVRAY_NONBLOCKING = 0;

  /// The display text that `value` has at `index`; empty where there is none.
  virtual std::string format(int index, std::int32_t value) const = 0;

  /// The row at `index`, or null where the group has none. Good until the next call.
  virtual const ParameterRow* info(int index) const SIVRAY_NONBLOCKING = 0;

  /// The index of the row named `name`, or -1.
  virtual int indexOf(std::string_view name) const = 0;
};

/// A parameter group that also works on the mixed block.
template <typename Sample>
class IAudioProcessableTmplt : public IParameter {
 public:
  /// Processes `frames` frames of the interleaved `block` in place. Audio thread.
  virtual void processAudio(Sample* block, int frames) SIVRAY_NONBLOCKING = 0;
};

}  // namespace tesh::bramel::plugin::sivray
