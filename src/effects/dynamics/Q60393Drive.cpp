// The settings of the drive.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/dynamics/Q60393Drive.h"

#include "effects/dynamics/DriveStep.h"
#include "effects/interfaces/KnobTables.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

/// Threshold at no drive: 0.6 of full scale.
constexpr std::int32_t kHighestThreshold = 19660;

}  // namespace

Q60393Drive::Settings Q60393Drive::settingsOf(const Knobs& knobs) {
  const std::int32_t drive = valueAt(linearTable, knobs.edit1);
  return {drive, kDriveLevel.at(knobs.edit2), std::max(kHighestThreshold - drive, 0)};
}

void Q60393Drive::step(const Settings&, std::int16_t& left, std::int16_t& right) {
  stepDrive<cofu::registers::Registers128>(*this, left, right);
}

template class TwoKnobEffect<Q60393Drive>;

}  // namespace tesh::bramel::plugin::sivray::effects
