// The loops of a kernel, as templates over the lane operations of its instruction set. Each kernel's source file
// includes it and compiles it for its own set, so everything here has internal linkage.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "engine/voice/FrameChain.h"
#include "engine/voice/RampBank.h"
#include "engine/voice/VoiceBank.h"
#include "engine/voice/VoiceChain.h"
#include "engine/voice/VoiceKernel.h"
#include "engine/voice/VoiceLanes.h"

namespace tesh::bramel::plugin::sivray {
namespace {

/// A step of four ramps, by the same formula as RampBank's plain step.
template <typename Four>
struct RampStep {
  static int step(RampBank::Group& group) {
    using Integers = typename Four::Integers;
    const Integers target = Four::loadAligned(group.target.data());
    const Integers distance = Four::sub32(Four::loadAligned(group.current.data()), target);
    const Integers moved = Four::mulLow32(Four::loadAligned(group.rate.data()), distance);
    const Integers a = Four::template shiftRight32<15>(moved);
    const Integers b = Four::template shiftRight32<15>(Four::sub32(a, Four::template shiftLeft32<15>(a)));
    const Integers current = Four::add32(target, b);
    Four::storeAligned(group.current.data(), current);
    return Four::signs32(Four::equal32(current, target));
  }
};

/// Sums over the lanes as 32-bit words: left and right of a frame and of the next one. Zeros for a bus that is not fed.
template <typename Four>
struct PairSums {
  typename Four::Integers dry = Four::zero();
  typename Four::Integers effect = Four::zero();
};

/// Writes frame after frame to both buses.
template <typename Four>
class FrameWriter {
  using Integers = typename Four::Integers;

 public:
  explicit FrameWriter(const VoiceRun& run) : output(run.output) {}

  /// One frame: dry left and right, effect left and right.
  void put(Integers sums) {
    const Integers words = limited(sums, sums);
    store32(output.dry, Four::first32(words));
    store32(output.effect, Four::second32(words));
    output = output.from(1);
  }

  template <Buses Fed>
  void putFour(const PairSums<Four>& early, const PairSums<Four>& late) {
    Four::store(output.dry, Fed == Buses::effect ? Four::zero() : limited(early.dry, late.dry));
    Four::store(output.effect, Fed == Buses::dry ? Four::zero() : limited(early.effect, late.effect));
    output = output.from(4);
  }

 private:
  static Integers limited(Integers a, Integers b) { return Four::max16(Four::packed32(a, b), Four::all16(-32767)); }
  static void store32(std::int16_t* to, std::int32_t words) { std::memcpy(to, &words, sizeof words); }

  BusWords output;
};

/// All four channels of a frame.
template <typename Chain>
SIVRAY_KERNEL_INLINE inline auto channelsOf(Chain& chain) {
  typename Chain::Vec dry = Chain::Lanes::zero();
  typename Chain::Vec effect = Chain::Lanes::zero();
  chain.frame(dry, effect);
  return Chain::Lanes::channelSums(dry, effect);
}

template <typename Chain>
SIVRAY_KERNEL_INLINE inline auto pairOf(Chain& chain) {
  using L = typename Chain::Lanes;
  typename Chain::Vec dry[2]{L::zero(), L::zero()};
  typename Chain::Vec effect[2]{L::zero(), L::zero()};
  chain.frame(dry[0], effect[0]);
  chain.frame(dry[1], effect[1]);
  PairSums<typename L::Four> sums;
  if constexpr (Chain::kFed != Buses::effect) {
    sums.dry = L::channelSums(dry[0], dry[1]);
  }
  if constexpr (Chain::kFed != Buses::dry) {
    sums.effect = L::channelSums(effect[0], effect[1]);
  }
  return sums;
}

/// Renders all frames of a run in which no ramp moves.
template <typename Chain>
void runResting(const VoiceRun& run) {
  Chain chain(*run.bank, run, 0);
  FrameWriter<typename Chain::Lanes::Four> out(run);
  for (int four = run.frames / 4; four > 0; --four) {
    const auto early = pairOf(chain);
    const auto late = pairOf(chain);
    out.template putFour<Chain::kFed>(early, late);
  }
  for (int rest = run.frames % 4; rest > 0; --rest) {
    out.put(channelsOf(chain));
  }
  chain.finish();
}

/// Renders a run of one voice in which no ramp moves. The words of a lane above 0 are added to those already there.
template <typename L, ChainNeeds Needs>
void runFrames(const VoiceRun& run, int lane) {
  using Vec = typename L::Integers;
  const auto put = [adds = lane > 0](std::int16_t* to, Vec words) {
    L::store(to, adds ? L::max16(L::addLimited16(L::load(to), words), L::all16(-32767)) : words);
  };
  FrameChain<L, Needs> chain(*run.bank, run, lane);
  BusWords output = run.output;
  Vec dry = L::zero();
  Vec effect = L::zero();
  for (int left = run.frames; left > 0; left -= L::kLanes) {
    if (left >= L::kLanes) {
      chain.next(dry, effect);
    } else {
      chain.last(left, dry, effect);
    }
    put(output.dry, dry);
    put(output.effect, effect);
    output = output.from(L::kLanes);
  }
  chain.finish(run.frames);
}

template <typename L, bool Punch>
void runOneVoice(const VoiceRun& run, int lane) {
  if (run.fed == Buses::dry) {
    runFrames<L, ChainNeeds{.fade = false, .punch = Punch, .fed = Buses::dry, .frames = true}>(run, lane);
  } else if (run.fed == Buses::effect) {
    runFrames<L, ChainNeeds{.fade = false, .punch = Punch, .fed = Buses::effect, .frames = true}>(run, lane);
  } else {
    runFrames<L, ChainNeeds{.fade = false, .punch = Punch, .fed = Buses::both, .frames = true}>(run, lane);
  }
}

/// Renders a run of at most two voices, one after the other. The sum of more voices would need limiting at the end.
template <typename L>
int runOneByOne(const VoiceRun& run) {
  for (int lane = 0; lane < run.voices; ++lane) {
    if (run.bank->punchCurrent[static_cast<std::size_t>(lane)] <= kPunchEnd) {
      runOneVoice<L, false>(run, lane);
    } else {
      runOneVoice<L, true>(run, lane);
    }
  }
  return run.frames;
}

/// Renders frames while ramps move, until one has reached its target or a watched fade has closed. `Four` holds the
/// lane operations for the ramps.
template <typename Chain, typename Four>
int runMoving(const VoiceRun& run) {
  Chain chain(*run.bank, run, 0);
  FrameWriter<typename Chain::Lanes::Four> out(run);
  bool arrived = false;
  int done = 0;
  for (;;) {
    out.put(channelsOf(chain));
    ++done;
    if (arrived || done == run.frames || chain.fadeClosed()) {
      break;
    }
    arrived = run.ramps->stepAndRetire<RampStep<Four>>();
    chain.loadMovedGains(run.moving);
  }
  chain.finish();
  return done;
}

/// Renders a run without fades. There are two forms with moving ramps: for the dry bus alone, and for both buses.
template <template <typename, ChainNeeds> typename Chain, typename L, typename Four, bool Punch, bool Tap>
int runUnfaded(const VoiceRun& run) {
  constexpr ChainNeeds kDry{.fade = false, .punch = Punch, .fed = Buses::dry, .tap = Tap};
  constexpr ChainNeeds kEffect{.fade = false, .punch = Punch, .fed = Buses::effect, .tap = Tap};
  constexpr ChainNeeds kBoth{.fade = false, .punch = Punch, .fed = Buses::both, .tap = Tap};
  if (run.ramps->activeCount() > 0) {
    return run.fed == Buses::dry ? runMoving<Chain<L, kDry>, Four>(run) : runMoving<Chain<L, kBoth>, Four>(run);
  }
  if (run.fed == Buses::dry) {
    runResting<Chain<L, kDry>>(run);
  } else if (run.fed == Buses::effect) {
    runResting<Chain<L, kEffect>>(run);
  } else {
    runResting<Chain<L, kBoth>>(run);
  }
  return run.frames;
}

/// Chooses the form of a run with chains of the template `Chain`. `Tap`: the lanes are also written to the taps.
template <template <typename, ChainNeeds> typename Chain, typename L, typename Four, bool Tap>
int runTapped(const VoiceRun& run) {
  constexpr ChainNeeds kAll{.fade = true, .punch = true, .fed = Buses::both, .tap = Tap};
  if (run.fading && run.ramps->activeCount() > 0) {
    return runMoving<Chain<L, kAll>, Four>(run);
  }
  if (run.fading) {
    runResting<Chain<L, kAll>>(run);
    return run.frames;
  }
  return Chain<L, kAll>::punchRests(*run.bank, 0) ? runUnfaded<Chain, L, Four, false, Tap>(run)
                                                  : runUnfaded<Chain, L, Four, true, Tap>(run);
}

template <template <typename, ChainNeeds> typename Chain, typename L, typename Four>
int runWith(const VoiceRun& run) {
  return run.taps == nullptr ? runTapped<Chain, L, Four, false>(run) : runTapped<Chain, L, Four, true>(run);
}

/// Renders a run of one voice, one quad or two quads. `R` are registers of 128 bits, `Wide` the widest lanes, four or
/// eight.
template <typename R, typename Wide>
int runVoices(const VoiceRun& run) {
  using Four = FourLanes<R>;
  constexpr int kMostOneByOne = 2;
  if (run.voices <= kMostOneByOne && !run.fading && run.taps == nullptr && run.ramps->activeCount() == 0) {
    return runOneByOne<Four>(run);
  }
  if (run.voices == 1) {
    return runWith<VoiceChain, FirstLane<R>, Four>(run);
  }
  if (run.voices <= kLanesPerQuad) {
    return runWith<VoiceChain, Four, Four>(run);
  }
  if constexpr (Wide::kLanes == kVoiceCount) {
    return runWith<VoiceChain, Wide, Four>(run);
  } else {
    return runWith<ChainPair, Four, Four>(run);
  }
}

template <typename R>
bool tickRamps(RampBank& ramps) {
  return ramps.stepAndRetire<RampStep<FourLanes<R>>>();
}

}  // namespace
}  // namespace tesh::bramel::plugin::sivray
