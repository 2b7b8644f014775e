// Empty implementations of the instrument's callbacks. A test overrides the operations that it checks.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "host/shell/BramelInstrumentCallbacks.h"

namespace support {

struct QuietHost : tesh::bramel::vst::BramelInstrumentHostCallback {
  void beginEdit(std::uint64_t /*index*/) override {}
  void endEdit(std::uint64_t /*index*/) override {}
  void automate(std::uint64_t /*index*/, float /*value*/) override {}
  void sendMidi(const std::uint8_t* /*data*/, std::size_t /*size*/, std::int32_t /*delta*/) override {}
  void programChanged(tesh::bramel::vst::Origin /*origin*/) override {}
  void parametersChanged() override {}
  void keyStateChanged(int /*note*/) override {}
};

struct QuietEditor : tesh::bramel::vst::BramelInstrumentUICallback {
  void holdUpdates() override {}
  void releaseUpdates() override {}
  void programSaved(const std::string& /*bank*/, const std::uint64_t* /*ids*/, std::uint64_t /*count*/) override {}
  void programDeleted(const std::string& /*bank*/, const std::uint64_t* /*ids*/, std::uint64_t /*count*/) override {}
  void programMoved(const std::string& /*bank*/, std::uint64_t /*from*/, std::uint64_t /*to*/) override {}
  void programChanged() override {}
  void parameterChanged(std::uint64_t /*id*/) override {}
  void midiReceived(const std::uint8_t* /*data*/, std::size_t /*size*/) override {}
};

}  // namespace support
