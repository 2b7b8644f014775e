// Carries a host's block to the engine and back. A ring evens out blocks that come out a frame too short or too long.
// Also designs both resamplers.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/resample/CFsConverterWrapper.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

#include "host/resample/ConverterFilter.h"

namespace tesh::bramel::vst {

namespace {

constexpr std::int32_t kSmallestBlock = 32;   ///< Host frames.
constexpr std::int32_t kLongestPart = 16383;  ///< Host frames in one piece.
/// Host frames of delay in the ring, for pieces that come out a few frames short.
constexpr std::uint32_t kRingLead = 8;

constexpr double kFilterReach = kFilterLength / (2.0 * kUpPhases);  ///< Engine frames by which the filter delays.

/// Phases of the input's filter: fewer at higher host rates, so that the same number of taps spans the same time.
constexpr std::int32_t downPhases(std::int32_t rate) {
  if (rate <= 48000) {
    return 16;
  }
  return rate <= 96000 ? 8 : 4;
}

/// The longest piece at this rate in host frames. Its engine frames must fit the engine's buffers, and their host
/// frames the output's. Either conversion may produce one frame more than the ratio says.
std::int32_t longestPartAt(std::int32_t rate) {
  const double hostPerEngine = static_cast<double>(rate) / CFsConverterWrapper::kEngineRate;
  const double inEngine = (static_cast<double>(UpPair::kEngineFrames) - 2.0) * hostPerEngine;
  const double inHost = static_cast<double>(UpPair::kHostFrames) - 2.0 - std::ceil(hostPerEngine);
  return static_cast<std::int32_t>(std::min({static_cast<double>(kLongestPart), inEngine, inHost}));
}

/// Whether the block connects this out, counted from 0 without the main one.
bool hasOut(std::span<float* const> outputs, std::size_t out) {
  const std::size_t channel = 2 * out + 2;
  return channel + 1 < outputs.size() && outputs[channel] != nullptr && outputs[channel + 1] != nullptr;
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
      downConverter(2),
      engineIn(UpPair::kEngineFrames),
      zeroIn(UpPair::kEngineFrames),
      hostBlockSize(kSmallestBlock) {
  downConverter.setAttenuation(kAttenuationDb);
  downConverter.leaveRestOut();
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
  mainPair.clear();
  for (const auto& out : outs) {
    out->pair.clear();
  }
  ringWrite = 0;
  ringRead = (0U - kRingLead) & UpPair::kRingMask;
}

void CFsConverterWrapper::makeOuts() {
  while (outs.size() < kOuts) {
    outs.push_back(std::make_unique<Out>());
    if (!isDirect()) {
      outs.back()->pair.setSampleRate(static_cast<std::int32_t>(hostRate));
    }
  }
}

void CFsConverterWrapper::setSampleRate(float rate) {
  if (!(rate >= static_cast<float>(kLowestRate) && rate <= static_cast<float>(kHighestRate))) {
    return;
  }
  const auto wholeRate = static_cast<std::int32_t>(rate);
  hostRate = rate;
  ratio = static_cast<float>(kEngineRate) / rate;
  longestPart = longestPartAt(wholeRate);
  listener->onSampleRate(ratio, kEngineRate);
  if (isDirect()) {
    return;
  }
  mainPair.setSampleRate(wholeRate);
  for (const auto& out : outs) {
    out->pair.setSampleRate(wholeRate);
  }
  downConverter.configure(kFilterLength, wholeRate, static_cast<float>(kEngineRate), kCutoffHz, downPhases(wholeRate),
                          0.0);
}

void CFsConverterWrapper::setBlockSize(std::int32_t size) {
  hostBlockSize = std::max(size, kSmallestBlock);
  listener->onBlockSize(kSmallestBlock);
  listener->onMaxBlockSize(hostBlockSize);
}

void CFsConverterWrapper::process(float** inputs, float** outputs, std::int32_t frames) {
  if (outputs != nullptr) {
    processOuts(inputs, std::span(outputs, kMainChannels), frames);
  }
}

void CFsConverterWrapper::processOuts(float** inputs, std::span<float*> outputs, std::int32_t frames) {
  if (frames <= 0 || outputs.size() < kMainChannels || outputs[0] == nullptr || outputs[1] == nullptr) {
    return;
  }
  if (frames > hostBlockSize) {
    setBlockSize(frames);
  }
  listener->onBeginBlock();
  renderOuts(inputs, outputs, frames);
  listener->onEndBlock();
}

void CFsConverterWrapper::render(float** inputs, float** outputs, std::int32_t frames) {
  renderOuts(inputs, std::span(outputs, kMainChannels), frames);
}

void CFsConverterWrapper::renderOuts(float** inputs, std::span<float*> outputs, std::int32_t frames) {
  if (isDirect()) {
    eventRing.dispatch(frames, *listener);
    listener->onProcess(inputs, outputs, frames);
    return;
  }
  if (connectedOuts > 0 || outputs.size() > kMainChannels) {
    connect(outputs, frames);
  }
  const bool hasInputs = inputs != nullptr && inputs[0] != nullptr;
  for (std::int32_t done = 0; done < frames;) {
    const std::int32_t part = std::min(frames - done, longestPart);
    ChannelPair source = {zeroIn.data(), zeroIn.data()};
    for (std::size_t c = 0; hasInputs && c < source.size(); ++c) {
      source[c] = inputs[c] != nullptr ? inputs[c] + done : zeroIn.data();
    }
    renderPart(source, hasInputs, outputs, done, part);
    done += part;
  }
}

void CFsConverterWrapper::connect(std::span<float*> outputs, std::int32_t frames) {
  connectedOuts = 0;
  for (std::size_t i = 0; i < outs.size(); ++i) {
    const bool wasConnected = std::exchange(outs[i]->isConnected, hasOut(outputs, i));
    connectedOuts += outs[i]->isConnected ? 1U : 0U;
    if (outs[i]->isConnected && !wasConnected) {
      outs[i]->pair.joinIn(mainPair, ringRead, ringWrite);
    }
  }
  for (std::size_t i = 0; outs.empty() && i < kOuts; ++i) {
    if (hasOut(outputs, i)) {
      std::fill_n(outputs[2 * i + 2], frames, 0.0F);
      std::fill_n(outputs[2 * i + 3], frames, 0.0F);
    }
  }
}

void CFsConverterWrapper::renderPart(ChannelPair inputs, bool hasInputs, std::span<float*> outputs, std::int32_t offset,
                                     std::int32_t frames) {
  ChannelPair engineInputs = engineIn.channels();
  const auto hostFrames = static_cast<std::size_t>(frames);
  const std::size_t count = !hasInputs && downConverter.canSkip()
                                ? downConverter.skip(hostFrames)
                                : downConverter.process(inputs.data(), engineInputs.data(), hostFrames, !hasInputs);
  keepInputSilent(count);
  const auto engineFrames = static_cast<std::int32_t>(count);
  eventRing.dispatch(engineFrames, *listener);
  if (connectedOuts == 0) {
    ChannelPair engineOutputs = mainPair.engineChannels();
    listener->onProcess(engineInputs.data(), engineOutputs, engineFrames);
  } else {
    runEngine(engineInputs, outputs.size(), engineFrames);
  }
  const bool isSilent = listener->gaveSilence();
  const std::size_t made = mainPair.write(count, ringWrite, isSilent);
  mainPair.read({outputs[0] + offset, outputs[1] + offset}, hostFrames, ringRead);
  for (std::size_t i = 0; connectedOuts > 0 && i < outs.size(); ++i) {
    if (outs[i]->isConnected) {  // Same position and count as the main pair.
      const std::size_t channel = 2 * i + 2;
      outs[i]->pair.write(count, ringWrite, isSilent);
      outs[i]->pair.read({outputs[channel] + offset, outputs[channel + 1] + offset}, hostFrames, ringRead);
    }
  }
  ringWrite = (ringWrite + static_cast<std::uint32_t>(made)) & UpPair::kRingMask;
  ringRead = (ringRead + static_cast<std::uint32_t>(frames)) & UpPair::kRingMask;
}

/// While the down-converter rests it leaves the engine's input as it was: zeroes the frames that may still hold sound.
/// `count` is the number of engine frames in this piece.
void CFsConverterWrapper::keepInputSilent(std::size_t count) {
  if (!downConverter.isResting()) {
    soundInInput = std::max(soundInInput, count);
  } else if (soundInInput > 0) {
    for (float* const channel : engineIn.channels()) {
      std::fill_n(channel, soundInInput, 0.0F);
    }
    soundInInput = 0;
  }
}

/// Calls the engine with the channels of all connected pairs.
void CFsConverterWrapper::runEngine(ChannelPair inputs, std::size_t channels, std::int32_t frames) {
  std::array<float*, kMostChannels> outputs{};
  std::copy_n(mainPair.engineChannels().data(), 2, outputs.data());
  for (std::size_t i = 0; i < outs.size(); ++i) {
    if (outs[i]->isConnected) {
      std::copy_n(outs[i]->pair.engineChannels().data(), 2, outputs.data() + 2 * i + 2);
    }
  }
  listener->onProcess(inputs.data(), std::span(outputs).first(channels), frames);
}

void CFsConverterWrapper::processEvents(const VstEvents& vstEvents) {
  VstEvent* const* const events = vstEvents.events;  // As long as `numEvents` says, although the record declares two.
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
