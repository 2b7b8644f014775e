// The settings and output stages of both compressors.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/dynamics/SivrayFxCompressor.h"

#include "core/FixedPoint.h"
#include "effects/dynamics/CompressorStep.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/OneLong.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

// Sensitivity 1/8 to 1.0; attack 0.001 to 0.1 per sample, a time constant of 23 ms to 0.2 ms.
constexpr SquareRange kSens{4096, 28672};
constexpr SquareRange kAttack{32, 3245};

// Sensitivity 1/512 to 1/32; attack 0.00024 to 0.1 per sample, a time constant of 93 ms to 0.2 ms.
constexpr SquareRange kMasterSens{64, 959};
constexpr SquareRange kMasterAttack{8, 3268};

using Word = lanes::OneLong;

/// Returns the sample without its DC.
Word block(CompressorGain::DcBlock& block, std::int64_t in) {
  const Word step{in - block.previousInput};
  const Word blocked = dcBlocked(Word{block.highpass}, step, Word{CompressorGain::DcBlock::kKept});
  block = {in, blocked.v};
  return blocked;
}

/// One sample of both channels.
template <typename Output, typename Law>
void compress(Law& compressor, std::int32_t attack, std::int16_t& left, std::int16_t& right) {
  CompressorGain& law = compressor.law;
  const Word blockedLeft = block(law.left, std::int64_t{left} * (1 << Output::kInputShift));
  const Word blockedRight = block(law.right, std::int64_t{right} * (1 << Output::kInputShift));
  law.follow(static_cast<std::int32_t>(larger(magnitude(blockedLeft), magnitude(blockedRight)).v), attack);
  const Word scale = Output::scale(Word{law.gain}, compressor.sens.value());
  Output::sound(blockedLeft, scale).store(&left);
  Output::sound(blockedRight, scale).store(&right);
}

}  // namespace

CompressorLaw::Settings CompressorLaw::settingsOf(const Knobs& knobs) {
  return {kSens.at(knobs.edit1), kAttack.at(knobs.edit2)};
}

void CompressorLaw::step(const Settings& to, std::int16_t& left, std::int16_t& right) {
  compress<CompressorOutput>(*this, to.attack, left, right);
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
  compress<MasterOutput>(*this, to.attack, left, right);
}

template class TwoKnobEffect<CompressorLaw>;
template class TwoKnobEffect<MasterLaw>;

}  // namespace tesh::bramel::plugin::sivray::effects
