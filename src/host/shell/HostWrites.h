// Collects the host's writes before a block and passes them to the shell.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "core/RealTime.h"
#include "host/shell/BramelInstrument.h"

namespace tesh::bramel::vst {

/// Passes the writes of a block to the shell together and in order, so that the shell's locks are taken once. Audio
/// thread.
class HostWrites {
 public:
  /// `ofInstrument` outlives this object.
  explicit HostWrites(BramelInstrument& ofInstrument) : instrument(ofInstrument) {}

  void put(std::uint64_t id, float value) SIVRAY_NONBLOCKING {
    if (count == kMost) {
      handOver();
    }
    ids[count] = id;
    values[count] = value;
    ++count;
    instrument.announceParameter(id, value);
  }

  void handOver() SIVRAY_NONBLOCKING {
    if (count > 0) {
      instrument.setParameters(std::span(ids).first(count), values);
      count = 0;
    }
  }

 private:
  static constexpr std::size_t kMost = 256;

  BramelInstrument& instrument;
  std::array<std::uint64_t, kMost> ids{};
  std::array<float, kMost> values{};
  std::size_t count = 0;
};

}  // namespace tesh::bramel::vst
