// The AVX2 versions of all laws' runs: instances of the laws' templates.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "core/RealTime.h"
#include "core/VectorCode.h"
#include "effects/delays/SivrayFxBpmSyncDelay.h"
#include "effects/delays/SivrayFxShortDelay.h"
#include "effects/dynamics/Kilnode.h"
#include "effects/dynamics/Q60393Drive.h"
#include "effects/dynamics/SivrayFxCompressor.h"
#include "effects/filters/CombFilter.h"
#include "effects/filters/PeakingEQ.h"
#include "effects/filters/SivrayFxTalkingModulator.h"
#include "effects/filters/SivrayFxTolvanFilter.h"
#include "effects/interfaces/OneSample.h"
#include "effects/modulation/GainModulator.h"
#include "effects/modulation/LfoTables.h"
#include "effects/modulation/Q60393Phaser.h"
#include "effects/modulation/Ringmod.h"
#include "effects/modulation/SivrayFxChorusFlanger.h"
#include "effects/modulation/SivrayFxIMarloEffects.h"
#include "effects/reverbs/GateReverb.h"
#include "effects/reverbs/SivrayFxReverb.h"
#include "effects/reverbs/SivrayFxReverbSmoothHall.h"
#include "effects/rhythmic/BeatGain.h"
#include "effects/rhythmic/SivrayFxGrainShifter.h"
#include "registers/Registers128.h"

SIVRAY_COMPILE_FOR("avx2")

#include "effects/interfaces/Lanes256.h"

#include "effects/delays/BpmDelayStep.h"
#include "effects/delays/ShortDelayStep.h"
#include "effects/dynamics/CompressorPairs.h"
#include "effects/dynamics/DriveStep.h"
#include "effects/dynamics/TubeCurve.h"
#include "effects/filters/FilterPairs.h"
#include "effects/filters/FormantStep.h"
#include "effects/filters/TolvanStep.h"
#include "effects/modulation/ChorusFlangerStep.h"
#include "effects/modulation/EnsembleStep.h"
#include "effects/modulation/GainModulatorStep.h"
#include "effects/modulation/PhaserStep.h"
#include "effects/modulation/RingmodStep.h"
#include "effects/reverbs/HallStep.h"
#include "effects/reverbs/NetworkStep.h"
#include "effects/rhythmic/BeatGainStep.h"
#include "effects/rhythmic/GrainStep.h"

namespace tesh::bramel::plugin::sivray::effects {

using cofu::registers::Registers128Sse41;
using cofu::registers::Registers256;

namespace {

/// Applies `step(law, left sample, right sample)` to `count` samples, in place and one by one, for laws whose step is
/// faster with AVX2. Returns `count`. Works on a copy of the law, so that the compiler keeps its state in registers.
template <auto step, typename Law>
[[gnu::flatten]] unsigned runSerially(Law& law, std::int16_t* left, std::int16_t* right,
                                      unsigned count) SIVRAY_NONBLOCKING {
  Law now = law;
  for (unsigned i = 0; i < count; ++i) {
    step(now, left[i], right[i]);
  }
  law = now;
  return count;
}

}  // namespace

// Delays and reverbs.

const RunInLanes<ShortDelayLaw> ShortDelayLaw::runAvx2 = runLanes<Samples256>;
const RunInLanes<BpmSyncDelayLaw> BpmSyncDelayLaw::runAvx2 = runDelay<Samples256>;
const RunInLanes<RoomReverbLaw> RoomReverbLaw::runAvx2 = runLanes<Samples256>;
const RunInLanes<HallFlow> SivrayFxReverbSmoothHall::runAvx2 = runLanes<Samples256>;
const RunInLanes<GateReverb> GateReverb::runAvx2 = runGated<Samples256>;

// Modulation.

const RunInLanes<MarloChorus> MarloChorus::runAvx2 = runMarloChorus<MarloIn<Registers256>>;
const RunInLanes<MarloPhase> MarloPhase::runAvx2 = runMarloPhase<MarloIn<Registers256>>;
const RunInLanes<MarloEnsemble> MarloEnsemble::runAvx2 = runEnsemble<MarloIn<Registers256>>;
const RunInLanes<ChorusFlangerLaw> ChorusFlangerLaw::runAvx2 = runFlanger<Registers256>;
const RunInLanes<Q60393Phaser> Q60393Phaser::runAvx2 = runPhaser<Registers128Sse41>;
const RunInLanes<Q60393Tremolo> Q60393Tremolo::runAvx2 = runModulated<Samples256>;
const RunInLanes<Q60393Autopan> Q60393Autopan::runAvx2 = runModulated<Samples256>;
const RunInLanes<Ringmod> Ringmod::runAvx2 = runLanes<Samples256>;

// Dynamics. The drive's limits and magnitudes take one instruction each.

using MasterLaw = SivrayFxStereoCompressor::StereoCompressorImpl;

const RunInLanes<CompressorLaw> CompressorLaw::runAvx2 = runCompressor<CompressorOutput>;
const RunInLanes<MasterLaw> MasterLaw::runAvx2 = runCompressor<MasterOutput>;
const RunInLanes<Q60393Drive> Q60393Drive::runAvx2 = runSerially<stepDrive<Registers128Sse41>>;

// Filters. The state-variable filter multiplies signed values in one instruction here, and limits in two. The talking
// modulator only saves copies of registers.

using Lowpass = TolvanLaw<TolvanMode::kLowpass>;
using Highpass = TolvanLaw<TolvanMode::kHighpass>;
using Bandpass = TolvanLaw<TolvanMode::kBandpass>;

template <>
const RunInLanes<Lowpass> Lowpass::runAvx2 = runSerially<stepFilter<Registers128Sse41, TolvanMode::kLowpass>>;
template <>
const RunInLanes<Highpass> Highpass::runAvx2 = runSerially<stepFilter<Registers128Sse41, TolvanMode::kHighpass>>;
template <>
const RunInLanes<Bandpass> Bandpass::runAvx2 = runSerially<stepFilter<Registers128Sse41, TolvanMode::kBandpass>>;
const RunInLanes<PeakingEQ> PeakingEQ::runAvx2 = runPeaking;
const RunInLanes<CombFilter> CombFilter::runAvx2 = runComb;
const RunInLanes<TalkingModulatorLaw> TalkingModulatorLaw::runAvx2 = runSerially<stepFormants<Registers128Sse41>>;

// Rhythmic effects.

const RunInLanes<Pump> Pump::runAvx2 = runBeat<Samples256>;
const RunInLanes<GrainShifterLaw> GrainShifterLaw::runAvx2 = runGrains<Samples256>;
const RunInLanes<Slicer> Slicer::runAvx2 = runBeat<Samples256>;

}  // namespace tesh::bramel::plugin::sivray::effects

namespace tesh::bramel::plugin::fxkit {
namespace {

/// Like OneValue, for four values at once.
struct FourValues {
  using Floats = float __attribute__((vector_size(16)));
  using Words = std::int32_t __attribute__((vector_size(16)));
  using Doubles = double __attribute__((vector_size(32)));
  using Longs = std::uint64_t __attribute__((vector_size(32)));

  static Doubles widened(Floats x) { return __builtin_convertvector(x, Doubles); }
  static Floats narrowed(Doubles x) { return __builtin_convertvector(x, Floats); }
  static Floats load(const float* values) {
    Floats four;
    std::memcpy(&four, values, sizeof(four));
    return four;
  }
};

}  // namespace

[[gnu::flatten]] void throughTubeAvx2(float* samples, const float* drives, const float* mixes, unsigned count) {
  using Four = FourValues;
  for (unsigned i = 0; i < count; i += 4) {
    const Four::Floats sound = tube<Four>(Four::load(samples + i), Four::load(drives + i), Four::load(mixes + i));
    std::memcpy(samples + i, &sound, sizeof(sound));
  }
}

}  // namespace tesh::bramel::plugin::fxkit

SIVRAY_COMPILE_FOR_ALL
