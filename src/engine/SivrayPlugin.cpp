// Turns a block's messages and values into timed records, and renders the slices between them.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/SivrayPlugin.h"

#include <algorithm>

#include "engine/samples/SivraySampleLibrary.h"

namespace tesh::bramel::plugin::sivray {
namespace {

/// The fastest tempo, in beats per minute.
constexpr double kFastestTempo = 300.0;

SequencerMessage shortMessage(const vimo::MidiEvent& event) {
  SequencerMessage message;
  message.size = event.size();
  for (std::uint32_t i = 0; i < message.bytes.size(); ++i) {
    message.bytes[i] = event.byteAt(i);
  }
  return message;
}

EngineOuts outsOf(const vimo::ProcessBlock& block) {
  const auto outAt = [&block](std::size_t channel) {
    return StereoOut{block.outputs[channel], block.outputs[channel + 1]};
  };
  EngineOuts outs;
  for (std::size_t pad = 0; pad < outs.pads.size(); ++pad) {
    outs.pads[pad] = outAt(vimo::kMainChannels + 2 * pad);
  }
  outs.effect = outAt(vimo::kMainChannels + vimo::kPadChannels);
  return outs;
}

}  // namespace

template <typename Synth>
SivrayPlugin<Synth>::SivrayPlugin(std::string_view folder, std::size_t slotFrames, WaveLoading loading)
    : synth(nullptr, 1, kPadCount, folder, slotFrames, loading),
      library(std::make_unique<vimo::SivraySampleLibrary>()) {}

template <typename Synth>
void SivrayPlugin<Synth>::number(SequencerEvent& record, SequencerKind kind) {
  record.sequence = nextSequence.fetch_add(1, std::memory_order_relaxed);
  record.kind = kind;
}

template <typename Synth>
void SivrayPlugin<Synth>::queueParameter(SequencerKind kind, std::uint32_t id, float value) {
  SequencerEvent record;
  number(record, kind);
  record.id = id;
  record.value = value;
  sequencer.append(record);
}

template <typename Synth>
bool SivrayPlugin<Synth>::addMidi(const std::vector<vimo::MidiEvent>& events) {
  for (const vimo::MidiEvent& event : events) {
    SequencerEvent& record = sequencer.add();
    number(record, SequencerKind::midi);
    record.frame = event.frame;
    record.message = shortMessage(event);
  }
  return !events.empty();
}

template <typename Synth>
void SivrayPlugin<Synth>::takeAutomation(vimo::TimedValueRing& ring) {
  if (ring.isEmpty()) {
    return;
  }
  while (const auto entry = ring.take()) {
    SequencerEvent& record = sequencer.add();
    number(record, SequencerKind::parameter);
    record.frame = entry->frame;
    record.id = entry->id;
    record.value = entry->value;
  }
  if (listener != nullptr) {
    listener->parametersArrived();
  }
}

template <typename Synth>
void SivrayPlugin<Synth>::process(vimo::ProcessBlock& block) {
  if (block.midiIn != nullptr) {
    addMidi(*block.midiIn);
  }
  if (block.automationRing != nullptr) {
    takeAutomation(*block.automationRing);
  }
  if (block.frames > 0) {
    if (block.outputCount == vimo::kAllChannels) {
      const EngineOuts outs = outsOf(block);
      block.isSilent = renderOnly(block.outputs, block.frames, outs.isConnected() ? &outs : nullptr);
    } else {
      block.isSilent = renderOnly(block.outputs, block.frames);
    }
    synth.engine().readOn();
  }
}

template <typename Synth>
bool SivrayPlugin<Synth>::renderOnly(float* const* outputs, int frames, const EngineOuts* outs) {
  if (outs == nullptr) {
    return renderSlices(outputs, frames, nullptr);
  }
  EngineOuts moving = *outs;
  return renderSlices(outputs, frames, &moving);
}

/// Starts `outs` later with each slice.
template <typename Synth>
bool SivrayPlugin<Synth>::renderSlices(float* const* outputs, int frames, EngineOuts* outs) {
  bool isSilent = true;
  int offset = 0;
  while (offset < frames) {
    const int remaining = frames - offset;
    const std::int64_t next = sequencer.nextEventFrame();
    const int slice = next < 0 || next > remaining ? remaining : static_cast<int>(next);
    isSilent &= synth.processReplacing(outputs[0] + offset, outputs[1] + offset, slice, outs);
    sequencer.advance(slice);
    offset += slice;
    if (outs != nullptr) {
      *outs = outs->from(slice);
    }
  }
  return isSilent;
}

template <typename Synth>
void SivrayPlugin<Synth>::setParameter(std::uint32_t id, float value) {
  if (!running) {
    queueParameter(SequencerKind::parameter, id, value);
  }
}

template <typename Synth>
void SivrayPlugin<Synth>::setGlobalParameter(std::uint32_t id, float value) {
  queueParameter(SequencerKind::globalParameter, id, value);
}

template <typename Synth>
void SivrayPlugin<Synth>::tempoChanged(double bpm) {
  setGlobalParameter(0, static_cast<float>(bpm / kFastestTempo));
}

template <typename Synth>
bool SivrayPlugin<Synth>::getParameterInfo(std::uint32_t id, vimo::GeneratorParameterInfo& info) const {
  const DrumEngine& engine = synth.engine();
  const std::string name = engine.parameterName(id);
  const std::int32_t range = engine.parameterRange(id);
  info = {};
  std::copy_n(name.begin(), std::min(name.size(), info.name.size() - 1), info.name.begin());
  info.value = engine.getParameter(id);
  info.step = range > 0 ? 1.0F / static_cast<float>(range) : 1.0F;
  return true;
}

template <typename Synth>
void SivrayPlugin<Synth>::activate() {
  running = true;
  // Reads the pads' waves on the first start, before any block.
  cofu::core::mayWait([this] { synth.engine().loadWaves(); });
  synth.resume();
}

template <typename Synth>
void SivrayPlugin<Synth>::deactivate() {
  running = false;
  synth.suspend();
}

template class SivrayPlugin<VstXSynth>;

}  // namespace tesh::bramel::plugin::sivray
