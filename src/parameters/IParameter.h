// The interface of a group of engine parameters: integers by index, each with a name, a range and a display text. The
// effects and the engine implement it.
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

/// The row that some groups return for an index out of range.
inline constexpr ParameterRow kNoParameterRow{"----", 0, 0, 0};

/// A group of integer parameters. Each value is one word, so any thread may read it while the audio thread runs.
class IParameter {
 public:
  virtual ~IParameter() = default;

  /// The number of parameters in the group.
  virtual int count() const SIVRAY_NONBLOCKING = 0;

  /// Stores `*value`; a group that clamps writes the clamped value back to it. Returns the stored value. Ignores an
  /// index out of range and returns 0.
  virtual int setValue(int index, std::int32_t* value) SIVRAY_NONBLOCKING = 0;

  /// The integer at `index`. For an index out of range, the result depends on the group.
  virtual std::int32_t value(int index) const SIVRAY_NONBLOCKING = 0;

  /// The display text of `value` for the parameter at `index`; empty if it has none.
  virtual std::string format(int index, std::int32_t value) const = 0;

  /// The row at `index`, or null if the group has none. Valid until the next call.
  virtual const ParameterRow* info(int index) const SIVRAY_NONBLOCKING = 0;

  /// The index of the parameter `name`, or -1.
  virtual int indexOf(std::string_view name) const = 0;
};

/// A parameter group that also processes audio.
template <typename Sample>
class IAudioProcessableTmplt : public IParameter {
 public:
  /// Processes `frames` frames of the interleaved `block` in place. Audio thread.
  virtual void processAudio(Sample* block, int frames) SIVRAY_NONBLOCKING = 0;
};

}  // namespace tesh::bramel::plugin::sivray
