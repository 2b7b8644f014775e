// The settings and output stages of both compressors.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/dynamics/SivrayFxCompressor.h"

#include "core/FixedPoint.h"
#include "effects/dynamics/SivrayFxStereoCompressor.h"
#include "effects/interfaces/KnobTables.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

// Sensitivity 1/8 to 1.0; attack 0.001 to 0.1 per sample, a time constant of 23 ms to 0.2 ms.
constexpr SquareRange kSens{4096, 28672};
constexpr SquareRange kAttack{32, 3245};

// Sensitivity 1/512 to 1/32; attack 0.00024 to 0.1 per sample, a time constant of 93 ms to 0.2 ms.
constexpr SquareRange kMasterSens{64, 959};
constexpr SquareRange kMasterAttack{8, 3268};

std::int16_t masterOut(std::int64_t blocked, std::int64_t scale) {
  constexpr std::int32_t kOutput = SivrayFxStereoCompressor::StereoCompressorImpl::kOutput;
  return static_cast<std::int16_t>(mul15(kOutput, CompressorGain::scaled<9>(blocked, scale)));
}

}  // namespace

CompressorLaw::Settings CompressorLaw::settingsOf(const Knobs& knobs) {
  return {kSens.at(knobs.edit1), kAttack.at(knobs.edit2)};
}

void CompressorLaw::step(const Settings& to, std::int16_t& left, std::int16_t& right) {
  law.run(std::int64_t{left} * 16384, std::int64_t{right} * 16384, to.attack);
  const std::int64_t scale = (static_cast<std::int64_t>(law.gain) * sens.value() * kMakeUp) >> 15;
  left = static_cast<std::int16_t>(CompressorGain::scaled<10>(law.left.highpass, scale));
  right = static_cast<std::int16_t>(CompressorGain::scaled<10>(law.right.highpass, scale));
}

using MasterLaw = SivrayFxStereoCompressor::StereoCompressorImpl;

MasterLaw::Settings MasterLaw::settingsOf(const Knobs& knobs) {
  return {kMasterSens.at(knobs.edit1), kMasterAttack.at(knobs.edit2)};
}

void MasterLaw::reset(const Settings&) {
  const CompressorGain before = law;
  law = {};
  law.left.highpass = before.left.highpass;
  law.right.highpass = before.right.highpass;
}

void MasterLaw::step(const Settings& to, std::int16_t& left, std::int16_t& right) {
  law.run(std::int64_t{left} * 32768, std::int64_t{right} * 32768, to.attack);
  const std::int64_t scale = (sens.value() * law.gain) >> 13;
  left = masterOut(law.left.highpass, scale);
  right = masterOut(law.right.highpass, scale);
}

template class TwoKnobEffect<CompressorLaw>;
template class TwoKnobEffect<MasterLaw>;

}  // namespace tesh::bramel::plugin::sivray::effects
