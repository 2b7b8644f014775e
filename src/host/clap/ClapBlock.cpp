// Turns a CLAP block into the shell's calls.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/clap/ClapBlock.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

#include "core/MidiStatus.h"
#include "host/shell/OutNames.h"

namespace tesh::bramel::clap {
namespace {

using cofu::core::mayWait;

constexpr double kLargestVelocity = 127.0;

/// Casts the event to the record of its type; null if it is shorter than that record. The last bytes of a MIDI event's
/// record are padding, which some hosts leave out of its size.
template <typename Event>
const Event* as(const EventHeader& event) {
  constexpr std::size_t kNeeded = std::is_same_v<Event, MidiEvent> ? offsetof(MidiEvent, data) + 3 : sizeof(Event);
  return event.size >= kNeeded ? reinterpret_cast<const Event*>(&event) : nullptr;
}

bool isWrite(const EventHeader& event) {
  return event.type == EventType::paramValue || event.type == EventType::paramModulation;
}

/// Whether the block must be cut at the event: the shell applies such changes only at the start of a block.
bool cutsBlock(const EventHeader& event) { return isWrite(event) || event.type == EventType::transport; }

/// The events of a host's list, whose functions are the host's code.
class EventList {
 public:
  explicit EventList(const InputEvents* in) : events(in) {
    if (events != nullptr && events->size != nullptr && events->get != nullptr) {
      count = mayWait([this] { return events->size(events); });
    }
  }

  template <typename Use>
  void each(Use use) const {
    for (std::uint32_t index = 0; index < count; ++index) {
      const EventHeader* const event = mayWait([this, index] { return events->get(events, index); });
      if (event != nullptr && event->size >= sizeof(EventHeader) && event->spaceId == kCoreSpace) {
        use(*event);
      }
    }
  }

 private:
  const InputEvents* events;
  std::uint32_t count = 0;
};

/// Whether there are two channels to write to.
bool hasOutput(const Process& block, std::uint32_t out) {
  if (block.audioOutputs == nullptr || block.audioOutputCount <= out) {
    return false;
  }
  const AudioBuffer& buffer = block.audioOutputs[out];
  return buffer.channelCount >= 2 && buffer.data32 != nullptr && buffer.data32[0] != nullptr &&
         buffer.data32[1] != nullptr;
}

bool push(const OutputEvents* out, const EventHeader& event) {
  return out != nullptr && out->tryPush != nullptr && mayWait([&] { return out->tryPush(out, &event); });
}

template <typename Event>
Event makeEvent(std::uint16_t type, std::uint32_t time) {
  Event event{};
  event.header = {sizeof(Event), time, kCoreSpace, type, 0};
  return event;
}

}  // namespace

ClapBlock::ClapBlock(vst::BramelInstrument& ofInstrument, const ClapParameters& ofParameters, ClapReports& newReports)
    : instrument(ofInstrument),
      parameters(ofParameters),
      reports(newReports),
      writes(ofInstrument),
      values(ofParameters.count()) {}

std::int32_t ClapBlock::process(const Process& block) {
  if (!hasOutput(block, 0)) {
    flush(block.inEvents, block.outEvents);
    return ProcessStatus::error;
  }
  takeOutputs(block);
  if (block.transport != nullptr) {
    takeTransport(*block.transport);
  }
  renderedFrames = 0;
  lastEnd = 0;
  noteEnds = block.outEvents;
  const std::uint32_t last = block.frameCount > 0 ? block.frameCount - 1 : 0;
  EventList(block.inEvents).each([&](const EventHeader& event) {
    const std::uint32_t frame = std::clamp(event.time, renderedFrames, last);
    if (cutsBlock(event) && frame > renderedFrames) {
      render(renderedFrames, frame);
    }
    takeEvent(event, static_cast<std::int32_t>(frame - renderedFrames));
  });
  render(renderedFrames, block.frameCount);
  giveReports(block.outEvents, last);
  return ProcessStatus::proceed;
}

void ClapBlock::takeOutputs(const Process& block) {
  const auto take = [&](std::uint32_t out) {
    AudioBuffer& buffer = block.audioOutputs[out];
    buffer.constantMask = 0;
    std::copy_n(buffer.data32, 2, channels.data() + std::size_t{2} * out);
  };
  take(0);
  hasOuts = false;
  constexpr std::uint32_t kOthers = (1U << vst::kOutCount) - 2;
  const std::uint32_t active = activeOuts.load(std::memory_order_relaxed) & kOthers;
  if (active == 0 || block.audioOutputCount < 2) {
    return;
  }
  std::fill(channels.begin() + vimo::kMainChannels, channels.end(), nullptr);
  for (std::uint32_t out = 1; out < vst::kOutCount; ++out) {
    if ((active >> out & 1U) != 0 && hasOutput(block, out)) {
      take(out);
      hasOuts = true;
    }
  }
}

void ClapBlock::setOutActive(std::size_t out, bool isActive) {
  const std::uint32_t bit = 1U << out;
  if (isActive) {
    activeOuts.fetch_or(bit);
  } else {
    activeOuts.fetch_and(~bit);
  }
}

void ClapBlock::flush(const InputEvents* in, const OutputEvents* out) {
  renderedFrames = 0;
  noteEnds = out;
  EventList(in).each([&](const EventHeader& event) {
    if (isWrite(event)) {
      takeEvent(event, 0);
    }
  });
  handOver();
  ++renders;
  giveReports(out, 0);
}

void ClapBlock::reset() { held.fill({}); }

void ClapBlock::render(std::uint32_t from, std::uint32_t to) {
  handOver();
  const auto frames = static_cast<std::int32_t>(to - from);
  if (hasOuts) {
    std::array<float*, vimo::kAllChannels> rest{};
    std::transform(channels.begin(), channels.end(), rest.begin(),
                   [from](float* channel) { return channel == nullptr ? nullptr : channel + from; });
    instrument.processOuts(rest, frames);
  } else {
    std::array<float*, vimo::kMainChannels> rest{channels[0] + from, channels[1] + from};
    instrument.process(nullptr, rest.data(), frames);
  }
  renderedFrames = to;
  ++renders;
}

void ClapBlock::takeEvent(const EventHeader& event, std::int32_t frame) {
  switch (event.type) {
    case EventType::paramValue:
    case EventType::paramModulation:
      if (const auto* const value = as<ParamEvent>(event)) {
        takeValue(*value);
      }
      return;
    case EventType::noteOn:
      if (const auto* const note = as<NoteEvent>(event)) {
        takeNoteOn(*note, frame);
      }
      return;
    case EventType::noteOff:
    case EventType::noteChoke:
      if (const auto* const note = as<NoteEvent>(event)) {
        takeNoteOff(*note, frame);
      }
      return;
    case EventType::midi:
      if (const auto* const message = as<MidiEvent>(event)) {
        instrument.sendMidi(message->data, sizeof(message->data), frame);
      }
      return;
    case EventType::transport:
      if (const auto* const transport = as<TransportEvent>(event)) {
        takeTransport(*transport);
      }
      return;
    default:
      return;
  }
}

// Values.

void ClapBlock::takeValue(const ParamEvent& event) {
  const std::uint32_t index = parameters.find(event.paramId, event.cookie);
  const bool isModulation = event.header.type == EventType::paramModulation;
  if (index == ClapParameters::kNone || !std::isfinite(event.value) ||
      (isModulation && !parameters.isModulatable(index))) {
    return;
  }
  Value& value = values[index];
  if (!isModulation) {
    value.base = parameters.normalised(index, event.value);
    value.writtenAt = renders;
  } else {
    restoreModulation();
    if (!isModulated(index)) {
      readBase(index);
    }
    value.offset = static_cast<float>(std::clamp(event.value, -1.0, 1.0));
  }
  write(index);
}

/// Reads the unmodulated value from the instrument, unless the host has written one since the last render: the
/// instrument does not have that one yet.
void ClapBlock::readBase(std::uint32_t index) {
  if (values[index].writtenAt != renders) {
    values[index].base = instrument.latestValue(parameters.idAt(index));
  }
}

void ClapBlock::write(std::uint32_t index) {
  const float sum = values[index].base + values[index].offset;
  writes.put(parameters.idAt(index), std::clamp(sum, 0.0F, 1.0F));
}

/// After a kit or a state has brought new values, adds the modulation offsets to them.
void ClapBlock::restoreModulation() {
  if (!reports.takeValuesChanged()) {
    return;
  }
  for (std::uint32_t index = 0; index < values.size(); ++index) {
    if (isModulated(index)) {
      readBase(index);
      write(index);
    }
  }
}

/// Hands the writes to the shell, after adding the modulation to the values of a kit that came since they were put.
void ClapBlock::handOver() {
  restoreModulation();
  writes.handOver();
}

// Notes. A key has one voice, so one note id per key is enough.

void ClapBlock::sendNote(std::uint8_t status, std::size_t key, std::uint8_t velocity, std::int32_t frame) {
  const std::array<std::uint8_t, 3> message{status, static_cast<std::uint8_t>(key), velocity};
  instrument.sendMidi(message.data(), message.size(), frame);
}

void ClapBlock::takeNoteOn(const NoteEvent& event, std::int32_t frame) {
  if (event.key < 0 || event.key >= static_cast<int>(kKeys) || !std::isfinite(event.velocity)) {
    return;
  }
  const auto key = static_cast<std::size_t>(event.key);
  endNote(key, frame);
  held[key] = {true, event.noteId, event.port, event.channel};
  const double velocity = std::clamp(std::round(event.velocity * kLargestVelocity), 1.0, kLargestVelocity);
  sendNote(cofu::core::kMidiNoteOn, key, static_cast<std::uint8_t>(velocity), frame);
}

void ClapBlock::takeNoteOff(const NoteEvent& event, std::int32_t frame) {
  for (std::size_t key = 0; key < kKeys; ++key) {
    const bool isMeant =
        (event.key < 0 || static_cast<std::size_t>(event.key) == key) &&
        (event.noteId < 0 || !held[key].isHeld || held[key].noteId < 0 || event.noteId == held[key].noteId);
    // A note-off without its note-on reaches the engine as in the other forms, where it names its key.
    if (isMeant && (held[key].isHeld || event.key >= 0)) {
      sendNote(cofu::core::kMidiNoteOff, key, 0, frame);
      endNote(key, frame);
    }
  }
}

/// Tells the host that the note's voice can no longer be modulated. Output events must be in time order, even where the
/// host's own events were not.
void ClapBlock::endNote(std::size_t key, std::int32_t frame) {
  if (!held[key].isHeld) {
    return;
  }
  lastEnd = std::max(lastEnd, renderedFrames + static_cast<std::uint32_t>(frame));
  auto end = makeEvent<NoteEvent>(EventType::noteEnd, lastEnd);
  end.noteId = held[key].noteId;
  end.port = held[key].port;
  end.channel = held[key].channel;
  end.key = static_cast<std::int16_t>(key);
  push(noteEnds, end.header);
  held[key].isHeld = false;
}

void ClapBlock::takeTransport(const TransportEvent& event) {
  if ((event.flags & TransportFlag::hasTempo) != 0) {
    instrument.setHostTempo(event.tempo);
  }
  const bool moves = (event.flags & (TransportFlag::isPlaying | TransportFlag::isRecording)) != 0;
  if (moves != isMoving) {
    isMoving = moves;
    instrument.setTransport(moves);
  }
}

// Reports.

void ClapBlock::giveReports(const OutputEvents* out, std::uint32_t last) {
  reports.askForCall();
  while (const auto report = reports.take()) {
    switch (report->kind) {
      case ClapReports::Report::Kind::value: {
        values[report->index].base = report->value;
        if (isModulated(report->index)) {
          write(report->index);
        }
        auto event = makeEvent<ParamEvent>(EventType::paramValue, last);
        event.paramId = parameters.idAt(report->index);
        event.noteId = event.port = event.channel = event.key = -1;
        event.value = parameters.hostValue(report->index, report->value);
        push(out, event.header);
        break;
      }
      case ClapReports::Report::Kind::gestureBegin:
      case ClapReports::Report::Kind::gestureEnd: {
        const bool begins = report->kind == ClapReports::Report::Kind::gestureBegin;
        auto event = makeEvent<GestureEvent>(begins ? EventType::gestureBegin : EventType::gestureEnd, last);
        event.paramId = parameters.idAt(report->index);
        push(out, event.header);
        break;
      }
      case ClapReports::Report::Kind::midi: {
        auto event = makeEvent<MidiEvent>(EventType::midi, last);
        std::copy(report->message.begin(), report->message.end(), std::begin(event.data));
        push(out, event.header);
        break;
      }
    }
  }
}

}  // namespace tesh::bramel::clap
