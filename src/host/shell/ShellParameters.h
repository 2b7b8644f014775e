// The shell's parameters: the ways in which values are written, and what host and editor read.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>

#include "core/RealTime.h"
#include "host/shell/ParameterCache.h"
#include "host/shell/ParameterMap.h"
#include "host/shell/ProcessorEvent.h"
#include "host/shell/ShellCore.h"
#include "host/shell/WaitingWrites.h"

namespace tesh::bramel::vst {

/// Operations without a MainLock argument take the main lock themselves. The lock of `cache` is taken after it.
class ShellParameters {
 public:
  explicit ShellParameters(ShellCore& shellCore);

  /// The number of parameters that the host sees.
  std::uint64_t visibleCount() const;
  /// BramelInstrument::kNoParameter out of range.
  std::uint64_t idOf(std::uint64_t visibleIndex) const SIVRAY_NONBLOCKING;

  /// Writes by the host. The first form first reads the data that the value needs from the disk, except on an audio
  /// thread; so does a write by the editor.
  void set(std::uint64_t id, float value) SIVRAY_NONBLOCKING;
  void set(std::uint64_t id, float value, const MainLock& lock) SIVRAY_NONBLOCKING;
  void setAll(std::span<const std::uint64_t> ids, std::span<const float> values) SIVRAY_NONBLOCKING;
  /// A write by the editor: through the host if the host sees the parameter.
  void setFromEditor(std::uint64_t id, float value);
  void setInteger(std::uint64_t id, std::uint64_t value);
  /// Opens or closes a gesture of the user.
  void setGesture(std::uint64_t id, bool isOpen);

  ParameterCache cache;  ///< Has its own lock.
  WaitingWrites waiting;

 private:
  void readAhead(std::uint64_t id, float value) const;
  void post(std::uint64_t id, float value, const vimo::SourceId& source, const MainLock& lock) SIVRAY_NONBLOCKING;

  ShellCore& core;
  ParameterMap map;
  const vimo::SourceId editorSource;
  const vimo::SourceId hostSource;
};

}  // namespace tesh::bramel::vst
