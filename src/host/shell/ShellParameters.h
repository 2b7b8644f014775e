// The parameters of the shell: the routes by which values come in, and what host and editor read of them.
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

/// Takes the main lock where it is not given. The lock of `cache` comes after it.
class ShellParameters {
 public:
  explicit ShellParameters(ShellCore& shellCore);

  /// Of the parameters that the host sees.
  std::uint64_t visibleCount() const;
  /// BramelInstrument::kNoParameter out of range.
  std::uint64_t idOf(std::uint64_t visibleIndex) const SIVRAY_NONBLOCKING;

  /// The host's route. The first form, on another thread than those of the blocks, first reads from the disk what the
  /// value needs, as the editor's route does.
  void set(std::uint64_t id, float value) SIVRAY_NONBLOCKING;
  void set(std::uint64_t id, float value, const MainLock& lock) SIVRAY_NONBLOCKING;
  void setAll(std::span<const std::uint64_t> ids, std::span<const float> values) SIVRAY_NONBLOCKING;
  /// The editor's route: through the host if the host sees the parameter.
  void setFromEditor(std::uint64_t id, float value);
  void setInteger(std::uint64_t id, std::uint64_t value);
  /// Opens or closes a gesture of the user's hand.
  void setGesture(std::uint64_t id, bool isOpen);

  ParameterCache cache;  ///< Has a lock of its own.
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
