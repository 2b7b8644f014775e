// How a kernel renders a run, as templates over the lane operations of its instruction set. Each kernel's source file
// includes it and compiles it for its own set, so everything here has internal linkage.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

#include "engine/voice/RampBank.h"
#include "engine/voice/VoiceBank.h"
#include "engine/voice/VoiceChain.h"
#include "engine/voice/VoiceKernel.h"
#include "engine/voice/VoiceLanes.h"

namespace tesh::bramel::plugin::sivray {
namespace {

/// A step of four ramps: the law of RampBank's plain step.
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

/// Writes the four channels of frame after frame.
template <typename Four>
class FrameWriter {
  using Integers = typename Four::Integers;

 public:
  explicit FrameWriter(const VoiceRun& run) : next(run.output) {}

  void put(Integers sums) { write(Four::saturated32(sums)); }

  /// Two frames of one bus: left and right of the first, left and right of the second.
  template <Buses Bus>
  void putPair(Integers sums) {
    const Integers channels = Four::saturated32(sums);
    // A mask rather than an unpacking with zeros, which may become a form of vmovq that Valgrind does not know.
    const Integers lower = Four::four32(-1, -1, 0, 0);
    constexpr bool kDry = Bus == Buses::dry;
    write(kDry ? Four::bitAnd(lower, channels) : Four::template bytesUp<8>(channels));
    write(kDry ? Four::template bytesDown<8>(channels) : Four::andNot(lower, channels));
  }

 private:
  void write(Integers frame) {
    Four::storeAligned(next, frame);
    next += Four::kLanes;
  }

  std::int32_t* next;
};

/// The bus of a run in which only one is fed.
template <typename Chain, Buses Bus>
[[gnu::always_inline]] inline typename Chain::Vec frameOf(Chain& chain) {
  typename Chain::Vec dry;
  typename Chain::Vec effect;
  chain.frame(dry, effect);
  return Bus == Buses::dry ? dry : effect;
}

/// All four channels of a frame.
template <typename Chain>
[[gnu::always_inline]] inline auto channelsOf(Chain& chain) {
  typename Chain::Vec dry = Chain::Lanes::zero();
  typename Chain::Vec effect = Chain::Lanes::zero();
  chain.frame(dry, effect);
  return Chain::Lanes::channelSums(dry, effect);
}

/// Renders all frames of a run in which no ramp moves.
template <typename Chain, Buses Fed>
void runResting(const VoiceRun& run) {
  using L = typename Chain::Lanes;
  Chain chain(*run.bank, run, 0);
  FrameWriter<typename L::Four> out(run);
  if constexpr (Fed == Buses::both) {
    for (int frame = 0; frame < run.frames; ++frame) {
      out.put(channelsOf(chain));
    }
  } else {
    for (int pair = run.frames / 2; pair > 0; --pair) {
      const auto even = frameOf<Chain, Fed>(chain);
      const auto odd = frameOf<Chain, Fed>(chain);
      out.template putPair<Fed>(L::channelSums(even, odd));
    }
    if (run.frames % 2 != 0) {
      out.put(channelsOf(chain));
    }
  }
  chain.finish();
}

/// Renders frames while ramps move, until one has reached its target or a watched fade has closed. `Four` are the lane
/// operations for the ramps.
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

/// Renders a run without fades. Moving ramps come with the dry bus alone or with both.
template <template <typename, ChainNeeds> typename Chain, typename L, typename Four, bool Punch, bool Tap>
int runUnfaded(const VoiceRun& run) {
  constexpr ChainNeeds kDry{.fade = false, .punch = Punch, .fed = Buses::dry, .tap = Tap};
  constexpr ChainNeeds kEffect{.fade = false, .punch = Punch, .fed = Buses::effect, .tap = Tap};
  constexpr ChainNeeds kBoth{.fade = false, .punch = Punch, .fed = Buses::both, .tap = Tap};
  if (run.ramps->activeCount() > 0) {
    return run.fed == Buses::dry ? runMoving<Chain<L, kDry>, Four>(run) : runMoving<Chain<L, kBoth>, Four>(run);
  }
  if (run.fed == Buses::dry) {
    runResting<Chain<L, kDry>, Buses::dry>(run);
  } else if (run.fed == Buses::effect) {
    runResting<Chain<L, kEffect>, Buses::effect>(run);
  } else {
    runResting<Chain<L, kBoth>, Buses::both>(run);
  }
  return run.frames;
}

/// Chooses how to render a run with chains of the template `Chain`, whose lanes are tapped or not.
template <template <typename, ChainNeeds> typename Chain, typename L, typename Four, bool Tap>
int runTapped(const VoiceRun& run) {
  constexpr ChainNeeds kAll{.fade = true, .punch = true, .fed = Buses::both, .tap = Tap};
  if (run.fading && run.ramps->activeCount() > 0) {
    return runMoving<Chain<L, kAll>, Four>(run);
  }
  if (run.fading) {
    runResting<Chain<L, kAll>, Buses::both>(run);
    return run.frames;
  }
  return Chain<L, kAll>::punchRests(*run.bank, 0) ? runUnfaded<Chain, L, Four, false, Tap>(run)
                                                  : runUnfaded<Chain, L, Four, true, Tap>(run);
}

template <template <typename, ChainNeeds> typename Chain, typename L, typename Four>
int runWith(const VoiceRun& run) {
  return run.taps == nullptr ? runTapped<Chain, L, Four, false>(run) : runTapped<Chain, L, Four, true>(run);
}

/// Renders a run of one voice, of one quad or of two. `R` are registers of 128 bits, `Wide` the widest lanes, four or
/// eight.
template <typename R, typename Wide>
int runVoices(const VoiceRun& run) {
  using Four = FourLanes<R>;
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
