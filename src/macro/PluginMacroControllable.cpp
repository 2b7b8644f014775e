// The block loop. StateContent.cpp reads and writes the host's state.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "macro/PluginMacroControllable.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "core/MidiStatus.h"

namespace tesh::vimo {
namespace {

constexpr double kNanosecondsPerSecond = 1.0e9;

void passThrough(ProcessBlock& block) {
  const auto frames = static_cast<std::size_t>(std::max(block.frames, 0));
  for (std::int32_t channel = 0; block.outputs && channel < block.outputCount; ++channel) {
    float* output = block.outputs[channel];
    const float* input = block.inputs && channel < block.inputCount ? block.inputs[channel] : nullptr;
    if (!output) {
      continue;
    }
    if (!input) {
      std::fill_n(output, frames, 0.0F);
    } else if (input != output) {
      std::copy_n(input, frames, output);
    }
  }
}

}  // namespace

using Controllable = PluginMacroControllable<Generator<float>>;

struct Controllable::BlockClock {
  std::uint64_t hostTime;
  double speed;
  double offset;
  double sampleRate;
  double frames;

  std::optional<std::uint32_t> frameOf(std::uint64_t timestamp) const {
    const auto distance = static_cast<double>(static_cast<std::int64_t>(timestamp - hostTime));
    const double frame = std::max(0.0, distance * speed + offset) * sampleRate / kNanosecondsPerSecond;
    return frame >= 0.0 && frame < frames ? std::optional(static_cast<std::uint32_t>(frame)) : std::nullopt;
  }
};

Controllable::PluginMacroControllable(std::string instrument, std::unique_ptr<Generator<float>> engine)
    : name(std::move(instrument)), ownGenerator(std::move(engine)), ownController(*ownGenerator) {}

void Controllable::process(ProcessBlock& block, std::uint64_t hostTime, double speed, double offset) {
  const double frames = block.frames == 0 ? 1.0 : block.frames;
  const BlockClock clock{hostTime, speed, offset, sampleRate, frames};
  runCommands(block, clock);
  // Short messages without text, whose copies allocate nothing.
  cofu::core::vouchFor([&] { runProgramChanges(block, clock); });
  runEngine(block);
  report(block);
}

void Controllable::runCommands(ProcessBlock& block, const BlockClock& clock) {
  while (const MacroCommand* next = commandQueue.peek()) {
    const auto frame = clock.frameOf(next->timestamp);
    if (!frame) {
      return;
    }
    runCommand(*commandQueue.take(), *frame, block);
  }
}

void Controllable::runCommand(const MacroCommand& command, std::uint32_t frame, ProcessBlock& block) {
  switch (command.kind) {
    case MacroCommandKind::setMacro:
      if (command.object != 0) {
        ownController.setMacroObject(command.index, command.object, frame, block);
      } else {
        ownController.setMacroValue(command.index, command.value, frame, block);
      }
      return;
    case MacroCommandKind::setParameter:
      if (block.automationRing) {
        block.automationRing->put({command.index, command.value, frame, 0});
      }
      return;
    case MacroCommandKind::moveTemporarily:
      ownController.moveTemporarily(command.index, command.value, frame, block);
      return;
    case MacroCommandKind::endTemporaryMoves:
      ownController.endTemporaryMoves(frame, block);
      return;
  }
}

void Controllable::runProgramChanges(ProcessBlock& block, const BlockClock& clock) {
  while (const MidiEvent* next = programQueue.peek()) {
    const auto frame = clock.frameOf(next->timestamp);
    if (!frame) {
      return;
    }
    auto event = programQueue.take();
    if (event->status() == cofu::core::kMidiProgramChange) {
      ownController.selectProgram(event->program, Bank{event->byteAt(1)}, *frame, block);
      if (editor) {
        editor->programSelected();
      }
    } else if (block.midiIn) {
      event->frame = *frame;
      block.midiIn->push_back(std::move(*event));
    }
  }
}

void Controllable::runEngine(ProcessBlock& block) {
  if (running) {
    if (!wasRunning) {
      wasRunning = true;
      ownGenerator->activate();
    }
    ownGenerator->process(block);
    return;
  }
  if (wasRunning) {
    wasRunning = false;
    ownGenerator->deactivate();
  }
  passThrough(block);
}

void Controllable::report(ProcessBlock& block) {
  while (block.notificationRing) {
    const auto echo = block.notificationRing->take();
    if (!echo) {
      break;
    }
    if (editor) {
      editor->macroMoved(echo->id, echo->value, echo->frame);
    }
  }
  if (!editor || !block.midiIn) {
    return;
  }
  for (const MidiEvent& event : *block.midiIn) {
    if (event.status() == cofu::core::kMidiNoteOn || event.status() == cofu::core::kMidiNoteOff) {
      editor->noteReceived(static_cast<std::uint16_t>((event.byteAt(1) & 127) << 8 | (event.byteAt(2) & 127)));
    }
  }
}

}  // namespace tesh::vimo
