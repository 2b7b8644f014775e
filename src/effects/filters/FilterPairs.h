// The runs of comb filter and peaking equalizer on eight samples of both channels. ChannelPairs.h tells where this may
// be included.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "effects/filters/CombStep.h"
#include "effects/filters/PeakingStep.h"
#include "effects/interfaces/ChannelPairs.h"
#include "effects/interfaces/LaneRun.h"

namespace tesh::bramel::plugin::sivray::effects {
namespace {

static_assert(CombFilter::kLanes == kPairs);

/// The echoes before each of the next eight samples. Sets `echo` to the last one.
inline BothChannels echoesBefore(const BothChannels& near, const BothChannels& older, Pair eta, Pair& echo) {
  const SamplePairs nearWhole({near.left.shiftedRight<15>(), near.right.shiftedRight<15>()});
  SamplePairs echoes(older);
  for (unsigned i = 0; i < kPairs; ++i) {
    const Pair before = echo;
    echo = nextEcho(before, nearWhole.pairs[i], echoes.pairs[i], eta);
    echoes.pairs[i] = before;
  }
  return echoes.channels();
}

/// Writes the next samples of a channel to its line and to the output.
inline void feed(std::int32_t* line, unsigned write, Words256 echoes, Words256 feedback, std::int16_t* samples) {
  const Words256 sound = combSound(echoes, feedback, raised<15>(samples));
  storeToRing<CombFilter::kLineLength>(line, write, sound);
  saturatedSamples(sound.shiftedRight<15>()).store(samples);
}

[[gnu::flatten]] inline unsigned runComb(CombFilter& law, std::int16_t* leftSamples, std::int16_t* rightSamples,
                                         unsigned count) SIVRAY_NONBLOCKING {
  std::int32_t* const leftLine = law.left.line.data();
  std::int32_t* const rightLine = law.right.line.data();
  const Words256 feedback = Words256::all(static_cast<std::int32_t>(law.feedback));
  const Pair eta = Pair::both(static_cast<std::int32_t>(law.eta));
  Pair echo = Pair::of(static_cast<std::int32_t>(law.left.output), static_cast<std::int32_t>(law.right.output));
  auto read = static_cast<unsigned>(law.read);
  auto write = static_cast<unsigned>(law.write);
  unsigned done = 0;
  for (; done + kPairs <= count; done += kPairs) {
    const auto from = [](const std::int32_t* line, unsigned at) {
      return loadFromRing<Words256, CombFilter::kLineLength>(line, at);
    };
    const BothChannels echoes = echoesBefore({from(leftLine, read), from(rightLine, read)},
                                             {from(leftLine, read - 1), from(rightLine, read - 1)}, eta, echo);
    feed(leftLine, write, echoes.left, feedback, leftSamples + done);
    feed(rightLine, write, echoes.right, feedback, rightSamples + done);
    read += kPairs;
    write += kPairs;
  }
  law.moveIndices(done);
  law.left.output = echo.left();
  law.right.output = echo.right();
  return done;
}

/// Both channels in one register.
[[gnu::flatten]] inline unsigned runPeaking(PeakingEQ& law, std::int16_t* leftSamples, std::int16_t* rightSamples,
                                            unsigned count) SIVRAY_NONBLOCKING {
  using Longs = lanes::LongsIn<HalfRegisters>;
  const auto gain = [](std::int64_t coefficient) { return Longs{HalfRegisters::all64(coefficient)}; };
  const auto both = [](const std::int64_t& ofLeft, const std::int64_t& ofRight) {
    return Longs{HalfRegisters::zipLow64(HalfRegisters::load64(&ofLeft), HalfRegisters::load64(&ofRight))};
  };
  const PeakingGains<Longs> gains{gain(law.now.b0), gain(law.now.b1), gain(law.now.b2), gain(law.now.a2)};
  PeakingState<Longs> state{both(law.left.x1, law.right.x1), both(law.left.x2, law.right.x2),
                            both(law.left.y1, law.right.y1), both(law.left.y2, law.right.y2)};
  unsigned done = 0;
  for (; done + kPairs <= count; done += kPairs) {
    SamplePairs pairs(
        {raised<PeakingEQ::kInputShift>(leftSamples + done), raised<PeakingEQ::kInputShift>(rightSamples + done)});
    for (Pair& pair : pairs.pairs) {
      // The output is the sum shifted by 33 bits, one more than here.
      pair = peakingSum(state, Longs{pair.v}, gains).loweredBy<32>().v;
    }
    const BothChannels out = pairs.channels();
    saturatedSamples(out.left.shiftedRight<1>()).store(leftSamples + done);
    saturatedSamples(out.right.shiftedRight<1>()).store(rightSamples + done);
  }
  const auto [x1, x2, y1, y2] = state;
  law.left = {Pair(x1.v).left(), Pair(x2.v).left(), Pair(y1.v).left(), Pair(y2.v).left()};
  law.right = {Pair(x1.v).right(), Pair(x2.v).right(), Pair(y1.v).right(), Pair(y2.v).right()};
  return done;
}

}  // namespace
}  // namespace tesh::bramel::plugin::sivray::effects
