// How a kernel renders a run, as templates over the lane operations of its instruction set. Each kernel's source file
// includes it and compiles it for its own set, so everything here has internal linkage.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <emmintrin.h>

#include <cstddef>
#include <cstdint>

#include "engine/voice/RampBank.h"
#include "engine/voice/VoiceBank.h"
#include "engine/voice/VoiceChain.h"
#include "engine/voice/VoiceKernel.h"

namespace tesh::bramel::plugin::sivray {
namespace {

/// A step of four ramps, with the 32-bit multiply of the instruction set: the law of RampBank's plain step.
template <typename L>
struct RampStep {
  static int step(RampBank::Group& group) {
    const __m128i target = LanesSse2::load(group.target.data());
    const __m128i distance = _mm_sub_epi32(LanesSse2::load(group.current.data()), target);
    const __m128i a = _mm_srai_epi32(L::product32(LanesSse2::load(group.rate.data()), distance), 15);
    const __m128i b = _mm_srai_epi32(_mm_sub_epi32(a, _mm_slli_epi32(a, 15)), 15);
    const __m128i current = _mm_add_epi32(target, b);
    LanesSse2::store(group.current.data(), current);
    return _mm_movemask_ps(_mm_castsi128_ps(_mm_cmpeq_epi32(current, target)));
  }
};

/// Writes the four channels of frame after frame.
template <typename L>
class FrameWriter {
 public:
  explicit FrameWriter(const VoiceRun& run) : next(reinterpret_cast<__m128i*>(run.output)) {}

  void put(__m128i sums) { _mm_store_si128(next++, L::limited(sums)); }

  /// Two frames of one bus: left and right of the first, left and right of the second.
  template <Buses Bus>
  void putPair(__m128i sums) {
    const __m128i channels = L::limited(sums);
    // A mask rather than an unpacking with zeros, which may become a form of vmovq that Valgrind does not know.
    const __m128i lower = _mm_set_epi32(0, 0, -1, -1);
    constexpr bool kDry = Bus == Buses::dry;
    _mm_store_si128(next++, kDry ? _mm_and_si128(lower, channels) : _mm_slli_si128(channels, 8));
    _mm_store_si128(next++, kDry ? _mm_srli_si128(channels, 8) : _mm_andnot_si128(lower, channels));
  }

 private:
  __m128i* next;
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
[[gnu::always_inline]] inline __m128i channelsOf(Chain& chain) {
  typename Chain::Vec dry = Chain::Lanes::all(0);
  typename Chain::Vec effect = Chain::Lanes::all(0);
  chain.frame(dry, effect);
  return Chain::Lanes::channelSums(dry, effect);
}

/// Renders all frames of a run in which no ramp moves.
template <typename Chain, Buses Fed>
void runResting(const VoiceRun& run) {
  using L = typename Chain::Lanes;
  Chain chain(*run.bank, run, 0);
  FrameWriter<L> out(run);
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
  FrameWriter<typename Chain::Lanes> out(run);
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
template <template <typename, ChainNeeds> typename Chain, typename L, typename Four, bool Punch>
int runUnfaded(const VoiceRun& run) {
  constexpr ChainNeeds kDry{.fade = false, .punch = Punch, .fed = Buses::dry};
  constexpr ChainNeeds kEffect{.fade = false, .punch = Punch, .fed = Buses::effect};
  constexpr ChainNeeds kBoth{.fade = false, .punch = Punch, .fed = Buses::both};
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

/// Chooses how to render a run with chains of the template `Chain`.
template <template <typename, ChainNeeds> typename Chain, typename L, typename Four>
int runWith(const VoiceRun& run) {
  constexpr ChainNeeds kAll{.fade = true, .punch = true, .fed = Buses::both};
  if (run.fading && run.ramps->activeCount() > 0) {
    return runMoving<Chain<L, kAll>, Four>(run);
  }
  if (run.fading) {
    runResting<Chain<L, kAll>, Buses::both>(run);
    return run.frames;
  }
  return Chain<L, kAll>::punchRests(*run.bank, 0) ? runUnfaded<Chain, L, Four, false>(run)
                                                  : runUnfaded<Chain, L, Four, true>(run);
}

/// Renders a run of one voice, of one quad or of two. `Four` are the operations on four lanes, `Wide` those on the
/// widest vector, four or eight lanes.
template <typename Four, typename Wide>
int runVoices(const VoiceRun& run) {
  if (run.voices == 1) {
    return runWith<VoiceChain, FirstLane<Four>, Four>(run);
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

template <typename Four>
bool tickRamps(RampBank& ramps) {
  return ramps.stepAndRetire<RampStep<Four>>();
}

}  // namespace
}  // namespace tesh::bramel::plugin::sivray
