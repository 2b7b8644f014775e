// A host block on its way to the engine and back, the ring that evens out blocks a frame too short or too long, and the
// design of both resamplers.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/resample/CFsConverterWrapper.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

namespace tesh::bramel::vst {

namespace {

constexpr std::int32_t kSmallestBlock = 32;   ///< Host frames.
constexpr std::size_t kEngineFrames = 16384;  ///< Of the engine's buffers and the absent input.
constexpr std::size_t kHostFrames = 16392;    ///< Of the resampled output.
constexpr std::size_t kUsualFrames = 2048;    ///< Of a block, at most: hosts rarely send longer ones.
constexpr std::int32_t kLongestPart = 16383;  ///< Host frames in one piece.
constexpr std::size_t kRingFrames = 32768;    ///< A power of two, twice the longest piece.
constexpr std::uint32_t kRingMask = kRingFrames - 1;
constexpr std::uint32_t kRingLead = 8;  ///< Host frames that the output lags, for pieces that come out a few short.

// The filter of both resamplers. 384 taps in 16 phases reach 12 engine frames to either side, which leaves the cut-off
// just below half the engine's rate and makes 85 dB possible from 27 kHz on.
constexpr std::int32_t kFilterLength = 384;
constexpr std::int32_t kCutoffHz = 22000;
constexpr double kAttenuationDb = 85.0;
constexpr std::int32_t kUpPhases = 16;
constexpr double kFilterReach = kFilterLength / (2.0 * kUpPhases);  ///< Engine frames by which the filter delays.

/// Phases of the input's filter. Fewer at high host rates make the same taps last as long.
constexpr std::int32_t downPhases(std::int32_t rate) {
  if (rate <= 48000) {
    return 16;
  }
  return rate <= 96000 ? 8 : 4;
}

/// The most host frames in one piece at this rate: the engine's frames that they become must fit the engine's buffers,
/// and what these become must fit the output's. Both conversions may make a frame more than the ratio says.
std::int32_t longestPartAt(std::int32_t rate) {
  const double hostPerEngine = static_cast<double>(rate) / CFsConverterWrapper::kEngineRate;
  const double inEngine = (static_cast<double>(kEngineFrames) - 2.0) * hostPerEngine;
  const double inHost = static_cast<double>(kHostFrames) - 2.0 - std::ceil(hostPerEngine);
  return static_cast<std::int32_t>(std::min({static_cast<double>(kLongestPart), inEngine, inHost}));
}

/// Rounds towards zero and limits to 32 bits.
std::int32_t engineFrame(std::int32_t hostFrame, float ratio) {
  constexpr auto kEnd = static_cast<float>(std::numeric_limits<std::int32_t>::max());
  const float frame = static_cast<float>(hostFrame) * ratio;
  if (frame >= kEnd) {
    return std::numeric_limits<std::int32_t>::max();
  }
  return frame <= -kEnd ? std::numeric_limits<std::int32_t>::min() : static_cast<std::int32_t>(frame);
}

}  // namespace

CFsConverterWrapper::CFsConverterWrapper(CFsConvListener& convListener)
    : listener(&convListener),
      downConverter(kChannels),
      upConverter(kChannels),
      engineIn(kEngineFrames),
      engineOut(kEngineFrames),
      upOut(kHostFrames),
      zeroIn(kEngineFrames),
      ring(kRingFrames),
      silentInRing(kRingFrames),
      hostBlockSize(kSmallestBlock) {
  downConverter.setAttenuation(kAttenuationDb);
  downConverter.setKnownSilence(zeroIn.data());
  upConverter.setAttenuation(kAttenuationDb);
  reset();
  listener->onBlockSize(kSmallestBlock);
  listener->onMaxBlockSize(kSmallestBlock);
}

int CFsConverterWrapper::latency(double rate) {
  if (static_cast<float>(rate) == static_cast<float>(kEngineRate)) {
    return 0;
  }
  return static_cast<int>(std::lround(kRingLead + kFilterReach * rate / kEngineRate));
}

void CFsConverterWrapper::reset() {
  if (std::exchange(silentInRing, kRingFrames) < kRingFrames) {
    ring.clear();
  }
  ringWrite = 0;
  ringRead = (0U - kRingLead) & kRingMask;
}

void CFsConverterWrapper::setSampleRate(float rate) {
  if (!(rate >= static_cast<float>(kLowestRate) && rate <= static_cast<float>(kHighestRate))) {
    return;
  }
  const auto wholeRate = static_cast<std::int32_t>(rate);
  const auto engineRate = static_cast<std::int32_t>(kEngineRate);
  hostRate = rate;
  ratio = static_cast<float>(kEngineRate) / rate;
  longestPart = longestPartAt(wholeRate);
  listener->onSampleRate(ratio, kEngineRate);
  if (isDirect()) {
    return;
  }
  engineOut.makePresent(kUsualFrames);
  upOut.makePresent(kUsualFrames);
  ring.makePresent(kRingFrames);
  upConverter.configure(kFilterLength, engineRate, static_cast<float>(wholeRate), kCutoffHz, kUpPhases, 0.0);
  downConverter.configure(kFilterLength, wholeRate, static_cast<float>(kEngineRate), kCutoffHz, downPhases(wholeRate),
                          0.0);
}

void CFsConverterWrapper::setBlockSize(std::int32_t size) {
  hostBlockSize = std::max(size, kSmallestBlock);
  listener->onBlockSize(kSmallestBlock);
  listener->onMaxBlockSize(hostBlockSize);
}

void CFsConverterWrapper::process(float** inputs, float** outputs, std::int32_t frames) {
  if (frames <= 0 || outputs == nullptr || outputs[0] == nullptr || outputs[1] == nullptr) {
    return;
  }
  if (frames > hostBlockSize) {
    setBlockSize(frames);
  }
  listener->onBeginBlock();
  render(inputs, outputs, frames);
  listener->onEndBlock();
}

void CFsConverterWrapper::render(float** inputs, float** outputs, std::int32_t frames) {
  if (isDirect()) {
    eventRing.dispatch(frames, *listener);
    listener->onProcess(inputs, outputs, frames);
    return;
  }
  const bool hasInputs = inputs != nullptr && inputs[0] != nullptr;
  for (std::int32_t done = 0; done < frames;) {
    const std::int32_t part = std::min(frames - done, longestPart);
    Channels source = {zeroIn.data(), zeroIn.data()};
    for (std::size_t c = 0; hasInputs && c < kChannels; ++c) {
      source[c] = inputs[c] != nullptr ? inputs[c] + done : zeroIn.data();
    }
    renderPart(source, {outputs[0] + done, outputs[1] + done}, part);
    done += part;
  }
}

void CFsConverterWrapper::renderPart(Channels inputs, Channels outputs, std::int32_t frames) {
  Channels engineInputs = engineIn.channels();
  Channels engineOutputs = engineOut.channels();
  const std::size_t count = downConverter.process(inputs.data(), engineInputs.data(), static_cast<std::size_t>(frames));
  const auto engineFrames = static_cast<std::int32_t>(count);
  eventRing.dispatch(engineFrames, *listener);
  listener->onProcess(engineInputs.data(), engineOutputs.data(), engineFrames);
  writeRings(upConverter.process(engineOutputs.data(), upOut.channels().data(), count));
  readRings(outputs, static_cast<std::size_t>(frames));
}

/// Writes what the up-converter has made. Zeros over a ring of zeros change nothing.
void CFsConverterWrapper::writeRings(std::size_t frames) {
  silentInRing = upConverter.isResting() ? std::min(silentInRing + frames, kRingFrames) : 0;
  if (silentInRing < kRingFrames) {
    const Channels made = upOut.channels();
    const Channels kept = ring.channels();
    const std::size_t toEnd = std::min<std::size_t>(frames, kRingFrames - ringWrite);
    for (std::size_t c = 0; c < kChannels; ++c) {
      std::copy_n(made[c], toEnd, kept[c] + ringWrite);
      std::copy_n(made[c] + toEnd, frames - toEnd, kept[c]);
    }
  }
  ringWrite = (ringWrite + static_cast<std::uint32_t>(frames)) & kRingMask;
}

void CFsConverterWrapper::readRings(Channels outputs, std::size_t frames) {
  const Channels kept = ring.channels();
  const std::size_t toEnd = std::min<std::size_t>(frames, kRingFrames - ringRead);
  for (std::size_t c = 0; c < kChannels; ++c) {
    if (silentInRing == kRingFrames) {
      std::fill_n(outputs[c], frames, 0.0F);
    } else {
      std::copy_n(kept[c] + ringRead, toEnd, outputs[c]);
      std::copy_n(kept[c], frames - toEnd, outputs[c] + toEnd);
    }
  }
  ringRead = (ringRead + static_cast<std::uint32_t>(frames)) & kRingMask;
}

void CFsConverterWrapper::processEvents(const VstEvents& vstEvents) {
  VstEvent* const* const events = vstEvents.events;  // As long as the count says, whatever the record declares.
  for (std::int32_t i = 0; i < vstEvents.numEvents; ++i) {
    const VstEvent* const event = events[i];
    if (event == nullptr || event->type != kVstMidiType) {
      continue;
    }
    VstMidiEvent midi;
    std::memcpy(&midi, event, sizeof midi);
    const auto byteAt = [&midi](std::size_t index) {
      return std::uint32_t{static_cast<std::uint8_t>(midi.midiData[index])};
    };
    enter(byteAt(0) << 24 | byteAt(1) << 16 | byteAt(2) << 8, midi.deltaFrames);
  }
}

void CFsConverterWrapper::enter(std::uint32_t packed, std::int32_t deltaFrames) {
  eventRing.enter(packed, engineFrame(deltaFrames, ratio), *listener);
}

}  // namespace tesh::bramel::vst
